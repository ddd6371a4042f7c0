// Records as a MAT file, of version 5, which every program that reads MAT files knows.
#pragma once

#include "forms/columnmatrix.h"
#include "forms/fileerror.h"
#include "forms/matvariables.h"
#include "forms/stream.h"

namespace forms {

/// Writes what Values (values.h) delivers. The samples are in memory until the end, eight bytes for an analog
/// value and one for a state: matio writes whole variables of this version only.
class MatWriter : public Writer
{
public:
    static constexpr size_t MostBytes = (size_t{1} << 31U) - 4096; ///< of a variable's numbers

    /// Throws FileError if the file cannot be made. mostBytes: that a variable may have.
    MatWriter(const QString& path_, const comtrade::Configuration& configuration_,
              size_t mostBytes = MostBytes);

    /// Throws FormError if there are too many samples or one has a time that the form cannot hold.
    void Write(const comtrade::Block& block) override;
    void Finish() override;

private:
    template <class NumberMatrix>
    void Add(NumberMatrix& matrix, const char* name, matio_classes kind, matio_types type, int flags);
    void Put(const MatVariable& variable);
    [[noreturn]] void Fail(int error) const;
    [[noreturn]] void FailOfSize() const;

    const QString path;
    const comtrade::Configuration configuration;
    MatFile file;
    ColumnMatrix<double> times;
    ColumnMatrix<double> analog;
    ColumnMatrix<quint8> states;
    std::vector<double> seconds; // of a block
};

} // namespace forms
