#include "verify/dataimage.h"

#include "device/zucmtrdevparam.h"
#include "verify/device.h"
#include "verify/source.h"
#include "verify/walk.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <memory>
#include <vector>

namespace verify {

namespace {

constexpr size_t BlockSize = size_t{256} << 10; // bytes; stays in the processor's cache
constexpr size_t CodeSize = sizeof(quint64);    // bytes that are looked at for a code

// The texts of all 16-bit codes, with a comma before each.
class CodeWords
{
public:
    CodeWords() : words(65536)
    {
        for (int code = -32768; code <= 32767; ++code) {
            char text[CodeSize] = {','};
            const char* const end = std::to_chars(text + 1, text + CodeSize - 1, code).ptr;
            text[CodeSize - 1] = static_cast<char>(end - text);
            words[static_cast<quint16>(code)] = qFromLittleEndian<quint64>(text);
        }
    }

    // The text, its first character in the lowest byte, and its length in the highest one.
    quint64 Of(qint16 code) const { return words[static_cast<quint16>(code)]; }

private:
    std::vector<quint64> words;
};

const CodeWords& AllCodeWords()
{
    static const CodeWords all;
    return all;
}

// The bytes of a file, a block at a time.
class Blocks
{
public:
    // Makes sure that whoever asks for so many bytes may look at them.
    Blocks(const QString& path, qint64 begin, size_t most_)
        : file(path), most(most_), size(std::max(BlockSize, 2 * most_)), bytes(new char[size + most_])
    {
        isGood = file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) && file.seek(begin);
        Fill();
    }

    // At least `most` bytes, of which those after the end are zero.
    const char* At()
    {
        if (static_cast<size_t>(end - at) < most && !isAtEnd)
            Fill();
        return at;
    }

    // Goes on after bytes that are right; false if the file has ended before.
    bool Pass(const char* after)
    {
        at = after;
        return at <= end;
    }

    bool IsOver() { return isGood && At() == end; }

private:
    void Fill()
    {
        const auto rest = static_cast<size_t>(end - at);
        std::memmove(bytes.get(), at, rest);
        size_t filled = rest;
        while (isGood && filled < size && !isAtEnd) {
            const qint64 count = file.read(bytes.get() + filled, static_cast<qint64>(size - filled));
            isGood = count >= 0;
            isAtEnd = count <= 0;
            filled += static_cast<size_t>(std::max<qint64>(count, 0));
        }
        at = bytes.get();
        end = at + filled;
        std::memset(bytes.get() + filled, 0, most);
    }

    QFile file;
    const size_t most;
    const size_t size; // bytes of a block
    const std::unique_ptr<char[]> bytes;
    const char* at = bytes.get();
    const char* end = bytes.get();
    bool isGood = false;
    bool isAtEnd = false;
};

// The records, each compared where it should be.
class DataImage
{
public:
    explicit DataImage(const Source& source)
        : rows(source), walk(rows.At()), analog(source.AnalogCount()), stateCount(source.StateCount())
    {}
    virtual ~DataImage() = default;
    DataImage(const DataImage&) = delete;
    DataImage& operator=(const DataImage&) = delete;

    bool IsThatOf(Blocks& blocks)
    {
        while (rows.Next()) {
            const char* const after = Pass(blocks.At());
            if (after == nullptr || !blocks.Pass(after))
                return false;
        }
        return blocks.IsOver();
    }

protected:
    // Returns what follows the record; null if it is another one.
    virtual const char* Pass(const char* at) = 0;

    static const char* PassBytes(const char* at, const char* expected, size_t size)
    {
        return std::memcmp(at, expected, size) == 0 ? at + size : nullptr;
    }

    SourceRows rows;
    const Walk& walk;
    const size_t analog; // channels
    const size_t stateCount;
};

// Lines: number, time, codes, states; nothing in place of a code that is missing.
class AsciiImage : public DataImage
{
public:
    explicit AsciiImage(const Source& source)
        : DataImage(source), codes(AllCodeWords()), states(2 * stateCount, ',')
    {
        states.push_back('\n');
    }

