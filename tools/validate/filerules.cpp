// Names, line ends and characters of a record's files.
#include "validate/rules.h"

#include <QFileInfo>
#include <QTextCodec>

#include <algorithm>

namespace validate {

namespace {

using comtrade::Revision;

constexpr Rule EndingsDiffer = {
    reason::EndingsDiffer, Severity::Note,
    QT_TRANSLATE_NOOP("validate",
                      "the names of the files do not agree in upper and lower case ('%1', '%2'); where the "
                      "system distinguishes them, other programs do not find the file")};
constexpr Rule NotAscii = {
    reason::NotAscii, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the text has letters beyond ASCII; before revision 2013 there are none, and each "
                      "reader guesses the encoding")};
constexpr Rule NotUtf8 = {
    reason::NotUtf8, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the text is not UTF-8, the encoding of revision 2013; not every reader guesses "
                      "another one")};
constexpr Rule ControlCharacter = {
    reason::ControlCharacter, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "the line has the control character %1; a text has none but line ends")};
constexpr Rule LineEnds = {reason::LineEnds, Severity::Note,
                           QT_TRANSLATE_NOOP("validate", "lines should end with CR LF, this one does not")};
constexpr Rule HeaderNotText = {
    reason::HeaderNotText, Severity::Note,
    QT_TRANSLATE_NOOP("validate", "the header holds bytes that no text has; it should be a text for people")};

bool IsUtf8(const QByteArray& bytes)
{
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

// Marks of UTF-8 and UTF-16 at the start of a text.
int ByteOrderMarkSize(const QByteArray& bytes)
{
    return bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
}

bool IsUtf16(const QByteArray& bytes)
{
    return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
}

// Line and byte of the line.
Position PositionOfByte(const QByteArray& bytes, int at)
{
    const int lineStart = at > 0 ? bytes.lastIndexOf('\n', at - 1) + 1 : 0;
    return {std::count(bytes.begin(), bytes.begin() + at, '\n') + 1, at - lineStart + 1};
}

void CheckEncoding(const QByteArray& bytes, Revision revision, Report& report)
{
    const auto* const first = std::find_if(bytes.begin() + ByteOrderMarkSize(bytes), bytes.end(),
                                           [](char byte) { return static_cast<signed char>(byte) < 0; });
    if (first == bytes.end())
        return;
    // What precedes it in its line is ASCII, so that its byte is its column.
    const Position position = PositionOfByte(bytes, static_cast<int>(first - bytes.begin()));
    if (revision != Revision::R2013)
        report.Add(NotAscii, position);
    else if (!IsUtf8(bytes))
        report.Add(NotUtf8, position);
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

void CheckNames(const QString& path, const Pieces& pieces, Report& report)
{
    const QFileInfo info(path);
    const QString base = info.completeBaseName();
    const bool isUpper = info.suffix() == info.suffix().toUpper();
    QStringList others;
    for (const std::optional<Piece>& piece :
         {pieces.header, pieces.information, std::optional<Piece>(pieces.data)})
        if (piece && !piece->file.isEmpty())
            others << piece->file;
    for (const QString& other : others) {
        const QFileInfo one(other);
        const QString suffix = isUpper ? one.suffix().toUpper() : one.suffix().toLower();
        if (one.completeBaseName() != base || one.suffix() != suffix)
            report.Add(EndingsDiffer, {}, {info.fileName(), one.fileName()});
    }
}

void CheckText(const Piece& piece, TextKind kind, Revision revision, Report& report)
{
    if (kind != TextKind::Data)
        CheckEncoding(piece.bytes, revision, report);
    if (IsUtf16(piece.bytes))
        return; // the others go by bytes
    if (kind == TextKind::Header)
        CheckHeader(piece.bytes, report);
    else if (kind != TextKind::Data)
        CheckControlCharacters(piece.bytes, report);
    if (kind != TextKind::Configuration)
        CheckLineEnds(piece.bytes, report);
}

} // namespace validate
