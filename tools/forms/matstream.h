// A MAT file read back.
#pragma once

#include "forms/matvariables.h"
#include "forms/stream.h"

namespace forms {

/// What a MatWriter has written, given the configuration that it was told: the values, states and times as
/// Values (values.h) delivers them.
class MatStream : public Stream
{
public:
    /// Throws comtrade::Error if the file describes other channels or another record.
    MatStream(const QString& path_, const comtrade::Configuration& configuration_);

    const comtrade::Configuration& Config() const override { return configuration; }
    bool Next(comtrade::Block& block) override;

private:
    MatVariable Open(const char* name, matio_classes kind, size_t columns);
    void CompareDescriptions();
    template <class Number>
    void ReadColumns(matvar_t& variable, size_t columns, size_t count, std::vector<Number>& numbers);
    [[noreturn]] void Fail(const QString& what) const;

    const QString path;
    const comtrade::Configuration configuration;
    MatFile file;
    MatVariable times;
    MatVariable analog;
    MatVariable states;
    size_t next = 0; // row
    std::vector<double> seconds;
    std::vector<char> column; // of a block
};

} // namespace forms
