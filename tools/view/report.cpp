#include "view/report.h"

#include "text/texts.h"

#include <algorithm>

namespace view {

namespace {

// The lines with the extreme values of the started circuit.
QStringList ExtremeLines(const QString& report)
{
    QStringList lines = report.split(QLatin1Char('\n'));
    const int title = lines.indexOf(QStringLiteral("Экстремальные значения тока и напряжения:"));
    if (title < 0)
        return {};
    lines = lines.mid(title + 1, 4);
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const QString& line) { return !line.contains(QLatin1Char('=')); }),
                lines.end());
    return lines;
}

// The phase values and the components at the start: the second pair of the report's tables.
QStringList ValuesAtStart(const QString& report)
{
    QStringList lines;
    bool isAtStart = false;
    const QStringList all = report.split(QLatin1Char('\n'));
    for (const QString& line : all) {
        if (line.endsWith(QStringLiteral("в момент срабатывания по условию пуска:"))) {
            isAtStart = true;
            lines << (lines.isEmpty() ? QStringLiteral("В момент срабатывания:") : QString());
        } else if (isAtStart && line.contains(QStringLiteral("модуль ="))) {
            if (!line.contains(QStringLiteral("= -- ")))
                lines << QString(line).replace(QStringLiteral("модуль ="), QString()).simplified();
        } else {
            isAtStart = false;
        }
    }
    return lines;
}

} // namespace

QString ReportValue(const QString& report, const QString& label)
{
    const QStringList lines = report.split(QLatin1Char('\n'));
    for (const QString& line : lines)
        if (line.startsWith(label))
            return line.mid(label.size()).trimmed();
    return QString();
}

QString StartedCircuit(const QString& report, const QStringList& circuits)
{
    QString named = ReportValue(report, QStringLiteral("Наименование ЛЭП и/или оборудования №1:"));
    if (!named.isEmpty() && circuits.contains(named))
        return named;
    const QString condition = ReportValue(report, QStringLiteral("Условие пуска №1:"));
    QString longest; // "W10" before "W1"
    for (const QString& circuit : circuits)
        if (condition.contains(circuit) && circuit.size() > longest.size())
            longest = circuit;
    return longest;
}

QStringList Figures(const QString& report)
{
    QStringList lines;
    for (const char* label : {"Условие пуска №1:", "Уставка пуска:"}) {
        const QString value = ReportValue(report, QString::fromUtf8(label));
        if (!value.isEmpty())
            lines << QString::fromUtf8(label) << value << QString();
    }
    const QStringList extremes = ExtremeLines(report);
    if (!extremes.isEmpty())
        lines << QStringLiteral("Экстремальные значения:") << extremes << QString();
    lines << ValuesAtStart(report);
    if (!lines.isEmpty()) // its formulas are not those of the page
        lines = QStringList{Tr("view", "As in the fault report:"), QString()} + lines;
    return lines;
}

} // namespace view
