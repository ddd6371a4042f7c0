// What happened in a record: the fault, the sequence of events, what protection and breaker did; as data, as
// JSON for programs, and in words for people.
//
//     const Summary summary = Summarise(Question{"record.cfg", lines});
//     for (const QString& sentence : SentencesOf(summary)) ...
#pragma once

#include "analysis/events.h"
#include "analysis/fault.h"
#include "analysis/operating.h"

#include <QJsonObject>
#include <QStringList>

#include <optional>
#include <vector>

namespace analysis {

/// Samples beyond this number of bytes are left out: a window around the trigger is read.
constexpr qint64 LargestAnalysed = qint64{1} << 30;

struct Question
{
    QString record;                     ///< path of the .cfg or .cff
    Lines lines;                        ///< as lines.ini has them
    QString lineFile;                   ///< path of that file, for the texts; empty: there is none
    qint64 mostBytes = LargestAnalysed; ///< of samples
    QString encoding = {};              ///< of the record's texts; empty: found out
};

struct Summary
{
    comtrade::Configuration config;
    std::vector<Circuit> circuits;
    Lines lines; ///< of the record, under the names of its circuits
    QString lineFile;
    Findings findings;
    EventList events;
    Operating operating;
    qint64 samples = 0;     ///< that were looked at
    qint64 total = 0;       ///< of the record
    double rate = 0;        ///< samples per second; of several rates the highest
    bool hasTrigger = true; ///< the trigger is within the time of the samples

    /// The faulted circuit; null without a fault.
    const Circuit* FaultedCircuit() const;
};

/// Reads the record and looks at it. Throws comtrade::Error.
Summary Summarise(const Question& question);

/// The same for a record that is in memory.
Summary Summarise(const Oscillogram& oscillogram, const Lines& lines, const QString& lineFile,
                  WantedPhasors phasors = WantedPhasors::AllWaves);

/// One object for programs, without the name of the file; docs/json.md lists the keys.
QJsonObject JsonOf(const Summary& summary);

/// The fault, the operating times and the number of events: what goes into the objects of other commands.
QJsonObject ShortJsonOf(const Summary& summary);

/// What happened in a few sentences, in the user's language. Nothing is claimed that is not known.
QStringList SentencesOf(const Summary& summary);

/// The events as a table for people: a line of heads, then one for each event.
QStringList TableOf(const Summary& summary);

/// The heads of a CSV file (RFC 4180), with the end of the line.
QByteArray CsvHead();

/// Its lines, one for each event; `file` is the first field of each.
QByteArray CsvOf(const Summary& summary, const QString& file);

/// "62 ms", "12.5 ms", "1.25 s", in the user's language.
QString DurationText(double seconds);

/// "modified Takagi method", in the user's language.
QString MethodText(DistanceMethod method);

/// A number with so many decimals and the decimal separator of the user's language; never "-0".
QString Decimal(double number, int decimals);

} // namespace analysis
