// COMTRADE records (IEEE C37.111, revisions 1991, 1999 and 2013) as their readers see them.
//
//     comtrade::Record record(QStringLiteral("rec.cfg")); // or rec.cff
//     comtrade::Row row;
//     while (record.Next(row))
//         Use(record.Config().analog[0].a * row.analog[0] + record.Config().analog[0].b);
//
// The reader knows nothing of the library that writes records. Files are hostile: every failure is an Error
// that says where it is, and memory stays in proportion to the configuration, however large the data.
#pragma once

#include "comtrade/finding.h"
#include "comtrade/places.h"
#include "text/error.h"

#include <QByteArray>
#include <QDate>
#include <QString>

#include <limits>
#include <memory>
#include <vector>

namespace comtrade {

/// A record that cannot be read. The message names the file, the line or record, and what is wrong.
class Error : public text::Error
{
public:
    /// line: of the file, or the record of its data, from 1; 0: of the whole file.
    explicit Error(const QString& text_, qint64 line_ = 0) : text::Error(text_), line(line_) {}
    qint64 Line() const { return line; }

private:
    qint64 line;
};

enum class Revision { R1991 = 1991, R1999 = 1999, R2013 = 2013 };

enum class DataType { Ascii, Binary, Binary32, Float32 };

/// An analog channel; its value in `unit` is a * code + b. Revision 1991 has no ratio and no side: there they
/// are 1, 1 and primary.
struct AnalogChannel
{
    int number = 0;
    QString name;
    QString phase;
    QString circuit;
    QString unit;
    double a = 0;
    double b = 0;
    double skew = 0; // microseconds
    double min = 0;  // of the codes
    double max = 0;
    double primary = 0;
    double secondary = 0;
    bool primaryValues = false; // the values are primary ones ("P")
};

struct StateChannel
{
    int number = 0;
    QString name;
    QString phase;
    QString circuit;
    bool normalState = false;
};

struct SampleRate
{
    double hertz = 0; // 0: the rate is not constant, the times of the records count
    qint64 lastSample = 0;
};

struct TimeStamp
{
    QDate date;
    qint64 nanoseconds = 0; // since midnight
    int decimals = 0;       // of the seconds, as written
};

struct Configuration
{
    QString station;
    QString device;
    Revision revision = Revision::R1999;
    std::vector<AnalogChannel> analog;
    std::vector<StateChannel> states;
    double lineFrequency = 0; // Hz
    std::vector<SampleRate> rates;
    TimeStamp start;
    TimeStamp trigger;
    DataType dataType = DataType::Ascii;
    double timeMultiplier = 1;
    // As written in revision 2013; empty where the lines are missing, as in the other revisions.
    QString timeCode;
    QString localCode;
    QString timeQuality;
    QString leapSecond;

    /// The number of records that the data must have: the last sample of the last rate.
    qint64 SampleCount() const;

    /// Seconds of one unit of the records' time stamps.
    double StampSeconds() const;
};

/// Whether a file is a record's configuration (.cfg) or container (.cff), by its name.
bool IsRecordFile(const QString& path);

/// The name of the type in a CFG file.
QString NameOf(DataType type);

/// Parses a CFG text. fileName is for the Error and the findings, firstLine the number of the text's first
/// line in that file. What is not as it should be, but has only one meaning, is added to `forgiven`; without
/// it, it is an Error. Where the parts are is left in `places`, if it is given.
Configuration ParseConfiguration(const QString& text, const QString& fileName, Findings* forgiven,
                                 qint64 firstLine = 1, Places* places = nullptr);

/// The same of bytes whose encoding is found out.
Configuration ParseConfiguration(const QByteArray& text, const QString& fileName,
                                 Findings* forgiven = nullptr);

/// One record of the data.
struct Row
{
    quint32 number = 0;
    bool hasTime = false;
    qint64 time = 0; // as stored, before the time multiplier
    /// Codes as stored; NaN where the value is missing: in ASCII an empty field or 99999, in BINARY 8000h, in
    /// BINARY32 80000000h, in FLOAT32 whatever is not finite.
    std::vector<double> analog;
    std::vector<quint8> states; // 0 or 1
};

/// Several records of the data, one after the other: value `channel` of record `i` is at
/// [i * channels + channel].
struct Block
{
    /// Stands for a time stamp that is missing.
    static constexpr qint64 NoTime = std::numeric_limits<qint64>::min();

