// What an export is to write: which part of a record, and in which form.
//
// On its way a record passes these stages, each a Stream (stream.h):
//
//     RecordStream -> ChannelChoice -> TimeWindow -> Resampling -> Recoding or Values -> a Writer
//
// and what was written is read back through a Stream of the form and compared with what the writer was given,
// record by record. So each stage delivers exactly what the form can hold:
//
// - COMTRADE: codes with their a and b. A stage whose codes are no whole numbers (Resampling) says so with
//   dataType = Float32 in its Config() and delivers codes that are exact in single precision.
// - CSV and MAT: values. Values (values.h) delivers a = 1 and b = 0 for each channel, a * code + b in double
//   precision as the "code" (NaN: missing), and as the time of every record the whole nanoseconds from the
//   trigger, with start.decimals = 9 and timeMultiplier = 1, so that StampSeconds() is 1e-9. The streams that
//   read CSV and MAT back deliver the same: channels with name, phase, circuit and unit as the form holds
//   them, the same values, states and times, to the bit.
#pragma once

#include "comtrade/record.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace forms {

enum class Form { Cfg, Cff, Csv, Mat };

/// Whose values: of the primary circuit, of the secondary one, or whatever the record has.
enum class Side { AsStored, Primary, Secondary };

/// Of a COMTRADE record; what is not set is as in the source.
struct ComtradeForm
{
    std::optional<comtrade::Revision> revision;
    std::optional<comtrade::DataType> data;
    QByteArray encoding = "UTF-8"; ///< of the texts, a name that QTextCodec knows
};

/// How the time of a record stands in a CSV file.
enum class CsvTime { Seconds, Iso8601 };

struct CsvForm
{
    CsvTime time = CsvTime::Seconds; ///< from the trigger; or date and time, with the offset if it is known
    bool decimalComma = false;       ///< numbers with a comma, fields separated by semicolons
};

/// A part of a record in seconds from its trigger; a limit that is not set is the record's own.
struct Span
{
    std::optional<double> from; ///< the first sample at or after it is the first one kept
    std::optional<double> to;   ///< the last sample at or before it is the last one kept
};

/// Channels by their places in the configuration, counted from 0, in its order.
struct ChannelSet
{
    std::vector<size_t> analog;
    std::vector<size_t> states;

    bool IsEmpty() const { return analog.empty() && states.empty(); }
};

struct Request
{
    Form form = Form::Cfg;
    ComtradeForm comtrade;
    CsvForm csv;
    Side side = Side::AsStored;
    QStringList channels;      ///< names, numbers (A3, D5), circuits or patterns with * and ?
    ChannelSet places;         ///< further channels; if there are neither, all are kept
    bool changingOnly = false; ///< states that never change are left out
    Span span;
    int every = 1;   ///< keep one sample of so many, without a filter
    double rate = 0; ///< Hz, resampled after an anti-aliasing filter; 0: as it is
};

} // namespace forms
