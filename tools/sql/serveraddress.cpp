#include "sql/serveraddress.h"

#include <QRegularExpression>
#include <QStringList>
#include <QUrl>

namespace sql {

namespace {

QString Decoded(const QString& text)
{
    return QUrl::fromPercentEncoding(text.toUtf8());
}

void AddOption(QStringList& options, const QString& name, QString value)
{
    value.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('\''), QLatin1String("\\'"));
    options << name + QLatin1String("='") + value + QLatin1Char('\'');
}

// "host:port,host:port"; an address of IPv6 is in brackets.
void AddHosts(QStringList& options, const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(\\[[^\\]]*\\]|[^:]*)(?::(.*))?$"));
    QStringList hosts;
    QStringList ports;
    for (const QString& one : text.split(QLatin1Char(','))) {
        const QRegularExpressionMatch match = form.match(one);
        QString host = match.captured(1);
        if (host.startsWith(QLatin1Char('[')))
            host = host.mid(1, host.size() - 2);
        hosts << Decoded(host);
        ports << match.captured(2);
    }
    if (hosts != QStringList(QString()))
        AddOption(options, QStringLiteral("host"), hosts.join(QLatin1Char(',')));
    if (!ports.join(QString()).isEmpty())
        AddOption(options, QStringLiteral("port"), ports.join(QLatin1Char(',')));
}

} // namespace

bool IsServerAddress(const QString& address)
{
    return address.startsWith(QLatin1String("postgresql://")) ||
           address.startsWith(QLatin1String("postgres://"));
}

ServerAddress ParseServerAddress(const QString& address)
{
    const QString rest = address.mid(address.indexOf(QLatin1String("://")) + 3);
    const QString place = rest.section(QLatin1Char('?'), 0, 0);
    const QString authority = place.section(QLatin1Char('/'), 0, 0);
    const int at = authority.lastIndexOf(QLatin1Char('@'));
    const QString user = authority.left(qMax(at, 0));
    ServerAddress parts;
    parts.user = Decoded(user.section(QLatin1Char(':'), 0, 0));
    parts.password = Decoded(user.section(QLatin1Char(':'), 1));
    parts.database = Decoded(place.section(QLatin1Char('/'), 1));
    QStringList options;
    AddHosts(options, authority.mid(at + 1));
    for (const QString& option : rest.section(QLatin1Char('?'), 1).split(QLatin1Char('&'))) {
        const QString name = option.section(QLatin1Char('='), 0, 0);
        if (!name.isEmpty())
            AddOption(options, Decoded(name), Decoded(option.section(QLatin1Char('='), 1)));
    }
    parts.more = options.join(QLatin1Char(' '));
    return parts;
}

QString WithoutPassword(const QString& address)
{
    static const QRegularExpression user(QStringLiteral("^(\\w+://[^/?@:]*):[^/?]*@"));
    static const QRegularExpression option(QStringLiteral("(?<=[?&])(ssl)?password=[^&]*&?"));
    QString shown = address;
    shown.replace(user, QStringLiteral("\\1@")).remove(option);
    while (shown.endsWith(QLatin1Char('?')) || shown.endsWith(QLatin1Char('&')))
        shown.chop(1);
    return shown;
}

} // namespace sql
