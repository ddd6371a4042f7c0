#include "report.h"

#include <QTextCodec>

#include <algorithm>

namespace view {

QString ReportText(const QByteArray& bytes)
{
    QTextCodec::ConverterState state;
    QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0)
        text = QTextCodec::codecForName("windows-1251")->toUnicode(bytes);
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

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

} // namespace view