    size_t count = 0; ///< of records
    std::vector<quint32> numbers;
    std::vector<qint64> times;  ///< as stored, before the time multiplier; or NoTime
    std::vector<double> analog; ///< codes as in Row
    std::vector<quint8> states; ///< 0 or 1

    /// Makes room for so many records.
    void Resize(size_t records, const Configuration& configuration);
};

/// ASCII records whose values are integers of -32767 to 32767, otherwise like a Block.
struct NarrowBlock
{
    size_t count = 0;
    std::vector<quint32> numbers;
    std::vector<qint64> times;
    std::vector<qint16> analog; ///< -32768: missing
    std::vector<quint8> states;
};

/// Binary records as they stand in the file, for those who convert them themselves (binaryrecord.h).
struct StoredRecords
{
    const char* bytes = nullptr; ///< of the first; valid until the next are asked for
    size_t size = 0;             ///< bytes of each
    size_t count = 0;
};

/// How a record is read.
struct ReadingOptions
{
    QString encoding;      ///< of its texts, a name that QTextCodec knows; empty: found out
    bool isStrict = false; ///< what could be forgiven is an Error
};

/// For those who check records: nothing is forgiven.
inline ReadingOptions Strict()
{
    ReadingOptions options;
    options.isStrict = true;
    return options;
}

class DataReader;

/// A record on disk: a .cfg with .dat, .hdr and .inf beside it, or a .cff.
class Record
{
public:
    /// Reads all but the data. Throws Error.
    explicit Record(const QString& path, const ReadingOptions& options = {});
    ~Record();
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    const Configuration& Config() const { return configuration; }

    /// Where the parts of the configuration are in its file, the .cfg or .cff.
    const comtrade::Places& Places() const { return places; }

    /// The encoding of the configuration, as given or found out, by a name that QTextCodec knows.
    const QString& Encoding() const { return encoding; }

    /// The pieces as stored; empty if there are none.
    const QByteArray& Header() const { return header; }
    const QByteArray& Information() const { return information; }

    /// The same as texts, in the encoding that was given, else in the one that is found out for each.
    QString HeaderText() const;
    QString InformationText() const;

    /// Reads the next record into row, whose vectors are used again; false after the last one. Throws Error
    /// for a record that is cut off or malformed.
    bool Next(Row& row);

    /// The same for as many records as make a block of some hundred kilobytes; false if there is none. What
    /// precedes a malformed record is delivered first.
    bool Next(Block& block);

    /// The type of the data as they are stored, which may be another one than the configuration says.
    DataType StoredType() const;

    /// Whether the data are binary records whose values mean what their bits say. In revision 1991 that
    /// depends on the channel.
    bool HasStoredRecords() const;

    /// The next of them without conversion; false after the last one. Throws Error like the others.
    bool Next(StoredRecords& stored);

    /// The next ASCII records as far as they are narrow and plainly written; false if the next one is not,
    /// and for other data: another Next goes on with it.
    bool Next(NarrowBlock& block);

    /// More records than this cannot follow: their bytes are too few. ASCII records that lack fields are not
    /// counted.
    qint64 MostRecords() const;

    /// As many records as should follow: what the configuration says, at most MostRecords.
    qint64 ExpectedRecords() const;

    /// What was forgiven so far; complete when all records have been read.
    const Findings& Forgiven() const { return findings; }

private:
    void OpenContainer(const QString& path);
    void OpenPieces(const QString& path);
    Findings* Forgiving();
    void Parse(const QByteArray& text, const QString& path, qint64 firstLine);
    void CountSamples(const QString& path, qint64 offset, qint64 length);

    const ReadingOptions options;
    Findings findings;
    QString encoding;
    Configuration configuration;
    comtrade::Places places;
    QByteArray header;
    QByteArray information;
    std::unique_ptr<DataReader> data;
};

} // namespace comtrade
