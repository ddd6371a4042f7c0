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
constexpr size_t CodeSize = sizeof(quint64);    // bytes that are written for a code

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

// The records, each put together and compared where it should be.
class DataImage
{
public:
    explicit DataImage(const Source& source)
        : rows(source), walk(rows.At()), analog(source.AnalogCount()), stateCount(source.StateCount())
    {}
    virtual ~DataImage() = default;
    DataImage(const DataImage&) = delete;
    DataImage& operator=(const DataImage&) = delete;

    // No record has more bytes than `longest`.
    bool IsIn(const QString& path, qint64 begin, size_t longest)
    {
        Blocks blocks(path, begin, longest);
        const std::unique_ptr<char[]> record(new char[longest]);
        while (rows.Next()) {
            const char* const at = blocks.At();
            const auto size = static_cast<size_t>(Put(record.get()) - record.get());
            if (std::memcmp(at, record.get(), size) != 0 || !blocks.Pass(at + size))
                return false;
        }
        return blocks.IsOver();
    }

protected:
    // Puts the record of the rows into the room from out on. Returns its end.
    virtual char* Put(char* out) = 0;

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
        return 2 * LongestNumber + 1 + CodeSize * (source.AnalogCount() + 1) + 2 * source.StateCount() + 1;
    }

private:
    static constexpr size_t LongestNumber = 20;

    char* Put(char* out) override
    {
        out = std::to_chars(out, out + LongestNumber, walk.Number()).ptr;
        *out++ = ',';
        out = std::to_chars(out, out + LongestNumber, walk.Time()).ptr;
        if (rows.HasAllSamples()) {
            for (size_t i = 0; i < analog; ++i)
                out = PutCode(rows.Code(i), out);
        } else {
            PutSomeCodes(out);
        }
        if (rows.HaveStatesChanged())
            ChangeStates();
        return std::copy(states.begin(), states.end(), out);
    }

    // Writes up to CodeSize bytes.
    char* PutCode(qint16 code, char* out) const
    {
        const quint64 word = codes.Of(code);
        qToLittleEndian(word, out);
        return out + (word >> 56U);
    }

    void PutSomeCodes(char*& out) const
    {
        for (size_t i = 0; i < analog; ++i) {
            if (rows.HasSample(i))
                out = PutCode(rows.Code(i), out);
            else
                *out++ = ',';
        }
    }

    void ChangeStates()
    {
        char* state = states.data() + 1;
        for (size_t i = 0; i < stateCount; ++i, state += 2)
            *state = rows.State(i) ? '1' : '0';
    }

    const CodeWords& codes;
    std::vector<char> states;
};

// Binary records: number and time of 32 bits each, codes of 16, states in words of 16, all little-endian.
class BinaryImage : public DataImage
{
public:
    explicit BinaryImage(const Source& source) : DataImage(source), states((stateCount + 15) / 16) {}

private:
    char* Put(char* out) override
    {
        qToLittleEndian(static_cast<quint32>(walk.Number()), out);
        qToLittleEndian(static_cast<quint32>(walk.Time()), out + 4);
        out += 8;
        for (size_t i = 0; i < analog; ++i, out += 2)
            qToLittleEndian(rows.HasSample(i) ? rows.Code(i) : MissingCode, out);
        if (rows.HaveStatesChanged())
            ChangeStates();
        for (const quint16 word : states) {
            qToLittleEndian(word, out);
            out += 2;
        }
        return out;
    }

    void ChangeStates()
    {
        std::fill(states.begin(), states.end(), quint16{0});
        for (size_t i = 0; i < stateCount; ++i)
            states[i / 16] = static_cast<quint16>(states[i / 16] | (rows.State(i) ? 1U : 0U) << i % 16);
    }

    std::vector<quint16> states;
};

} // namespace

bool HasExpectedData(const QString& path, qint64 begin, const Source& source)
{
    if (source.Owner().Param().ComtradeBin)
        return BinaryImage(source).IsIn(path, begin, static_cast<size_t>(source.BinaryRecordSize()));
    return AsciiImage(source).IsIn(path, begin, AsciiImage::LongestRecord(source));
}

} // namespace verify
