#include "explain/file.h"

#include "base/chainnames.h"
#include "explain/cutoff.h"
#include "explain/library.h"
#include "explain/system.h"
#include "text/reasons.h"
#include "text/texts.h"

#include "recording/fieldtext.h"
#include "recording/zufilelayout.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace explain {

namespace {

constexpr qint64 LookedAt = 4096; // bytes at the start of a file that show what it is

QString WhyNotThere(const QString& path, int error)
{
    if (error == ENAMETOOLONG)
        return Tr("file", "the path is too long; shorten the names");
    if (error == EACCES)
        return Tr("file", "no permission to look into its directory; check the permissions");
    if (error == ELOOP)
        return Tr("file", "it is a link that leads back to itself; remove it");
    const QFileInfo link(path);
    if (link.isSymLink())
        return Tr("file", "it is a link to '%1', which is not there").arg(link.symLinkTarget());
    if (error == ENOENT || error == ENOTDIR)
        return Tr("file", "there is no such file; check the path");
    return SystemText(error);
}

// A file in the directory that the user can give instead of it.
QString FirstInside(const QString& directory)
{
    const QDir inside(directory, QString(), QDir::Name, QDir::Files);
    for (const QStringList& patterns :
         {zu::FirstFilePatterns(), QStringList{QStringLiteral("*.cfg"), QStringLiteral("*.cff")}}) {
        const QStringList names = inside.entryList(patterns);
        if (!names.isEmpty())
            return QDir::cleanPath(directory + QLatin1Char('/') + names.first());
    }
    return QString();
}

QString WhyNotADirectory(const QString& path)
{
    const QString inside = FirstInside(path);
    if (inside.isEmpty())
        return Tr("file", "it is a directory; give a file");
    return Tr("file", "it is a directory; give a file in it, such as '%1'").arg(inside);
}

struct Beginning
{
    QByteArray bytes;
    QString error; // why there are none; empty if the file can be read
};

Beginning BeginningOf(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile())
        return {};
    Beginning beginning;
    if (file.open(QIODevice::ReadOnly))
        beginning.bytes = file.read(LookedAt);
    if (file.error() != QFileDevice::NoError)
        beginning.error = Tr("file", "the file cannot be read: %1").arg(SystemText(file.errorString()));
    return beginning;
}

// Whether the bytes, as far as they go, have the text at that place.
bool Agrees(const QByteArray& bytes, int place, const QByteArray& text)
{
    return bytes.mid(place, text.size()) == text.left(std::max(0, int(bytes.size()) - place));
}

// The file may end before its title does.
bool HasTitle(const QByteArray& bytes)
{
    constexpr int place = offsetof(ZuFileHeader, title);
    return Agrees(bytes, place, zu::CodecCP866->fromUnicode(zu::TitleStart())) ||
           Agrees(bytes, place, zu::CodecCP1251->fromUnicode(zu::TitleStart()));
}

bool IsRecordingsBeginning(const QByteArray& bytes)
{
    return Agrees(bytes, 0, QByteArray("40", sizeof ZuFileHeader::version)) && HasTitle(bytes);
}

// The text of a CFG file has the revision as the third field of its first line; a container, its marks.
QString RecordExtensionOf(const QByteArray& bytes)
{
    const QByteArray line = bytes.left(bytes.indexOf('\n')).trimmed();
    if (line.toLower().startsWith("--- file type:"))
        return QStringLiteral(".cff");
    const QList<QByteArray> fields = line.split(',');
    const QByteArray revision = fields.size() == 3 ? fields[2].trimmed() : QByteArray();
    return revision == "1991" || revision == "1999" || revision == "2013" ? QStringLiteral(".cfg")
                                                                          : QString();
}

// For a .dat, .hdr or .inf file.
QString ConfigurationOf(const QFileInfo& piece)
{
    for (const char* extension : {".cfg", ".CFG", ".Cfg"}) {
        const QString path =
            piece.path() + QLatin1Char('/') + piece.completeBaseName() + QLatin1String(extension);
        if (QFileInfo::exists(path))
            return QDir::cleanPath(path);
    }
    return QString();
}

