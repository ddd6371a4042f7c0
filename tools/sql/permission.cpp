#include "sql/permission.h"

#include "text/texts.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <pwd.h>
#include <unistd.h>

namespace sql {

namespace {

bool IsDenied(const QString& path, int mode)
{
    return access(QFile::encodeName(path).constData(), mode) != 0 && errno == EACCES;
}

// Its number if it has no name, as in a container.
QString UserName()
{
    std::array<char, 4096> bytes{};
    passwd entry = {};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, bytes.data(), bytes.size(), &found) == 0 && found != nullptr)
        return QString::fromLocal8Bit(entry.pw_name);
    return QString::number(getuid());
}

QString OwnerOf(const QString& path)
{
    const QFileInfo info(path);
    return info.owner().isEmpty() ? QString::number(info.ownerId()) : info.owner();
}

// The directory or the first above it, seen from the root, that the user may not enter: nothing can be said
// of those below it, not even whose they are. Empty if there is none.
QString FirstClosed(const QString& directory)
{
    const QString above = QFileInfo(directory).path();
    QString closed = above == directory ? QString() : FirstClosed(above);
    return closed.isEmpty() && IsDenied(directory, X_OK) ? directory : closed;
}

QString Filled(const QString& sentence, const QString& path)
{
    return sentence.arg(UserName(), path, OwnerOf(path));
}

} // namespace

QString MissingPermission(const QString& path, bool writes)
{
    const QString directory = QFileInfo(path).absolutePath();
    const QString closed = FirstClosed(directory);
    if (!closed.isEmpty())
        return Filled(
            Tr("sql", "user '%1' may not enter the directory '%2'; its owner '%3' can permit that, as by a "
                      "group and chmod g+x"),
            closed);
    if (IsDenied(path, R_OK))
        return Filled(
            Tr("sql", "user '%1' may not read the file '%2'; its owner '%3' can permit that, as by a group "
                      "and chmod g+r"),
            path);
    if (writes && IsDenied(path, W_OK))
        return Filled(Tr("sql",
                         "user '%1' may not write to the file '%2'; its owner '%3' can permit that, as by a "
                         "group and chmod g+w"),
                      path);
    if (writes && IsDenied(directory, W_OK))
        return Filled(Tr("sql",
                         "user '%1' may not make files in the directory '%2', where the database needs some "
                         "beside it; its owner '%3' can permit that, as by a group and chmod g+wx"),
                      directory);
    return {};
}

} // namespace sql
