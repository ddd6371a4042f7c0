// What DataReader does about data that are not as they should be, but have only one meaning.
#include "comtrade/asciirecord.h"
#include "comtrade/datareader.h"
#include "comtrade/mark.h"

#include <algorithm>
#include <cstring>

namespace comtrade {

namespace {

bool IsLineEnd(char byte)
{
    return byte == '\r' || byte == '\n';
}

bool IsBlank(char byte)
{
    return byte == ' ' || byte == '\t';
}

// What may stand after the last record and says nothing.
bool IsPadding(char byte)
{
    return byte == '\0' || byte == '\x1A' || IsLineEnd(byte) || IsBlank(byte);
}

} // namespace

// A finding about the current record.
void DataReader::Add(const Slip& slip)
{
    Remark(forgiven, file.fileName(), record, 0, slip);
}

// UTF-16 becomes one byte a character, in place; what is not ASCII becomes a question mark.
void DataReader::Narrow(size_t from)
{
    const size_t count = (end - from) / 2;
    if ((end - from) % 2 != 0) { // half a character: the other half is read again with the next part
        if (left > 0 && file.seek(file.pos() - 1))
            ++left;
    }
    for (size_t i = 0; i < count; ++i) {
        const char low = buffer[from + 2 * i + static_cast<size_t>(form.lowByte)];
        const char high = buffer[from + 2 * i + static_cast<size_t>(1 - form.lowByte)];
        const bool isMark = low == '\xFF' && high == '\xFE'; // of the byte order
        buffer[from + i] = isMark ? ' ' : high == 0 ? low : '?';
    }
    end = from + count;
}

bool DataReader::TakeForgivingLine(const Target& target)
{
    while (PassWhatIsNoLine()) {
        const char* const limit = buffer.data() + end;
        const char* const stop = std::find_if(
            At(), limit, [](char byte) { return IsLineEnd(byte) || byte == EndOfFile || byte == '\0'; });
        if (std::all_of(At(), stop, IsBlank)) {
            begin = static_cast<size_t>(stop - buffer.data());
            continue;
        }
        if (stop == limit && Unread() >= longest) {
            ++record;
            Fail(Tr("comtrade", "has no end within %1 bytes").arg(longest));
        }
        if (!ReadOddLine(stop, stop != limit && *stop != '\0', target))
            break;
        return true;
    }
    Finish();
    return false;
}

// Passes line ends, marks of the end and padding; false if no line follows.
bool DataReader::PassWhatIsNoLine()
{
    while (Fill(longest) || Unread() > 0) {
        if (record == 0)
            PassByteOrderMark();
        const char byte = Unread() > 0 ? *At() : EndOfFile;
        if (IsLineEnd(byte)) {
            hasBlankLine = true;
            PassLineEnd();
        } else if (byte == EndOfFile) {
            PassBytesAfterEnd();
            break;
        } else if (byte == '\0') {
            PassPadding();
            if (Unread() > 0) {
                ++record;
                Fail(Tr("comtrade", "is preceded by bytes 0"));
            }
            EndWithZeros();
            break;
        } else {
            const QByteArray start(At(), static_cast<int>(std::min<size_t>(Unread(), 128)));
            if (start.startsWith("---") || (start.contains("--") && MarkOf(start.split('\n').first())))
                break;
            RemarkBlankLine(Severity::Warning);
            return true;
        }
    }
    RemarkBlankLine(Severity::Note);
    return false;
}

void DataReader::RemarkBlankLine(Severity severity)
{
    if (hasBlankLine)
        Remark(forgiven, file.fileName(), record + 1, 0,
               {severity, reason::BlankLine, Tr("comtrade", "a blank line"), Tr("comtrade", "passed over")});
    hasBlankLine = false;
}

void DataReader::PassByteOrderMark()
{
    if (Unread() < 3 || std::memcmp(At(), "\xEF\xBB\xBF", 3) != 0)
        return;
    begin += 3;
    Remark(forgiven, file.fileName(), 1, 0,
           {Severity::Warning, reason::ByteOrderMark, Tr("comtrade", "the data start with a byte order mark"),
            Tr("comtrade", "passed over")});
}

// The line up to stop, with its end. False if it is no record, and nothing but that is wrong: it is cut off
// at the end of the data, or follows the last record.
bool DataReader::ReadOddLine(const char* stop, bool hasEnd, const Target& target)
{
    // A value at the very end may have lost its last digits.
    bool isRead = hasEnd || shape.states > 0 || record + 1 >= wanted;
    try {
        if (isRead)
            ReadLine(At(), stop, configuration, {file.fileName(), record + 1, forgiven}, target);
    } catch (const Error& error) {
        isRead = false;
        if (hasEnd && !IsComplete()) {
            ++record;
            begin = static_cast<size_t>(stop - buffer.data());
            Fail(text::MessageOf(error));
        }
    }
    if (isRead) {
        ++record;
        begin = static_cast<size_t>(stop - buffer.data());
        PassLineEnd();
    } else if (IsComplete()) {
        Add({Severity::Warning, reason::LinesLeftOver,
             Tr("comtrade", "the line after the last sample is no sample"), Tr("comtrade", "left out")});
    } else {
        FinishCutOff();
    }
    return isRead;
}

void DataReader::FinishCutOff()
{
    ++record;
    Add({Severity::Error, reason::SampleCutOff, Tr("comtrade", "the last sample is cut off"),
         Tr("comtrade", "left out")});
    --record;
}

// CR LF or LF; other ends are reported once.
void DataReader::PassLineEnd()
{
    size_t returns = 0;
    for (; Fill(1) && *At() == '\r'; ++returns)
        ++begin;
    const bool hasFeed = Fill(1) && *At() == '\n';
    begin += hasFeed ? 1 : 0;
    if (hasOddLineEnds || returns < (hasFeed ? 2U : 1U))
        return;
    hasOddLineEnds = true;
    Remark(forgiven, file.fileName(), std::max<qint64>(record, 1), 0,
           {Severity::Warning, reason::LineEnds,
            Tr("comtrade", "lines should end with CR LF, this one ends with %1")
                .arg(hasFeed ? QStringLiteral("CR CR LF") : QStringLiteral("CR")),
            Tr("comtrade", "read as the end of a line")});
}

void DataReader::PassPadding()
{
    do {
        begin += static_cast<size_t>(std::find_if_not(At(), At() + Unread(), IsPadding) - At());
    } while (Unread() == 0 && Fill(1));
}

// After the mark of the end only padding says nothing.
void DataReader::PassBytesAfterEnd()
{
    PassPadding();
    if (Unread() > 0)
        Add({Severity::Warning, reason::BytesLeftOver,
             Tr("comtrade", "there are bytes after the mark of the end, 1A"), Tr("comtrade", "left out")});
}

void DataReader::EndWithZeros()
{
    Add({Severity::Warning, reason::ZerosLeftOver, Tr("comtrade", "there are bytes 0 after the last sample"),
         Tr("comtrade", "left out")});
    Finish();
}

// Less than a record follows the last whole one.
void DataReader::FinishBinary()
{
    if (Unread() > 0 && !IsComplete())
        FinishCutOff();
    else if (Unread() > 0 && std::all_of(At(), At() + Unread(), [](char byte) { return byte == 0; }))
        EndWithZeros();
    else if (Unread() > 1 || (Unread() == 1 && *At() != EndOfFile))
        Add({Severity::Warning, reason::BytesLeftOver,
             Tr("comtrade", "there are %1 bytes after the last sample").arg(Unread()),
             Tr("comtrade", "left out")});
    Finish();
}

void DataReader::Finish()
{
    if (hasEnded)
        return;
    hasEnded = true;
    if (wanted <= 0 || record == wanted)
        return;
    Add({Severity::Error, record < wanted ? reason::SamplesLacking : reason::SamplesLeftOver,
         Tr("comtrade", "the configuration says %1 samples, the data hold %2").arg(wanted).arg(record),
         Tr("comtrade", "all that are there are read")});
}

} // namespace comtrade
