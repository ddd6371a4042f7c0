#include "zucmtr/files/asidename.h"

#include "base/chainnames.h"

#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

AsideName::AsideName(const QString& name)
{
    static const QRegularExpression form(QStringLiteral("^\\.(.+)\\.zucmtr-([A-Za-z0-9]{6})(-done)?$"),
                                         QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(name);
    if (!match.hasMatch() || !zu::IsRecorderFile(match.captured(1)))
        return;
    original = match.captured(1);
    token = match.captured(2);
    done = !match.captured(3).isEmpty();
}

QString AsideName::NewToken()
{
    const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789");
    QString token;
    for (int count = 0; count < 6; ++count)
        token += letters[static_cast<int>(QRandomGenerator::system()->bounded(letters.size()))];
    return token;
}

QString AsideName::PathOf(const QString& path, const QString& token, bool done)
{
    const QFileInfo file(path);
    return QStringLiteral("%1/.%2.zucmtr-%3")
        .arg(file.path(), file.fileName(), token + QLatin1String(done ? "-done" : ""));
}
