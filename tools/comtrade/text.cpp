#include "comtrade/text.h"

#include "comtrade/wordlikeness.h"

#include <QTextCodec>

#include <uchardet/uchardet.h>

#include <algorithm>
#include <array>
#include <memory>

namespace comtrade {

namespace {

bool IsAscii(const QByteArray& bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return static_cast<uchar>(byte) < 0x80; });
}

// UTF-16 by its byte order mark or, as digits and commas are in every text, by its bytes 0. Empty if it is
// none.
QString Utf16Of(const QByteArray& bytes)
{
    if (bytes.startsWith("\xFF\xFE"))
        return QStringLiteral("UTF-16LE");
    if (bytes.startsWith("\xFE\xFF"))
        return QStringLiteral("UTF-16BE");
    int end = bytes.size(); // what pads a file is no sign
    while (end > 1 && bytes[end - 1] == 0 && bytes[end - 2] == 0)
        --end;
    std::array<int, 2> zeros{}; // at even and at odd places
    for (int i = 0; i < end; ++i)
        zeros[static_cast<size_t>(i % 2)] += bytes[i] == 0 ? 1 : 0;
    const int many = end / 10;
    if (zeros[1] > many && zeros[1] > 10 * zeros[0])
        return QStringLiteral("UTF-16LE");
    if (zeros[0] > many && zeros[0] > 10 * zeros[1])
        return QStringLiteral("UTF-16BE");
    return QString();
}

// The length of a UTF-8 character of several bytes; 0 if there is none.
int Utf8LengthAt(const QByteArray& bytes, int at)
{
    const auto first = static_cast<uchar>(bytes[at]);
    const int length = first >= 0xC2 && first < 0xE0   ? 2
                       : first >= 0xE0 && first < 0xF0 ? 3
                       : first >= 0xF0 && first < 0xF5 ? 4
                                                       : 0;
    if (length == 0 || at + length > bytes.size())
        return 0;
    const bool isWhole = std::all_of(bytes.begin() + at + 1, bytes.begin() + at + length,
                                     [](char byte) { return (static_cast<uchar>(byte) & 0xC0U) == 0x80; });
    return isWhole ? length : 0;
}

// Writers cut names off after so many bytes, in the middle of a character. A few of these do not make
// another encoding of it.
bool IsUtf8(const QByteArray& bytes)
{
    constexpr int share = 5; // of characters to bytes that are none
    int characters = 0;
    int others = 0;
    for (int i = 0; i < bytes.size();) {
        const int length = Utf8LengthAt(bytes, i);
        characters += length > 0 ? 1 : 0;
        others += length == 0 && static_cast<uchar>(bytes[i]) >= 0x80 ? 1 : 0;
        i += std::max(length, 1);
    }
    return others * share <= characters;
}

// The encoding that uchardet takes it for, by our name; empty if it is none of ours.
QString Detected(const QByteArray& bytes)
{
    const std::unique_ptr<uchardet, decltype(&uchardet_delete)> detector(uchardet_new(), &uchardet_delete);
    if (!detector ||
        uchardet_handle_data(detector.get(), bytes.constData(), static_cast<size_t>(bytes.size())))
        return QString();
    uchardet_data_end(detector.get());
    const QByteArray name = QByteArray(uchardet_get_charset(detector.get())).toUpper();
    struct Name
    {
        const char* theirs;
        const char* ours;
    };
    constexpr std::array<Name, 8> names = {{{"WINDOWS-1251", "CP1251"},
                                            {"IBM866", "CP866"},
                                            {"KOI8-R", "KOI8-R"},
                                            {"GB18030", "GBK"},
                                            {"GBK", "GBK"},
                                            {"GB2312", "GBK"},
                                            {"ISO-8859-1", "Latin-1"},
                                            {"WINDOWS-1252", "Latin-1"}}};
    const auto* const row =
        std::find_if(names.begin(), names.end(), [&](const Name& one) { return name == one.theirs; });
    return row != names.end() ? QLatin1String(row->ours) : QString();
}

// Finding a codec takes as long as reading some lines by it. The last one is remembered by each thread.
QTextCodec* CodecNamed(const QByteArray& name)
{
    thread_local QByteArray last;
    thread_local QTextCodec* codec = nullptr;
    if (name != last) {
        codec = QTextCodec::codecForName(name);
        last = name;
    }
    return codec;
}

// The codec of a name. What calls itself Latin-1 has the characters of Windows-1252 between 80 and 9F.
QTextCodec* CodecOf(const QString& encoding)
{
    if (encoding == QLatin1String("Latin-1"))
        return CodecNamed("windows-1252");
    if (encoding == QLatin1String("ASCII"))
        return CodecNamed("UTF-8");
    return CodecNamed(encoding.toLatin1());
}

} // namespace

QString EncodingOf(const QByteArray& bytes)
{
    QString wide = Utf16Of(bytes);
    if (!wide.isEmpty())
        return wide;
    if (IsAscii(bytes))
        return QStringLiteral("ASCII");
    if (IsUtf8(bytes))
        return QStringLiteral("UTF-8");
    constexpr int enough = 1 << 16; // bytes that show an encoding
    const QByteArray start = bytes.left(enough);
    return MostLikely(start, Detected(start));
}

bool HasByteOrderMark(const QByteArray& bytes)
{
    return bytes.startsWith("\xEF\xBB\xBF") || bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
}

bool IsEncoding(const QString& name)
{
    return CodecOf(name) != nullptr;
}

QString DecodedText(const QByteArray& bytes, const QString& encoding)
{
    const QString name = encoding.isEmpty() ? EncodingOf(bytes) : encoding;
    QTextCodec* codec = CodecOf(name);
    QString text = (codec != nullptr ? codec : QTextCodec::codecForName("UTF-8"))->toUnicode(bytes);
    if (text.startsWith(QChar(QChar::ByteOrderMark)))
        text.remove(0, 1);
    return text;
}

} // namespace comtrade
