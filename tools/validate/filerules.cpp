// Line ends, characters and encoding of a record's texts.
#include "validate/rules.h"

#include <algorithm>

namespace validate {

namespace {

using comtrade::Revision;

constexpr Rule NotAscii = {
    reason::NotAscii, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the text has letters beyond ASCII; before revision 2013 there are none, and each "
                      "reader guesses the encoding; read as %1")};
constexpr Rule NotUtf8 = {
    reason::NotUtf8, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the text is not UTF-8, the encoding of revision 2013, and not every reader guesses "
                      "another one; read as %1")};
constexpr Rule ByteOrderMark = {
    reason::ByteOrderMark, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the text starts with a byte order mark, which some readers take for a part of it; "
                      "write it without")};
constexpr Rule ControlCharacter = {
    reason::ControlCharacter, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "the line has the control character %1; a text has none but line ends")};
constexpr Rule LineEnds = {reason::LineEnds, Severity::Note,
                           QT_TRANSLATE_NOOP("validate", "lines should end with CR LF, this one does not")};
constexpr Rule HeaderNotText = {
    reason::HeaderNotText, Severity::Note,
    QT_TRANSLATE_NOOP("validate", "the header holds bytes that no text has; it should be a text for people")};

// The mark of UTF-8 at the start of a text.
int ByteOrderMarkSize(const QByteArray& bytes)
{
    return bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
}

// Line and byte of the line.
Position PositionOfByte(const QByteArray& bytes, int at)
{
    const int lineStart = at > 0 ? bytes.lastIndexOf('\n', at - 1) + 1 : 0;
    return {std::count(bytes.begin(), bytes.begin() + at, '\n') + 1, at - lineStart + 1};
}

void CheckEncoding(const QByteArray& bytes, Revision revision, const QString& encoding, Report& report)
{
    const int markSize = ByteOrderMarkSize(bytes);
    if (markSize > 0)
        report.Add(ByteOrderMark, {1, 0});
    const auto* const first = std::find_if(bytes.begin() + markSize, bytes.end(),
                                           [](char byte) { return static_cast<signed char>(byte) < 0; });
    if (first == bytes.end())
        return;
    // What precedes it in its line is ASCII, so that its byte is its column.
    const Position position = PositionOfByte(bytes, static_cast<int>(first - bytes.begin()));
    if (revision != Revision::R2013)
        report.Add(NotAscii, position, {encoding});
    else if (encoding != QLatin1String("UTF-8"))
        report.Add(NotUtf8, position, {encoding});
}

bool IsControl(char byte)
{
    return static_cast<unsigned char>(byte) < ' ' && byte != '\r' && byte != '\n';
}

void CheckControlCharacters(const QByteArray& bytes, Report& report)
{
    const char* const end = std::find(bytes.begin(), bytes.end(), '\x1A');
    const char* const found = std::find_if(bytes.begin(), end, IsControl);
    if (found != end)
        report.Add(ControlCharacter, {PositionOfByte(bytes, static_cast<int>(found - bytes.begin())).line, 0},
                   {QStringLiteral("%1").arg(int{*found}, 2, 16, QLatin1Char('0')).toUpper()});
}

// For people only, so that tabs and form feeds are fine.
void CheckHeader(const QByteArray& bytes, Report& report)
{
    const char* const end = std::find(bytes.begin(), bytes.end(), '\x1A');
    const char* const found = std::find_if(
        bytes.begin(), end, [](char byte) { return IsControl(byte) && byte != '\t' && byte != '\f'; });
    if (found != end)
        report.Add(HeaderNotText, {PositionOfByte(bytes, static_cast<int>(found - bytes.begin())).line, 0});
}

// The first line that does not end with CR LF.
void CheckLineEnds(const QByteArray& bytes, Report& report)
{
    qint64 line = 1;
    for (int feed = bytes.indexOf('\n'); feed >= 0; feed = bytes.indexOf('\n', feed + 1), ++line) {
        if (feed > 0 && bytes[feed - 1] == '\r')
            continue;
        report.Add(LineEnds, {line, 0});
        return;
    }
}

} // namespace

void CheckText(const Piece& piece, TextKind kind, Revision revision, const QString& encoding, Report& report)
{
    if (encoding.startsWith(QLatin1String("UTF-16"))) {
        if (kind != TextKind::Configuration) // of which the reader says it
            report.Add(NotUtf8, {}, {encoding});
        return; // the others go by bytes
    }
    if (kind != TextKind::Data)
        CheckEncoding(piece.bytes, revision, encoding, report);
    if (kind == TextKind::Header)
        CheckHeader(piece.bytes, report);
    else if (kind != TextKind::Data)
        CheckControlCharacters(piece.bytes, report);
    if (kind != TextKind::Configuration)
        CheckLineEnds(piece.bytes, report);
}

} // namespace validate
