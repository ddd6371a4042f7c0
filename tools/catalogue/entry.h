// What the catalogue of an archive knows of one recording or record.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace catalogue {

enum class Kind { Recording, Record };

/// "recording", "record".
const char* NameOf(Kind kind);

/// A file of it.
struct Piece
{
    QString name;        ///< without the directory
    qint64 size = 0;     ///< bytes
    qint64 modified = 0; ///< nanoseconds since 1970
    QByteArray sha256{}; ///< in hexadecimal digits
};

/// Whether two states of a file are the same as far as its directory shows.
inline bool IsSameState(const Piece& a, const Piece& b)
{
    return a.name == b.name && a.size == b.size && a.modified == b.modified;
}

struct AnalogFacts
{
    QString circuit;
    QString name;
    QString phase;
    QString unit;
    std::optional<double> least; ///< primary, in the unit; none without a value
    std::optional<double> greatest;
};

struct DigitalFacts
{
    QString circuit;
    QString name;
    QString phase;
    qint64 changes = 0;
    std::optional<double> first; ///< of them, seconds from the trigger
};

struct EventFacts
{
    double time = 0;    ///< seconds from the trigger
    size_t channel = 0; ///< place among the digital channels
    QString kind;       ///< as in the JSON output of `zucmtr events`
    bool isActive = false;
    bool state = false;
};

struct FaultFacts
{
    QString circuit;
    QString kind; ///< "AG" to "ABCG"
    QString direction;
    double onset = 0;               ///< seconds from the trigger
    std::optional<double> clearing; ///< likewise
    QString method;                 ///< of the distance; empty: there is none
    std::optional<double> percent;  ///< of the length of the line
    std::optional<double> kilometres;
    std::optional<double> resistance; ///< ohms
    std::optional<double> current;    ///< greatest RMS of the phases during the fault, primary amperes
};

/// The waves of the faulted circuit around the fault, so small that a list can show them: a time is cut into
/// PictureColumns columns, and each wave has in each the value that is farthest from zero.
struct PictureFacts
{
    double from = 0; ///< seconds from the trigger
    double to = 0;
    std::optional<double> current; ///< greatest magnitude shown, primary amperes; none without current
    std::optional<double> voltage; ///< likewise, volts
    /// Ia Ib Ic Ua Ub Uc, separated by blanks, an empty one for a wave that is not there: one letter of
    /// PictureLetters for each column.
    QString waves;
};

constexpr int PictureColumns = 128;

/// The letters in the order of their values: the first is minus the greatest magnitude, the middle one zero,
/// the last but one plus the greatest magnitude. The last stands for a value that is missing.
constexpr char PictureLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";

/// Seconds, from the onset of the fault or the first start.
struct OperatingFacts
{
    std::optional<double> start;
    std::optional<double> trip;
    std::optional<double> breaker;
    std::optional<double> clearing;
    std::optional<double> deadTime;
    std::optional<bool> reclosed;
};

struct Entry
{
    Kind kind = Kind::Recording;
    QString path; ///< of the first file, the .cfg or the .cff; absolute
    std::vector<Piece> pieces;
    QString reason; ///< word for why it could not be read; empty: it could
    QString error;  ///< the same for people

    QString station;
    QString recorder;
    QString start;                ///< ISO 8601, with the offset from UTC if it is known
    QString trigger;              ///< likewise
    std::optional<int> utcOffset; ///< minutes
    qint64 moment = 0;            ///< of the trigger: microseconds since 1970 in UTC, or on its own clock
    QString circuit;              ///< that started the recorder
    QString cause;
    QString setting;
    double duration = 0; ///< seconds
    qint64 samples = 0;
    QString rates; ///< "2400", "2400:1000 4800:9000" (hertz and last sample), "0" without a rate
    double frequency = 0;
    std::vector<AnalogFacts> analog;
    std::vector<DigitalFacts> digital;
    std::vector<EventFacts> events;
    std::optional<double> greatestCurrent; ///< magnitude of all current channels, primary amperes
    std::optional<double> greatestVoltage; ///< likewise, volts
    std::optional<FaultFacts> fault;
    std::optional<PictureFacts> picture; ///< of the fault
    OperatingFacts operating;
    qint64 forgiven = 0; ///< findings in the files of a record that were forgiven
};

/// SHA-256 of the names' endings and the contents of all pieces, in hexadecimal digits: the same wherever the
/// files lie and whatever their base name is.
QByteArray PrintOf(const std::vector<Piece>& pieces);

} // namespace catalogue
