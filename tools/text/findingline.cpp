#include "text/findingline.h"

#include "text/texts.h"

namespace text {

namespace {

// In the order of the severities, for programs; translated, for people.
const char* const SeverityWords[] = {QT_TRANSLATE_NOOP("check", "note"),
                                     QT_TRANSLATE_NOOP("check", "warning"),
                                     QT_TRANSLATE_NOOP("check", "error")};

const char* WordOf(Severity severity)
{
    return SeverityWords[static_cast<int>(severity)];
}

} // namespace

QString PlaceText(const QString& file, qint64 line, int column)
{
    QString place = file;
    for (const qint64 number : {line, qint64{column}})
        if (number > 0)
            place += QLatin1Char(':') + QString::number(number);
    return place;
}

QString FindingText(const FindingLine& finding)
{
    return QStringLiteral("%1: %2: ")
               .arg(PlaceText(finding.file, finding.line, finding.column),
                    Tr("check", WordOf(finding.severity))) +
           finding.text;
}

QJsonObject FindingObject(const FindingLine& finding)
{
    QJsonObject object;
    object["file"] = finding.file;
    object["line"] = finding.line;
    if (finding.column > 0)
        object["column"] = finding.column;
    object["severity"] = QLatin1String(WordOf(finding.severity));
    object["reason"] = QLatin1String(finding.reason);
    object["text"] = finding.text;
    return object;
}

} // namespace text