// What a file is, judging by its name, and what to do with it; empty if the name does not show it.
QString OtherKindByName(const QString& path)
{
    const QFileInfo file(path);
    const QString extension = file.suffix().toLower();
    if (extension == QLatin1String("cfg") || extension == QLatin1String("cff"))
        return Tr("file",
                  "it is a COMTRADE record, not a recording; 'zucmtr info' and 'zucmtr view' take it");
    if (extension == QLatin1String("dat") || extension == QLatin1String("hdr") ||
        extension == QLatin1String("inf")) {
        const QString configuration = ConfigurationOf(file);
        if (configuration.isEmpty())
            return Tr("file", "it is a part of a COMTRADE record, not a recording (.ZU); 'zucmtr info' and "
                              "'zucmtr view' take the record's .cfg file, which is not beside it");
        return Tr("file", "it is a part of a COMTRADE record, not a recording (.ZU); 'zucmtr info' and "
                          "'zucmtr view' take its configuration '%1'")
            .arg(configuration);
    }
    if (extension == QLatin1String("ini"))
        return Tr("file",
                  "it is an ini file, not a recording; name it by --ini, or look at it with 'zucmtr check'");
    return QString();
}

QString WhyNothing(const Beginning& beginning)
{
    return beginning.error.isEmpty() ? Tr("file", "the file is empty; was the copy interrupted?")
                                     : beginning.error;
}

// For a file that does not start like a recording.
QString OtherKind(const QString& path, const Beginning& beginning)
{
    QString byName = OtherKindByName(path);
    if (!byName.isEmpty())
        return byName;
    if (beginning.bytes.isEmpty())
        return WhyNothing(beginning);
    const QString extension = RecordExtensionOf(beginning.bytes);
    if (!extension.isEmpty())
        return Tr("file", "it is no recording: its content is a COMTRADE record's; give it the extension %1")
            .arg(extension);
    return Tr(
        "file",
        "it is no recording: it does not start like a recorder's file; give a recording's first file (.ZU)");
}

} // namespace

QString Unreadable(const QString& path)
{
    if (path.isEmpty())
        return Tr("file", "the path is empty; give a file");
    struct stat status = {};
    const QByteArray name = QFile::encodeName(path);
    if (stat(name.constData(), &status) != 0)
        return WhyNotThere(path, errno);
    if (S_ISDIR(status.st_mode))
        return WhyNotADirectory(path);
    if (S_ISFIFO(status.st_mode))
        return Tr("file", "it is a pipe; save what comes out of it in a file, and give that");
    if (!S_ISREG(status.st_mode))
        return Tr("file", "it is a device or a socket; give a file");
    if (access(name.constData(), R_OK) != 0)
        return Tr("file", "no permission to read the file; check its permissions");
    return QString();
}

QString NotConvertible(const QString& path)
{
    QString unreadable = Unreadable(path);
    if (!unreadable.isEmpty() || zu::IsFirstFileName(path))
        return unreadable;
    const Beginning beginning = BeginningOf(path);
    if (!beginning.bytes.isEmpty() && IsRecordingsBeginning(beginning.bytes))
        return Tr("file", "the name of a recording ends in .ZU or .zu; rename the file");
    return OtherKind(path, beginning);
}

// Whether the library came to an unexpected end of the file.
static bool IsFailedRead(const QString& libraryText)
{
    return libraryText.contains(QStringLiteral("чтение файла")) ||
           libraryText.contains(QStringLiteral("при чтении файла"));
}

QString NotLoaded(const QString& path, const QString& libraryText)
{
    QString unreadable = Unreadable(path);
    if (!unreadable.isEmpty())
        return unreadable;
    const Beginning beginning = BeginningOf(path);
    if (beginning.bytes.isEmpty() || !IsRecordingsBeginning(beginning.bytes))
        return OtherKind(path, beginning);
    const QString cutOff = IsFailedRead(libraryText) ? CutOffText(path) : QString();
    return cutOff.isEmpty() ? LibraryText(libraryText) : WithLibraryText(cutOff, libraryText);
}

QString NotARecord(const QString& path)
{
    QString unreadable = Unreadable(path);
    if (!unreadable.isEmpty())
        return unreadable;
    const Beginning beginning = BeginningOf(path);
    if (beginning.bytes.isEmpty())
        return WhyNothing(beginning);
    if (beginning.bytes.size() >= qint64{sizeof ZuFileHeader::version} &&
        IsRecordingsBeginning(beginning.bytes))
        return Tr("file",
                  "it is no COMTRADE record: its content is a recording's; give it the extension .ZU");
    return QString();
}

const char* WordOf(const QString& path, const char* otherwise)
{
    const QFileInfo file(path);
    if (!file.exists())
        return reason::DoesNotExist;
    if (!file.isFile())
        return reason::NotAFile;
    return file.isReadable() ? otherwise : reason::NoPermission;
}

bool BeginsAsRecording(const QString& path)
{
    const QByteArray beginning = BeginningOf(path).bytes;
    return !beginning.isEmpty() && IsRecordingsBeginning(beginning);
}

} // namespace explain
