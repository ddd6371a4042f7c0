#include "verify/tornconfiguration.h"

#include "base/codecs.h"
#include "device/zucmtrdevparam.h"
#include "verify/device.h"
#include "verify/source.h"

#include <QRegularExpression>
#include <QTextCodec>

#include <algorithm>

namespace verify {

QByteArray Written(const QByteArray& text)
{
    return text.mid(0, text.indexOf('\0')); // all of it if there is none
}

QStringList WrittenStamps(const QByteArray& text)
{
    constexpr int length = 26; // dd/MM/yyyy,hh:mm:ss.uuuuuu
    static const QRegularExpression pattern(
        QStringLiteral("\\A\\d\\d/\\d\\d/\\d{4},\\d\\d:\\d\\d:\\d\\d\\.\\d{6}\\z"));
    QStringList stamps;
    if (!text.contains('\0'))
        return stamps;
    for (int end = text.indexOf('\n'), begin = 0; end >= 0 && stamps.size() < 2;
         begin = end + 1, end = text.indexOf('\n', begin)) {
        const QByteArray line = text.mid(begin, std::min(end - begin, length + 2)).trimmed();
        if (line.size() == length && pattern.match(QString::fromLatin1(line)).hasMatch())
            stamps << QString::fromLatin1(line);
    }
    return stamps;
}

bool MayBeConfiguration(const QByteArray& text, const Source& source)
{
    const QByteArray found = Written(text).replace("\r", "");
    if (found.isEmpty())
        return text.count('\0') == text.size();
    const ZuCmtrDevParam& param = source.Owner().Param();
    for (const char* year : {"1999", "2013"}) {
        const QString head = param.Object + QLatin1Char(',') + param.Source + QLatin1Char(',') +
                             QLatin1String(year) + QLatin1Char('\n') +
                             QString::number(source.AnalogCount() + source.StateCount()) + QLatin1Char(',') +
                             QString::number(source.AnalogCount()) + QStringLiteral("A,") +
                             QString::number(source.StateCount()) + QStringLiteral("D\n");
        for (const QTextCodec* codec : {zu::CodecUtf8, zu::CodecCP1251}) {
            const QByteArray expected = codec->fromUnicode(head);
            if (found.startsWith(expected) || expected.startsWith(found))
                return true;
        }
    }
    return false;
}

} // namespace verify
