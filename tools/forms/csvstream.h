// Comma-separated values read back.
#pragma once

#include "forms/csvtext.h"

#include <QFile>

#include <vector>

namespace forms {

/// What a CsvWriter has written, given what it was told: the values, states and times as Values (values.h)
/// delivers them.
class CsvStream : public Stream
{
public:
    /// Throws comtrade::Error if the titles are not those of the configuration.
    CsvStream(const QString& path, const comtrade::Configuration& configuration_, const CsvForm& form);

    const comtrade::Configuration& Config() const override { return configuration; }
    bool Next(comtrade::Block& block) override;

private:
    bool NextLine(const char*& begin, const char*& end);
    bool Fill();
    void ParseLine(const char* begin, const char* end, comtrade::Block& block, size_t record);
    [[noreturn]] void Fail(const QString& what) const;

    const comtrade::Configuration configuration;
    const char separator;
    const char point;
    CsvTimeText times;
    QFile file;
    std::vector<char> buffer;
    size_t first = 0; // of what is read but not taken yet
    size_t last = 0;
    qint64 line = 1;
};

} // namespace forms
