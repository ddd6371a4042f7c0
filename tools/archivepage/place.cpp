#include "archivepage/place.h"

#include "archivepage/archivepage.h"
#include "output/outputfile.h"
#include "text/texts.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace archivepage {

namespace {

const QString DataFolder = QStringLiteral("/data");
const QString PageFolder = QStringLiteral("/pages");
constexpr int HashLength = 16;          // of the name of a piece, hexadecimal digits
constexpr qint64 LongestWriting = 3600; // s, of one page

// What marks index.html as made here, and a page as one of zucmtr view.
constexpr char IndexMark[] = "<meta name=\"generator\" content=\"zucmtr archive page\">";
constexpr char ViewMark[] = "<script id=\"script-main\">";

QByteArray Fingerprint(const QByteArray& content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex().left(HashLength);
}

QByteArray ContentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

[[noreturn]] void FailWriting(const QString& path, const QString& reason)
{
    throw Error(Tr("archive page", "'%1' cannot be written: %2").arg(path, reason));
}

// Writes a file that has no name until it is whole, so that nothing remains of a program that is killed.
// False where the file system has no such files.
bool WriteNameless(const QString& path, const QByteArray& content)
{
    const int file =
        open(QFile::encodeName(QFileInfo(path).path()).constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
    if (file < 0)
        return false;
    QFile stream;
    const bool isWritten = stream.open(file, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle) &&
                           stream.write(content) == content.size() && stream.flush();
    const QByteArray there = "/proc/self/fd/" + QByteArray::number(file);
    return isWritten && linkat(AT_FDCWD, there.constData(), AT_FDCWD, QFile::encodeName(path).constData(),
                               AT_SYMLINK_FOLLOW) == 0;
}

void Write(const QString& path, const QByteArray& content)
{
    QString reason;
    if (!output::WriteOutput(path, content, reason))
        FailWriting(path, reason);
}

bool IsPage(const QString& path)
{
    return ContentOf(path).contains(ViewMark);
}

} // namespace

Place::Place(const QString& directory_) : directory(directory_)
{
    MakeDirectory(directory);
    Lock();
    for (const QString& folder : {DataFolder, PageFolder}) {
        if (QFileInfo(directory + folder).isSymLink())
            throw Error(
                Tr("archive page", "'%1' is a link to another place; remove it, or give another directory")
                    .arg(directory + folder));
    }
    if (QFileInfo(directory + QStringLiteral("/index.html")).isSymLink() ||
        (QFileInfo::exists(directory + QStringLiteral("/index.html")) && !IndexThere().contains(IndexMark)))
        throw Error(Tr("archive page", "'%1' is no page of an archive; give another directory")
                        .arg(directory + QStringLiteral("/index.html")));
    MakeDirectory(directory + DataFolder);
    MakeDirectory(directory + PageFolder);
    static const QRegularExpression name(QStringLiteral("^[0-9a-f]{16}\\.html$"));
    const QStringList files = QDir(directory + PageFolder).entryList(QDir::Files);
    for (const QString& file : files.filter(name))
        pages.insert(file);
    RemoveUnfinished(files);
}

// What a killed program has left of a page that it was writing, unless another one is at it.
void Place::RemoveUnfinished(const QStringList& files)
{
    static const QRegularExpression name(QStringLiteral("^[0-9a-f]{16}\\.html\\.[A-Za-z0-9]{6}$"));
    for (const QString& file : files.filter(name)) {
        if (QFileInfo(PagePath(file)).lastModified().secsTo(QDateTime::currentDateTime()) > LongestWriting)
            QFile::remove(PagePath(file));
    }
}

Place::~Place()
{
    close(lock);
}

// Another program's new pieces are named by no page yet.
void Place::Lock()
{
    lock = open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (lock >= 0 && flock(lock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        close(lock);
        throw Error(Tr("archive page", "'%1': another program is at work there").arg(directory));
    }
}

void Place::MakeDirectory(const QString& path)
{
    if (!QDir().mkpath(path) || !QFileInfo(path).isDir())
        throw Error(Tr("archive page", "'%1' cannot be made a directory").arg(path));
}

QByteArray Place::IndexThere() const
{
    return ContentOf(directory + QStringLiteral("/index.html"));
}

QString Place::Put(const QByteArray& kind, const QByteArray& content)
{
    QString name = QString::fromLatin1(kind + '-' + Fingerprint(content));
    const QString path = directory + DataFolder + QLatin1Char('/') + name + QStringLiteral(".js");
    if (QFileInfo(path).size() == content.size() && ContentOf(path) == content)
        return name;
    if (QFileInfo::exists(path) || !WriteNameless(path, content))
        Write(path, content);
    return name;
}

void Place::PutIndex(const QByteArray& page)
{
    const QByteArray before = IndexThere();
    const QString path = directory + QStringLiteral("/index.html");
    if (page != before)
        Write(path, page);
    RemoveOldPieces(page, before);
}

void Place::RemoveOldPieces(const QByteArray& page, const QByteArray& before)
{
    static const QRegularExpression name(QStringLiteral("^[a-z]+-[0-9a-f]{16}\\.js$"));
    QDir data(directory + DataFolder);
    const QStringList files = data.entryList(QDir::Files | QDir::NoSymLinks);
    for (const QString& file : files.filter(name)) {
        const QByteArray piece = file.chopped(3).toLatin1();
        if (page.contains(piece) || before.contains(piece))
            continue;
        if (Fingerprint(ContentOf(data.filePath(file))) ==
            piece.right(HashLength)) // else it is not made here
            data.remove(file);
    }
}

QString Place::PagePath(const QString& name) const
{
    return directory + PageFolder + QLatin1Char('/') + name;
}

void Place::KeepPages(const QSet<QString>& names)
{
    const QSet<QString> left = pages - names;
    for (const QString& name : left) {
        if (IsPage(PagePath(name)))
            QFile::remove(PagePath(name));
        pages.remove(name);
    }
}

} // namespace archivepage
