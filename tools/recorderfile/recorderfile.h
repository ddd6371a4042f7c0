// Builder of recorder files for tests, benchmarks and samples.
//
// A Recording with its defaults is a valid file; every field that a reader checks can be set to something
// wrong as well, and lengths and counts follow from the content unless they are given. A text fills its field
// up to the last byte if it is as long as the field or longer, so such a field has no NUL.
//
//     Recording recording;
//     recording.Add(AnalogChannel{"Q1:Ia", "А", {1, -2, 3}}).Add(DiscreteChannel{"Q1:x", 0, {{0, 1}}});
//     WriteFile(path, Encode(recording));
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

namespace recorderfile {

// Code page of all texts of a file.
enum class CodePage { Cp866, Cp1251 };

// A section of type 0: the channel's header and its samples.
struct AnalogChannel
{
    QString name = {};                 // "circuit:signal", 66 bytes
    QString unit = {};                 // 8 bytes
    std::vector<int16_t> samples = {}; // codes
    float rate = 2400;                 // samples per second
    int16_t zeroCode = 0;
    float primary = 1;
    float secondary = 1;
    float scale = 1;
    float skewSeconds = 0;
    float offset = 0;
    uint16_t codeRange = 32767;
    QString remark = {};        // 12 bytes
    uint16_t compressed = 0;    // the flag as stored; not 0 compresses the samples
    uint16_t blockSamples = 32; // samples in a compressed block

    std::optional<uint32_t> points = std::nullopt;     // else the number of samples
    std::optional<QByteArray> rawData = std::nullopt;  // the data area, in place of that made of the samples
    std::optional<uint32_t> dataLength = std::nullopt; // else the size of the data area
    uint32_t extraDescription = 0;                     // filler bytes between the channel header and the data
    std::optional<uint32_t> descrLength = std::nullopt; // else 130 and the filler
};

// The moment (microseconds from the start of the file) from which a discrete signal has a value.
struct Change
{
    uint32_t time;
    uint8_t value; // as stored, before the inversion
};

// A section of type 1: the channel's header and its change records.
struct DiscreteChannel
{
    QString name = {};    // "circuit:signal", 66 bytes
    uint8_t inverted = 0; // the byte as stored
    std::vector<Change> changes = {};

    std::optional<uint32_t> count = std::nullopt;       // else the number of changes
    std::optional<uint32_t> dataLength = std::nullopt;  // else the size of the records and the spare bytes
    std::optional<uint32_t> descrLength = std::nullopt; // else 81
    QByteArray spareBytes = {};                         // after the records
};

// A section of any other type, or a deliberately wrong one: bytes after a section header.
struct OtherSection
{
    uint16_t type = 2;
    QByteArray data = {};
    QString name = {};
    std::optional<uint32_t> dataLength = std::nullopt;  // else the size of the data
    std::optional<uint32_t> descrLength = std::nullopt; // else 76
};

// One recorder file. The defaults start at 31/01/2024 11:59:59.750000 and trigger half a second later, in the
// zone of +3 hours.
struct Recording
{
    using Section = std::variant<AnalogChannel, DiscreteChannel, OtherSection>;

    CodePage codePage = CodePage::Cp866;
    QByteArray version = QByteArray("40\0", 3);   // 3 bytes
    QString title = QStringLiteral("Данные РАС"); // 21 bytes, filled up with blanks
    QString comment = {};                         // 128 bytes
    QString identity = {};                        // 81 bytes
    uint32_t startTime = 1706691599;              // seconds since 1970-01-01 00:00:00 UTC
    int32_t startMicroseconds = 750000;
    uint32_t trigTime = 1706691600;
    int32_t trigMicroseconds = 250000;
    std::optional<uint32_t> duration = std::nullopt;     // microseconds; else the time of the first analog
                                                         // channel's samples, or 1 s without such a channel
    std::optional<uint16_t> channelCount = std::nullopt; // else the number of sections
    int16_t timeZone = 3;                                // seconds, minutes or hours
    uint32_t hdrSize = 263;
    std::vector<Section> sections = {}; // in file order

    // Appends a section and returns the recording itself, so that calls chain.
    Recording& Add(Section section);
};

// A file's name, without a directory, and its content.
struct NamedFile
{
    QString name;
    QByteArray bytes;
};

// The bytes of a text in a code page, without a NUL.
QByteArray EncodeText(const QString& text, CodePage codePage);

// The bytes of the file.
QByteArray Encode(const Recording& recording);

// Writes a file in one piece. False if it cannot be opened or written whole.
bool WriteFile(const QString& path, const QByteArray& bytes);

} // namespace recorderfile
