#include "zucmtr/host/recordlayout.h"

#include "text/texts.h"
#include "verify/recordname.h"
#include "zucmtr/terminal/command.h"

#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>

namespace {

const QRegularExpression& Placeholder()
{
    static const QRegularExpression form(QStringLiteral("\\{([^{}]*)\\}"));
    return form;
}

// What file names cannot have, on other systems too: archives are copied to them.
const QRegularExpression& Forbidden()
{
    static const QRegularExpression characters(QStringLiteral("[\\x00-\\x1f\\x7f\\\\/:*?\"<>|]"));
    return characters;
}

QString Digits(qint64 number, int count)
{
    return QStringLiteral("%1").arg(number, count, 10, QLatin1Char('0'));
}

// The values by their placeholders.
QMap<QString, QString> ValuesOf(const verify::RecordHead& head, const QString& file, const QString& folder)
{
    const QDate& date = head.trigger.date;
    const qint64 milliseconds = head.trigger.microseconds / 1000;
    const qint64 seconds = milliseconds / 1000;
    const QString hour = Digits(seconds / 3600, 2);
    const QString minute = Digits(seconds / 60 % 60, 2);
    const QString second = Digits(seconds % 60, 2);
    return {{QStringLiteral("name"), head.name},
            {QStringLiteral("source"), QFileInfo(file).completeBaseName()},
            {QStringLiteral("folder"), folder},
            {QStringLiteral("station"), head.station},
            {QStringLiteral("device"), head.recorder},
            {QStringLiteral("subject"), head.subject},
            {QStringLiteral("year"), Digits(date.year(), 4)},
            {QStringLiteral("month"), Digits(date.month(), 2)},
            {QStringLiteral("day"), Digits(date.day(), 2)},
            {QStringLiteral("date"), date.toString(QStringLiteral("yyyy-MM-dd"))},
            {QStringLiteral("hour"), hour},
            {QStringLiteral("minute"), minute},
            {QStringLiteral("second"), second},
            {QStringLiteral("time"), QStringList{hour, minute, second}.join(QLatin1Char('-')) +
                                         QLatin1Char('.') + Digits(milliseconds % 1000, 3)}};
}

QStringList Names()
{
    return ValuesOf({}, QString(), QString()).keys();
}

// Other systems drop dots and blanks at the end; a dot in front would hide the file.
QString AsName(QString text)
{
    text.replace(Forbidden(), QStringLiteral("_"));
    text = text.trimmed();
    if (text.startsWith(QLatin1Char('.')))
        text[0] = QLatin1Char('_');
    if (text.endsWith(QLatin1Char('.')))
        text[text.size() - 1] = QLatin1Char('_');
    return text;
}

[[noreturn]] void Refuse(const QString& pattern, const QString& reason)
{
    throw ConfigurationError(Tr("layout", "--layout '%1': %2").arg(pattern, reason));
}

void CheckPlaceholders(const QString& pattern)
{
    auto matches = Placeholder().globalMatch(pattern);
    while (matches.hasNext()) {
        const QString name = matches.next().captured(1);
        if (!Names().contains(name))
            Refuse(pattern, Tr("layout", "there is no {%1}; there are {%2}")
                                .arg(name, Names().join(QStringLiteral("}, {"))));
    }
}

void CheckLiterals(const QString& pattern)
{
    const QString literals = QString(pattern).remove(Placeholder());
    if (literals.contains(QLatin1Char('{')) || literals.contains(QLatin1Char('}')))
        Refuse(pattern, Tr("layout", "a brace has no other one; placeholders are written as {station}"));
    const QRegularExpressionMatch match = Forbidden().match(QString(literals).remove(QLatin1Char('/')));
    if (match.hasMatch())
        Refuse(pattern, Tr("layout", "names of files cannot have a '%1'").arg(match.captured()));
}

} // namespace

RecordLayout::RecordLayout(const QString& pattern) : parts(pattern.split(QLatin1Char('/')))
{
    if (pattern.startsWith(QLatin1Char('/')))
        Refuse(pattern,
               Tr("layout", "it is a place below the directory of --out; leave out the '/' in front"));
    if (pattern.endsWith(QLatin1Char('/')))
        Refuse(pattern,
               Tr("layout", "the name of the record is missing after the last '/'; {name} is its own"));
    CheckPlaceholders(pattern);
    CheckLiterals(pattern);
    for (const QString& part : parts) {
        if (part.trimmed().isEmpty())
            Refuse(pattern, Tr("layout", "there is nothing between two '/'"));
        if (part.startsWith(QLatin1Char('.')))
            Refuse(pattern, Tr("layout", "no name may start with a '.'"));
    }
    if (parts.last().contains(QStringLiteral("{folder}")))
        Refuse(pattern, Tr("layout", "{folder} is a directory; write it before a '/'"));
}

RecordPlace RecordLayout::PlaceOf(const verify::RecordHead& head, const QString& file,
                                  const QString& folder) const
{
    RecordPlace place;
    if (head.name.isEmpty())
        return place;
    const QMap<QString, QString> values = ValuesOf(head, file, folder);
    QStringList names;
    for (const QString& part : parts) {
        QString text;
        int end = 0;
        auto matches = Placeholder().globalMatch(part);
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            text += part.mid(end, match.capturedStart() - end);
            // Only the recording's own folder has levels.
            QString value = values.value(match.captured(1));
            text += match.captured(1) == QLatin1String("folder")
                        ? value
                        : value.replace(Forbidden(), QStringLiteral("_"));
            end = match.capturedEnd();
        }
        text += part.mid(end);
        const bool hasLevels = part.contains(QStringLiteral("{folder}"));
        for (const QString& level : hasLevels ? text.split(QLatin1Char('/')) : QStringList{text}) {
            const QString name = AsName(level);
            if (!name.isEmpty())
                names << name;
            else if (!hasLevels)
                names << QStringLiteral("_");
        }
    }
    place.name = names.takeLast();
    place.below = names.join(QLatin1Char('/'));
    return place;
}
