// Records as comma-separated values.
#pragma once

#include "forms/bufferedfile.h"
#include "forms/csvtext.h"

namespace forms {

/// Writes what Values (values.h) delivers. Numbers have the fewest digits that are read as the same double
/// again; a missing value is an empty field.
class CsvWriter : public Writer
{
public:
    /// Throws text::Error.
    CsvWriter(const QString& path, const comtrade::Configuration& configuration, const CsvForm& form);

    void Write(const comtrade::Block& block) override;
    void Finish() override { file.Finish(); }

private:
    const size_t analogChannels;
    const size_t stateChannels;
    const size_t longestLine;
    const char separator;
    const char point;
    CsvTimeText times;
    BufferedFile file;
};

} // namespace forms
