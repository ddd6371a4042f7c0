#include "inftext.h"

QString InfText(const QStringList& lines)
{
    QString text;
    for (const QString& line : lines)
        text += line + QStringLiteral("\r\n");
    return text;
}

QStringList InfFrom(const QString& section, SortedDictionary& dictionary, ZuFileFormat& file)
{
    dictionary.Resorter.InfCodec = ZuCmtrConverter::codec_CP1251;
    const QStringList lines = LinesOf([&](QFile& inf) {
        if (!dictionary.Resorter.WriteInf(inf, &file))
            qFatal("the test file is not written");
    });
    for (int i = 0; i < lines.size(); ++i) {
        if (lines[i].startsWith(QLatin1Char('[') + section))
            return lines.mid(i);
    }
    return QStringList();
}
