#include "inicheck/encoding.h"

#include "config/deviceinikeys.h"
#include "config/inigrammar.h"
#include "text/texts.h"

#include <QFile>
#include <QSet>
#include <QTextCodec>
#include <QTextStream>

#include <algorithm>

namespace inicheck {

namespace {

struct Mark
{
    QByteArray bytes;
    Encoding encoding;
};

// The mark of UTF-32LE starts with that of UTF-16LE, so it is tried first.
const Mark* MarkOf(const QByteArray& bytes)
{
    static const Mark marks[] = {{QByteArray("\xFF\xFE\0\0", 4), {"UTF-32", true}},
                                 {QByteArray("\0\0\xFE\xFF", 4), {"UTF-32", true}},
                                 {QByteArray("\xFF\xFE", 2), {"UTF-16", true}},
                                 {QByteArray("\xFE\xFF", 2), {"UTF-16", true}}};
    const auto found = std::find_if(std::begin(marks), std::end(marks),
                                    [&](const Mark& mark) { return bytes.startsWith(mark.bytes); });
    return found == std::end(marks) ? nullptr : found;
}

const QSet<QString>& KnownKeys()
{
    static const QSet<QString> known = [] {
        QSet<QString> keys;
        for (const DeviceKeyRule& rule : DeviceKeyRules())
            keys.insert(QString::fromUtf8(rule.key));
        return keys;
    }();
    return known;
}

struct Content
{
    bool hasKnownKey = false;
    bool hasSection = false;
};

Content ContentOf(const QByteArray& bytes, const char* codec)
{
    Content content;
    QString text = QTextCodec::codecForName(codec)->toUnicode(bytes);
    QTextStream stream(&text);
    zu::IniLine line;
    while (zu::ReadIniLine(stream, line)) {
        content.hasSection |= line.kind == zu::IniLineKind::Section;
        content.hasKnownKey |= KnownKeys().contains(line.key); // also before the first section
    }
    return content;
}

} // namespace

std::optional<Encoding> OtherEncodingOf(const QByteArray& bytes)
{
    if (const Mark* mark = MarkOf(bytes))
        return mark->encoding;
    const Content taken = ContentOf(bytes, "UTF-8");
    if (taken.hasKnownKey)
        return std::nullopt;
    for (const char* codec : {"UTF-16LE", "UTF-16BE"}) {
        if (!taken.hasSection && ContentOf(bytes, codec).hasSection)
            return Encoding{codec, false};
    }
    for (const char* codec : {"CP1251", "CP866", "KOI8-R"}) {
        if (ContentOf(bytes, codec).hasKnownKey)
            return Encoding{codec, false};
    }
    return std::nullopt;
}

std::optional<Encoding> UnknownEncodingOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const std::optional<Encoding> encoding = OtherEncodingOf(file.readAll());
    return encoding && !encoding->isRecognised ? encoding : std::nullopt;
}

QString EncodingText(const Encoding& encoding)
{
    const QString name = QLatin1String(encoding.name);
    if (encoding.isRecognised)
        return Tr("check",
                  "it is in %1, not in UTF-8; the converter reads it correctly because of its byte order "
                  "mark, but other programs may not; rewrite it: iconv -f %1 -t UTF-8 old.ini > new.ini")
            .arg(name);
    return Tr("check", "it is in %1, not in UTF-8; the converter takes it as UTF-8 and finds none of its "
                       "keys, so that no section loads; rewrite it: iconv -f %1 -t UTF-8 old.ini > new.ini")
        .arg(name);
}

} // namespace inicheck
