#include "support/files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

QString TestDirectory::Path(const QString& name) const
{
    return name.isEmpty() ? directory.path() : directory.filePath(name);
}

QString TestDirectory::Write(const QString& name, const QByteArray& bytes) const
{
    QDir().mkpath(QFileInfo(Path(name)).path());
    QFile file(Path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(Path(name)));
    return Path(name);
}

QString TestDirectory::MakeDirectory(const QString& name) const
{
    QDir().mkpath(Path(name));
    return Path(name);
}

QStringList TestDirectory::Names(const QString& subdirectory) const
{
    return QDir(Path(subdirectory)).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

QByteArray ReadBytes(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return file.readAll();
}

QStringList ReadLines(const QString& path)
{
    QStringList lines = QString::fromUtf8(ReadBytes(path)).split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

std::ostream& operator<<(std::ostream& out, const QString& text)
{
    return out << '"' << text.toStdString() << '"';
}

void PrintTo(const QString& text, std::ostream* out)
{
    *out << text;
}

void PrintTo(const QStringList& texts, std::ostream* out)
{
    *out << '{';
    for (const QString& text : texts)
        *out << text << ' ';
    *out << '}';
}