    static size_t LongestRecord(const Source& source)
    {
        return HeadSize + CodeSize * (source.AnalogCount() + 1) + 2 * source.StateCount() + 1;
    }

private:
    static constexpr size_t LongestNumber = 20;
    static constexpr size_t HeadSize = 2 * LongestNumber + 1; // two of them and a comma

    const char* Pass(const char* at) override
    {
        at = PassHead(at);
        if (at != nullptr)
            at = rows.HasAllSamples() ? PassCodes(at) : PassSomeCodes(at);
        if (rows.HaveStatesChanged())
            PutStates();
        return at != nullptr ? PassBytes(at, states.data(), states.size()) : nullptr;
    }

    void PutStates()
    {
        char* state = states.data() + 1;
        for (size_t i = 0; i < stateCount; ++i, state += 2)
            *state = rows.State(i) ? '1' : '0';
    }

    const char* PassHead(const char* at) const
    {
        char head[HeadSize];
        char* end = std::to_chars(head, head + LongestNumber, walk.Number()).ptr;
        *end++ = ',';
        end = std::to_chars(end, end + LongestNumber, walk.Time()).ptr;
        return PassBytes(at, head, static_cast<size_t>(end - head));
    }

    const char* PassCodes(const char* at) const
    {
        quint64 difference = 0;
        for (size_t i = 0; i < analog; ++i)
            at += Compare(at, rows.Code(i), difference);
        return difference == 0 ? at : nullptr;
    }

    const char* PassSomeCodes(const char* at) const
    {
        quint64 difference = 0;
        for (size_t i = 0; i < analog; ++i) {
            if (rows.HasSample(i))
                at += Compare(at, rows.Code(i), difference);
            else
                difference |= *at++ == ',' ? 0U : 1U;
        }
        return difference == 0 ? at : nullptr;
    }

    // Returns the length of the code's text; the difference is no longer 0 if it is not there.
    size_t Compare(const char* at, qint16 code, quint64& difference) const
    {
        const quint64 word = codes.Of(code);
        const quint64 length = word >> 56U;
        difference |= (qFromLittleEndian<quint64>(at) ^ word) << (64 - 8 * length); // of these bytes alone
        return static_cast<size_t>(length);
    }

    const CodeWords& codes;
    std::vector<char> states;
};

// Binary records: number and time of 32 bits each, codes of 16, states in words of 16, all little-endian.
class BinaryImage : public DataImage
{
public:
    explicit BinaryImage(const Source& source)
        : DataImage(source), record(static_cast<size_t>(source.BinaryRecordSize()))
    {}

private:
    const char* Pass(const char* at) override
    {
        char* out = record.data();
        qToLittleEndian(static_cast<quint32>(walk.Number()), out);
        qToLittleEndian(static_cast<quint32>(walk.Time()), out + 4);
        out += 8;
        for (size_t i = 0; i < analog; ++i, out += 2)
            qToLittleEndian(rows.HasSample(i) ? rows.Code(i) : MissingCode, out);
        if (rows.HaveStatesChanged())
            PutStates(out);
        return PassBytes(at, record.data(), record.size());
    }

    void PutStates(char* out) const
    {
        for (size_t first = 0; first < stateCount; first += 16, out += 2) {
            unsigned word = 0;
            for (size_t i = first; i < std::min(first + 16, stateCount); ++i)
                word |= (rows.State(i) ? 1U : 0U) << (i - first);
            qToLittleEndian(static_cast<quint16>(word), out);
        }
    }

    std::vector<char> record;
};

} // namespace

bool HasExpectedData(const QString& path, qint64 begin, const Source& source)
{
    if (source.Owner().Param().ComtradeBin) {
        Blocks blocks(path, begin, static_cast<size_t>(source.BinaryRecordSize()));
        return BinaryImage(source).IsThatOf(blocks);
    }
    Blocks blocks(path, begin, AsciiImage::LongestRecord(source));
    return AsciiImage(source).IsThatOf(blocks);
}

} // namespace verify
