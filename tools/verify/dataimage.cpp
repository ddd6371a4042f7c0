#include "verify/dataimage.h"

#include "device/zucmtrdevparam.h"
#include "verify/device.h"
#include "verify/source.h"
#include "verify/walk.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <memory>
#include <vector>

namespace verify {

namespace {

constexpr size_t BlockSize = size_t{256} << 10; // bytes; stays in the processor's cache
constexpr size_t CodeSize = sizeof(quint64);    // bytes that are written for a code

// The texts of 16-bit codes, with a comma before each: those that have been asked for. Several threads may
// ask at once.
class CodeWords
{
public:
    // The text, its first character in the lowest byte, and its length in the highest one.
    quint64 Of(qint16 code)
    {
        std::atomic<quint64>& word = words[static_cast<quint16>(code)];
        const quint64 known = word.load(std::memory_order_relaxed);
        return known != 0 ? known : Make(code, word);
    }

private:
    static quint64 Make(qint16 code, std::atomic<quint64>& word)
    {
        char text[CodeSize] = {','};
        const char* const end = std::to_chars(text + 1, text + CodeSize - 1, code).ptr;
        text[CodeSize - 1] = static_cast<char>(end - text);
        const auto made = qFromLittleEndian<quint64>(text);
        word.store(made, std::memory_order_relaxed);
        return made;
    }

    std::array<std::atomic<quint64>, 65536> words{};
};

// Memory of which nothing is there before it is used.
CodeWords& AllCodeWords()
{
    static CodeWords all;
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
            const std::vector<char>& states = States();
            if (std::memcmp(at, record.get(), size) != 0 ||
                !std::equal(states.begin(), states.end(), at + size) ||
                !blocks.Pass(at + size + states.size()))
                return false;
        }
        return blocks.IsOver();
    }

protected:
    // Puts the record of the rows, up to its states, into the room from out on. Returns its end.
    virtual char* Put(char* out) = 0;

    // The rest of it. Most records have the states of the one before.
    virtual const std::vector<char>& States() = 0;

    SourceRows rows;
    const Walk& walk;
    const size_t analog; // channels
    const size_t stateCount;
};

// 1, 2, 3 and so on in decimal digits, each from the one before.
class CountedText
{
public:
    char* PutNext(char* out)
    {
        size_t place = text.size();
        while (text[--place] == '9')
            text[place] = '0';
        ++text[place];
        first = std::min(first, place);
        return std::copy(text.begin() + static_cast<std::ptrdiff_t>(first), text.end(), out);
    }

private:
    static constexpr size_t MostDigits = 20; // of 64 bits

    static std::array<char, MostDigits> Zeros()
    {
        std::array<char, MostDigits> zeros{};
        zeros.fill('0');
        return zeros;
    }

    std::array<char, MostDigits> text = Zeros();
    size_t first = MostDigits; // digit that is not a leading zero
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
        out = number.PutNext(out);
        *out++ = ',';
        out = std::to_chars(out, out + LongestNumber, walk.Time()).ptr;
        if (rows.HasAllSamples()) {
            out = PutCodes(codes, rows.Codes(), analog, out);
        } else {
            PutSomeCodes(out);
        }
        return out;
    }

    const std::vector<char>& States() override
    {
        if (rows.HaveStatesChanged())
            ChangeStates();
        return states;
    }

    // Of what stands in members nothing is asked meanwhile: for all that the compiler knows, they change with
    // each character that is written. Writes up to CodeSize bytes for each.
    static char* PutCodes(CodeWords& words, const qint16* row, size_t count, char* out)
    {
        for (size_t i = 0; i < count; ++i) {
            const quint64 word = words.Of(row[i]);
            qToLittleEndian(word, out);
            out += word >> 56U;
        }
        return out;
    }

    void PutSomeCodes(char*& out)
    {
        for (size_t i = 0; i < analog; ++i) {
            if (rows.HasSample(i)) {
                const qint16 code = rows.Code(i);
                out = PutCodes(codes, &code, 1, out);
            } else {
                *out++ = ',';
            }
        }
    }

    void ChangeStates()
    {
        char* state = states.data() + 1;
        for (size_t i = 0; i < stateCount; ++i, state += 2)
            *state = rows.State(i) ? '1' : '0';
    }

    CodeWords& codes;
    CountedText number; // of the record
    std::vector<char> states;
};

// Binary records: number and time of 32 bits each, codes of 16, states in words of 16, all little-endian.
class BinaryImage : public DataImage
{
public:
    explicit BinaryImage(const Source& source) : DataImage(source), states((stateCount + 15) / 16 * 2) {}

private:
    char* Put(char* out) override
    {
        qToLittleEndian(static_cast<quint32>(walk.Number()), out);
        qToLittleEndian(static_cast<quint32>(walk.Time()), out + 4);
        out += 8;
        if (rows.HasAllSamples())
            out = PutCodes(out);
        else
            out = PutSomeCodes(out);
        return out;
    }

    const std::vector<char>& States() override
    {
        if (rows.HaveStatesChanged())
            ChangeStates();
        return states;
    }

    char* PutCodes(char* out)
    {
        const qint16* const row = rows.Codes();
        for (size_t i = 0; i < analog; ++i, out += 2)
            qToLittleEndian(row[i], out);
        return out;
    }

    char* PutSomeCodes(char* out) const
    {
        for (size_t i = 0; i < analog; ++i, out += 2)
            qToLittleEndian(rows.HasSample(i) ? rows.Code(i) : MissingCode, out);
        return out;
    }

    void ChangeStates()
    {
        std::fill(states.begin(), states.end(), '\0');
        for (size_t i = 0; i < stateCount; ++i)
            if (rows.State(i))
                states[i / 8] = static_cast<char>(static_cast<quint8>(states[i / 8]) | 1U << i % 8);
    }

    std::vector<char> states; // the lower byte of each word first
};

} // namespace

bool HasExpectedData(const QString& path, qint64 begin, const Source& source)
{
    if (source.Owner().Param().ComtradeBin)
        return BinaryImage(source).IsIn(path, begin, static_cast<size_t>(source.BinaryRecordSize()));
    return AsciiImage(source).IsIn(path, begin, AsciiImage::LongestRecord(source));
}

} // namespace verify
