// The DAT file: one record per sample, over all segments of a recording.
//
// Records are built in a block, which is written at once. A value costs about a nanosecond because the
// channel order becomes pointers once per segment, a code's text comes from a table, and the discrete states
// are looked up when they change.
#include "service/zucmtrconverter.h"

#include "recording/zufileformat.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "writers/coderows.h"
#include "writers/codetexts.h"
#include "writers/samplewalk.h"
#include "writers/staterow.h"

#include <QFile>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <memory>

namespace {

constexpr size_t BlockSize = size_t{256} * 1024; // bytes; a record is 37 KB at most

// The texts of times, two digits at a time.
class TimeText
{
public:
    TimeText()
    {
        for (int i = 0; i < 100; ++i) {
            pairs[i][0] = static_cast<char>('0' + i / 10);
            pairs[i][1] = static_cast<char>('0' + i % 10);
        }
    }

    // Writes a time of microseconds to out, which has room for 20 bytes. Returns the end of the text.
    char* Append(quint64 time, char* out) const
    {
        if (time > std::numeric_limits<quint32>::max())
            return std::to_chars(out, out + 20, static_cast<qint64>(time)).ptr;
        auto rest = static_cast<quint32>(time);
        char digits[2 * Width] = {}; // right-aligned in the first half
        char* first = digits + Width;
        for (; rest >= 100; rest /= 100)
            std::memcpy(first -= 2, pairs[rest % 100], 2);
        std::memcpy(first -= 2, pairs[rest], 2);
        if (rest < 10)
            ++first;
        std::memcpy(out, first, Width); // whatever the length
        return out + (digits + Width - first);
    }

private:
    static constexpr size_t Width = 10;
    char pairs[100][2];
};

// The texts of 1, 2, 3 ...: from one to the next, most often only the last digit changes.
class CounterText
{
public:
    CounterText() { std::fill_n(digits, Width, '0'); }

    // Writes the next text to out, which has room for 20 bytes. Returns the end of the text.
    char* AppendNext(char* out)
    {
        size_t place = Width - 1;
        while (digits[place] == '9')
            digits[place--] = '0';
        ++digits[place];
        first = std::min(first, place);
        std::memcpy(out, digits + first, Width); // whatever the length: one instruction or two
        return out + (Width - first);
    }

private:
    static constexpr size_t Width = 20;
    char digits[2 * Width] = {}; // right-aligned in the first half
    size_t first = Width - 1;
};

// The texts of an ASCII record.
struct RecordTexts
{
    CounterText number;
    TimeText time;
    const CodeTexts& codes = CodeTexts::Get();
};

char* AppendAsciiRecord(const SampleWalk& walk, CodeRows& codes, const StateRow& states, RecordTexts& texts,
                        char* out)
{
    out = texts.number.AppendNext(out);
    *out++ = ',';
    out = texts.time.Append(walk.Time(), out);
    const size_t sample = walk.SegmentSample();
    const qint16* row = codes.Row(sample);
    if (codes.AllHave(sample)) {
        out = texts.codes.Append(row, codes.Count(), out);
    } else {
        for (size_t i = 0; i < codes.Count(); ++i) {
            if (codes.Has(i, sample))
                out = texts.codes.Append(row + i, 1, out);
            else
                *out++ = ','; // missing data
        }
    }
    out = states.Append(out);
    *out++ = '\n';
    return out;
}

char* AppendBinaryRecord(const SampleWalk& walk, CodeRows& codes, const StateRow& states, char* out)
{
    const quint32 head[2] = {static_cast<quint32>(walk.Number()), static_cast<quint32>(walk.Time())};
    std::memcpy(out, head, sizeof head);
    out += sizeof head;
    const auto* row = reinterpret_cast<const char*>(codes.Row(walk.SegmentSample()));
    out = std::copy(row, row + sizeof(qint16) * codes.Count(), out);
    return states.Append(out);
}

// Room of a record of either form: two numbers of 20 characters, commas, the codes, the states, line end.
size_t LongestRecord(size_t analog, size_t discrete)
{
    return 64 + (CodeTexts::Longest + 1) * analog + 2 * discrete;
}

} // namespace

bool ZuCmtrConverter::WriteDat(std::vector<ZuFileFormat*>* files, ZuCmtrDevParam* dev)
{
    const bool binary = dev->ComtradeBin;
    QFile& file = dev->FileDat;
    if (binary)
        dev->DatBytes = 0;
    if (!file.open(binary ? QIODevice::WriteOnly : QIODevice::WriteOnly | QIODevice::Text))
        return false;

    const ZuFileFormat& first = *files->at(0);
    const ResorterZuCmtrConv& order = *dev->Resorter;
    CodeRows codes(first.AnChannels.size());
    StateRow states(binary ? StateRow::Form::Words : StateRow::Form::Ascii, first.DiChannels.size());
    RecordTexts texts;
    const size_t longest = LongestRecord(first.AnChannels.size(), first.DiChannels.size());
    const size_t blockSize = std::max(BlockSize, longest);
    const std::unique_ptr<char[]> block(new char[blockSize]);
    char* out = block.get();

    const auto flushBlock = [&] {
        const qint64 size = out - block.get();
        out = block.get();
        if (size == 0)
            return true;
        const qint64 written = file.write(block.get(), size);
        if (!binary)
            return written != 0; // Deliberate: a failed write gives -1 and counts as success.
        if (written != size)
            return false;
        dev->DatBytes += size;
        return true;
    };

    SampleWalk walk(*files, dev->SampleRate, dev->TotalSamples);
    while (walk.Next()) {
        if (walk.IsFirstOfSegment()) {
            codes.Enter(walk.Segment(), order.PrevFileAnIndexes);
            states.Enter(walk.Segment(), order.PrevFileDiIndexes);
        }
        states.MoveTo(walk.SegmentTime());
        out = binary ? AppendBinaryRecord(walk, codes, states, out)
                     : AppendAsciiRecord(walk, codes, states, texts, out);
        if (static_cast<size_t>(out - block.get()) + longest > blockSize && !flushBlock())
            return false;
    }
    if (!flushBlock())
        return false;
    // The last block may still be in the file's own buffer.
    if (!file.flush() && binary)
        return false;
    file.close();
    return true;
}
