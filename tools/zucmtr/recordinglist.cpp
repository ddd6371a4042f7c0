#include "recordinglist.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

QString Normalised(const QString& path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

} // namespace

QString FirstFileOf(const QString& path)
{
    static const QRegularExpression continuation(QStringLiteral("\\.([Zz])0[1-9a-f]$"));
    const QRegularExpressionMatch match = continuation.match(path);
    if (!match.hasMatch())
        return QString();
    const QLatin1Char last(match.captured(1) == QLatin1String("Z") ? 'U' : 'u');
    return path.left(path.size() - 2) + last;
}

Role RoleOf(const QString& path, const QStringList& allFiles)
{
    const QString first = FirstFileOf(path);
    if (first.isEmpty())
        return Role::FirstFile;
    const bool given = std::any_of(allFiles.begin(), allFiles.end(), [&](const QString& file) {
        return Normalised(file) == Normalised(first);
    });
    return given ? Role::PassedOver : Role::WithoutFirst;
}
