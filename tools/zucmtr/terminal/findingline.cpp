#include "zucmtr/terminal/findingline.h"

#include "text/texts.h"
#include "zucmtr/terminal/console.h"

#include <QJsonObject>

namespace {

// In the order of the severities, for programs; translated, for people.
const char* const SeverityWords[] = {QT_TRANSLATE_NOOP("check", "note"),
                                     QT_TRANSLATE_NOOP("check", "warning"),
                                     QT_TRANSLATE_NOOP("check", "error")};

QString PlaceOf(const FindingLine& finding)
{
    QString place = finding.file;
    for (const qint64 number : {finding.line, qint64{finding.column}})
        if (number > 0)
            place += QLatin1Char(':') + QString::number(number);
    return place;
}

} // namespace

void PrintFinding(const FindingLine& finding, bool json)
{
    const char* const severity = SeverityWords[static_cast<int>(finding.severity)];
    if (!json) {
        PrintLine(QStringLiteral("%1: %2: ").arg(PlaceOf(finding), Tr("check", severity)) + finding.text);
        return;
    }
    QJsonObject object;
    object["file"] = finding.file;
    object["line"] = finding.line;
    if (finding.column > 0)
        object["column"] = finding.column;
    object["severity"] = QLatin1String(severity);
    object["reason"] = QLatin1String(finding.reason);
    object["text"] = finding.text;
    PrintJson(object);
}
