// The rules, part by part. Each file starts with the table of its rules.
#pragma once

#include "comtrade/places.h"
#include "comtrade/record.h"
#include "validate/pieces.h"
#include "validate/report.h"

#include <memory>

namespace validate {

/// A configuration, where its parts are, and where findings about it go.
struct CheckedConfiguration
{
    const comtrade::Configuration& configuration;
    const comtrade::Places& places;
    Report& report;
};

/// Where a field is written.
inline Position PositionOf(const comtrade::Place& place, int field)
{
    return {place.line, place.ColumnOf(field)};
}

enum class TextKind { Configuration, Header, Information, Data };

/// Characters, line ends and encoding of a text, which is read in the given one. The reader itself reports
/// the line ends of a configuration, and every character of the data that is no number.
void CheckText(const Piece& piece, TextKind kind, comtrade::Revision revision, const QString& encoding,
               Report& report);

/// Lengths of fields, and fields that may not be empty.
void CheckFields(const CheckedConfiguration& checked);

/// Values of the channels.
void CheckChannels(const CheckedConfiguration& checked);

/// Frequency, rates, times, codes of the clock and the type of the data.
void CheckTimes(const CheckedConfiguration& checked);

/// The marks of a container.
void CheckMarks(const Pieces& pieces, const comtrade::Configuration& configuration, Report& report);

/// The lines and sections of the INF text, and what they repeat of the configuration.
void CheckInformation(const QString& text, const comtrade::Places& places, Report& report);

/// The data, block by block.
class DataCheck
{
public:
    /// All must outlive the check.
    DataCheck(const CheckedConfiguration& checked, Report& dataReport);
    ~DataCheck();
    DataCheck(const DataCheck&) = delete;
    DataCheck& operator=(const DataCheck&) = delete;

    void Take(const comtrade::Block& block);
    void Finish();

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace validate
