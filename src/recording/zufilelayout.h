// The recorder's file as it is on disk: packed little-endian structures, nothing else.
//
// A file is one ZuFileHeader followed by channelCount sections. A section is a ZuFileSectionHeader, for a
// channel its own header (ZuAnChannelHeader or ZuDiChannelHeader) and then the data. The reader and the
// builder of recordings both include this header. Text fields are 8-bit text in CP866 or CP1251.
#pragma once

#include <cstddef>
#include <cstdint>

#pragma pack(push, 1)

struct ZuFileHeader
{
    char version[3];           // "40" and a NUL
    char title[21];            // starts with "Данные "; not NUL-terminated
    char comment[128];         // start comment, NUL-terminated
    char identity[81];         // source of the recording, NUL-terminated
    uint32_t startTime;        // first sample, seconds since 1970-01-01 00:00:00 UTC
    int32_t startMicroseconds; // added to startTime; may be negative
    uint32_t trigTime;         // start of the fault, seconds
    int32_t trigMicroseconds;  // added to trigTime; may be negative
    uint32_t duration;         // length of this file's process, microseconds
    uint16_t channelCount;     // sections that follow
    int16_t timeZone;          // seconds, minutes or hours; the value shows which
    uint16_t reserved;         // never read
    uint32_t hdrSize;          // 263
};

struct ZuFileSectionHeader
{
    uint16_t type;        // a ZuSectionType
    char name[66];        // channel name, NUL-terminated
    uint32_t descrLength; // from the start of this header to the start of the data, bytes
    uint32_t dataLength;  // bytes of data
};

struct ZuAnChannelHeader
{
    uint32_t points;     // samples of the channel
    float Rate;          // samples per second
    int16_t ZeroCode;    // code added to a sample before scaling
    float Primary;       // first factor of the scaling, and the primary value
    float Secondary;     // second factor of the scaling, and the secondary value
    float Scale;         // third factor of the scaling
    float SkewSeconds;   // time skew, seconds
    char unit[8];        // unit of the physical value, NUL-terminated
    uint16_t compressed; // 0: plain samples; anything else: compressed data area
    float Offset;        // added after scaling
    uint16_t CodeRange;  // full range of the code
    char remark[12];     // additional text, NUL-terminated
};

struct ZuDiChannelHeader
{
    uint32_t count;   // change records
    uint8_t inverted; // not 0: the signal is stored inverted
};

struct ZuDiChangeRecord
{
    uint8_t value; // 0: off, anything else: on; before the inversion
    uint32_t time; // microseconds from the start of the file, from which the value holds
};

// Head of a compressed analog data area; the first block of blockSamples plain samples follows.
struct ZuCompressedHeader
{
    uint32_t total;        // size of the uncompressed samples, bytes
    uint16_t blockSamples; // samples in a block
};

#pragma pack(pop)

enum ZuSectionType : uint16_t {
    ZuSectionAnalog = 0,
    ZuSectionDiscrete = 1,
    ZuSectionLastKnown = 3 // 2 and 3 are skipped, anything above is an error
};

static_assert(sizeof(ZuFileHeader) == 263, "the file header is packed");
static_assert(offsetof(ZuFileHeader, startTime) == 233, "odd offset of the times");
static_assert(offsetof(ZuFileHeader, duration) == 249, "odd offset of the duration");
static_assert(offsetof(ZuFileHeader, hdrSize) == 259, "two reserved bytes before the size");
static_assert(sizeof(ZuFileSectionHeader) == 76, "the section header is packed");
static_assert(offsetof(ZuFileSectionHeader, descrLength) == 68, "lengths behind the name");
static_assert(sizeof(ZuAnChannelHeader) == 54, "the analog channel header is packed");
static_assert(offsetof(ZuAnChannelHeader, Primary) == 10, "odd offset of the factors");
static_assert(offsetof(ZuAnChannelHeader, Offset) == 36, "offset behind the compression flag");
static_assert(sizeof(ZuDiChannelHeader) == 5, "the discrete channel header is packed");
static_assert(sizeof(ZuDiChangeRecord) == 5, "the change record is packed");
static_assert(sizeof(ZuCompressedHeader) == 6, "the compressed head is packed");
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the structures are read in place");
