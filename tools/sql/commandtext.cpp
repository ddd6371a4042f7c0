#include "sql/commandtext.h"

namespace sql {

namespace {

// Where the quoted text, the comment or the single character that starts here ends. A quote within a quoted
// text is doubled, so that the text looks like two that touch.
int EndOf(const QString& text, int begin)
{
    const QChar first = text[begin];
    int end = -1;
    if (first == QLatin1Char('\'') || first == QLatin1Char('"'))
        end = text.indexOf(first, begin + 1);
    else if (QStringView(text).mid(begin, 2) == QLatin1String("--"))
        end = text.indexOf(QLatin1Char('\n'), begin);
    else
        return begin + 1;
    return end < 0 ? text.size() : end + 1;
}

} // namespace

QString Numbered(const QString& command)
{
    QString numbered;
    int number = 0;
    for (int i = 0, end = 0; i < command.size(); i = end) {
        end = EndOf(command, i);
        if (command[i] == QLatin1Char('?'))
            numbered += QLatin1Char('$') + QString::number(++number);
        else
            numbered += command.mid(i, end - i);
    }
    return numbered;
}

QStringList CommandsOf(const QString& script)
{
    QStringList commands;
    int begin = 0;
    for (int i = 0, end = 0; i < script.size(); i = end) {
        end = EndOf(script, i);
        if (script[i] == QLatin1Char(';')) {
            commands << script.mid(begin, i - begin).trimmed();
            begin = end;
        }
    }
    commands << script.mid(begin).trimmed();
    commands.removeAll(QString());
    return commands;
}

} // namespace sql
