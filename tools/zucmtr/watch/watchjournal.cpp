#include "zucmtr/watch/watchjournal.h"

#include "explain/system.h"
#include "output/target.h"
#include "text/texts.h"
#include "zucmtr/files/systemfile.h"
#include "zucmtr/terminal/command.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// The first line tells the file from others. Each further one is the mark of a verdict, the print of the
// recording, and the absolute path of its first file; of a converted recording the record's name, too. Of one
// that was given up, or converted without a bad file of it, the state of its permissions and times of change
// follows. They are separated by blanks; paths and names have theirs as %XX.
const char* const header = "zucmtr watch 1\n";
constexpr int printSize = 40;

struct Mark
{
    WatchJournal::Verdict verdict;
    char letter;
};
constexpr Mark marks[] = {{WatchJournal::Verdict::Begun, 'B'},     {WatchJournal::Verdict::Failed, 'F'},
                          {WatchJournal::Verdict::Killed, 'K'},    {WatchJournal::Verdict::Withdrawn, 'W'},
                          {WatchJournal::Verdict::Converted, 'C'}, {WatchJournal::Verdict::PutAway, 'P'},
                          {WatchJournal::Verdict::GivenUp, 'G'}};

WatchJournal::Verdict VerdictOf(const QByteArray& word)
{
    for (const Mark& mark : marks) {
        if (word.size() == 1 && word[0] == mark.letter)
            return mark.verdict;
    }
    return WatchJournal::Verdict::Unknown;
}

char LetterOf(WatchJournal::Verdict verdict)
{
    for (const Mark& mark : marks) {
        if (mark.verdict == verdict)
            return mark.letter;
    }
    return '?';
}

QString PathOf(const QString& recording)
{
    return QDir::cleanPath(QFileInfo(recording).absoluteFilePath());
}

// Letters beyond ASCII stay as they are, for people who look into the file.
QByteArray Encoded(const QString& text)
{
    QByteArray bytes = text.toUtf8();
    return bytes.replace('%', "%25").replace(' ', "%20").replace('\n', "%0A").replace('\r', "%0D");
}

QString Decoded(const QByteArray& bytes)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(bytes));
}

QByteArray LineOf(WatchJournal::Verdict verdict, const QByteArray& print, const QString& path,
                  const QStringList& more = {})
{
    QByteArray line = LetterOf(verdict) + (' ' + print) + ' ' + Encoded(path);
    for (const QString& word : more) {
        if (!word.isEmpty())
            line += ' ' + Encoded(word);
    }
    return line + '\n';
}

// What the path of the open journal leads to.
enum class Place { Own, Other, Empty, Unknown };

Place PlaceOf(const QFile& file, const QString& path)
{
    struct stat open = {};
    struct stat named = {};
    if (fstat(file.handle(), &open) != 0)
        return Place::Unknown;
    if (stat(QFile::encodeName(path).constData(), &named) != 0)
        return errno == ENOENT ? Place::Empty : Place::Unknown;
    return open.st_dev == named.st_dev && open.st_ino == named.st_ino ? Place::Own : Place::Other;
}

qint64 SizeOf(const QFile& file)
{
    struct stat status = {};
    return fstat(file.handle(), &status) == 0 ? static_cast<qint64>(status.st_size) : -1;
}

// 0, or the errno of the failure.
int WriteAt(const QFile& file, qint64 at, const QByteArray& bytes)
{
    for (int done = 0; done < bytes.size();) {
        const ssize_t count = pwrite(file.handle(), bytes.constData() + done,
                                     static_cast<size_t>(bytes.size() - done), at + done);
        if (count < 0 && errno != EINTR)
            return errno;
        done += count > 0 ? static_cast<int>(count) : 0;
    }
    return 0;
}

bool Lock(const QFile& file)
{
    return flock(file.handle(), LOCK_EX | LOCK_NB) == 0;
}

// It is read back and written anew, so it is a regular file, by the name that no link changes.
QString JournalPath(const QString& path)
{
    const output::Target target = output::TargetOf(path);
    if (target.kind == output::Kind::RegularFile || target.kind == output::Kind::NewFile)
        return target.path;
    throw ConfigurationError(
        Tr("watch", "--state: '%1' is no regular file; give a file in a directory that can be written to")
            .arg(path));
}

} // namespace

WatchJournal::WatchJournal(const QString& path_) : path(JournalPath(path_))
{
    Open();
    Read();
    if (size > 0)
        return;
    isNamed = false;
    Append(QByteArray()); // the header: a disk that is full shows at once
}

void WatchJournal::Open()
{
    do {
        file = std::make_unique<QFile>(path);
        if (!file->open(QIODevice::ReadWrite | QIODevice::Unbuffered))
            throw Unwritable(Tr("watch", "--state: '%1' cannot be written: %2; give another file")
                                 .arg(path, explain::SystemText(file->errorString())));
        if (!Lock(*file))
            throw Taken(
                Tr("watch", "--state: another 'zucmtr watch' works with '%1'; end it, or give another file")
                    .arg(path));
    } while (PlaceOf(*file, path) != Place::Own);
}

void WatchJournal::Read()
{
    size = SizeOf(*file);
    if (size == 0)
        return;
    // A crash may have cut off the header, too.
    file->seek(0);
    const QByteArray bytes = file->readAll();
    const int end = bytes.indexOf('\n') + 1;
    if (!QByteArray(header).startsWith(end > 0 ? bytes.left(end) : bytes))
        throw ConfigurationError(
            Tr("watch", "--state: '%1' is another kind of file; give one that 'zucmtr watch' has made, or "
                        "one that does not exist yet")
                .arg(path));
    if (end == 0)
        return;
    for (int at = end; at < bytes.size();) {
        const int next = bytes.indexOf('\n', at) + 1;
        Take(bytes.mid(at, next > 0 ? next - at : -1));
        at = next > 0 ? next : bytes.size();
    }
}

// A line that was cut off counts as none.
void WatchJournal::Take(const QByteArray& line)
{
    ++lines;
    if (!line.endsWith('\n'))
        return;
    const QList<QByteArray> words = line.chopped(1).split(' ');
    const Verdict verdict = VerdictOf(words[0]);
    const int least = verdict == Verdict::Converted ? 4 : 3;
    const int most = verdict == Verdict::Converted || verdict == Verdict::GivenUp ? least + 1 : least;
    if (verdict == Verdict::Unknown || words.size() < least || words.size() > most ||
        words[1].size() != printSize)
        return;
    Entry entry{words[1], verdict};
    if (verdict == Verdict::Converted)
        entry.record = Decoded(words[3]);
    entry.access = Decoded(words.value(least));
    Set(Decoded(words[2]), entry);
}

void WatchJournal::Set(const QString& recording, const Entry& entry)
{
    if (entry.verdict == Verdict::PutAway) { // should it come back, it is a new one
        entries.remove(recording);
        return;
    }
    Entry& known = entries[recording];
    const Entry before = known.print == entry.print ? known : Entry();
    known = entry;
    switch (entry.verdict) {
    case Verdict::Begun:
        known.unended = before.unended + 1;
        known.failures = before.failures;
        known.kills = before.kills;
        break;
    case Verdict::Failed:
    case Verdict::Killed:
    case Verdict::Withdrawn: // the last one that was begun came to an end
        known.unended = std::max(before.unended - 1, 0);
        known.failures = before.failures + (entry.verdict == Verdict::Failed ? 1 : 0);
        known.kills = before.kills + (entry.verdict == Verdict::Killed ? 1 : 0);
        break;
    case Verdict::GivenUp:
        known.unended = std::max(before.unended - 1, 0);
        break;
    default:
        break;
    }
}

const WatchJournal::Entry* WatchJournal::Find(const QString& recording, const QByteArray& print) const
{
    const auto entry = entries.constFind(PathOf(recording));
    return entry == entries.constEnd() || entry->print != print ? nullptr : &*entry;
}

WatchJournal::Verdict WatchJournal::VerdictOn(const QString& recording, const Fingerprint& fingerprint) const
{
    const Entry* entry = Find(recording, fingerprint.print);
    if (entry == nullptr)
        return Verdict::Unknown;
    const bool holds = entry->access.isEmpty() || entry->access == QString::fromLatin1(fingerprint.access);
    return holds ? entry->verdict : Verdict::Unknown;
}

WatchJournal::Counts WatchJournal::CountsOf(const QString& recording, const Fingerprint& fingerprint) const
{
    const Entry* entry = Find(recording, fingerprint.print);
    return entry == nullptr ? Counts() : Counts{entry->unended, entry->failures, entry->kills};
}

void WatchJournal::NoteBegun(const QString& recording, const QByteArray& print)
{
    Flush();
    Append(LineOf(Verdict::Begun, print, PathOf(recording)));
    Set(PathOf(recording), {print, Verdict::Begun});
}

void WatchJournal::NoteFailed(const QString& recording, const QByteArray& print)
{
    Note(PathOf(recording), {print, Verdict::Failed});
}

void WatchJournal::NoteKilled(const QString& recording, const QByteArray& print)
{
    Note(PathOf(recording), {print, Verdict::Killed});
}

void WatchJournal::NoteWithdrawn(const QString& recording, const QByteArray& print)
{
    Note(PathOf(recording), {print, Verdict::Withdrawn});
}

// A bad file that is mended may keep its size and its time of modification, as by 'cp -p'.
void WatchJournal::NoteConverted(const QString& recording, const Fingerprint& fingerprint,
                                 const QString& recordName, bool leftOut)
{
    Note(PathOf(recording), {fingerprint.print, Verdict::Converted, recordName,
                             leftOut ? QString::fromLatin1(fingerprint.access) : QString()});
}

void WatchJournal::NotePutAway(const QString& recording, const QByteArray& print)
{
    Note(PathOf(recording), {print, Verdict::PutAway});
}

void WatchJournal::NoteGivenUp(const QString& recording, const Fingerprint& fingerprint)
{
    Note(PathOf(recording),
         {fingerprint.print, Verdict::GivenUp, QString(), QString::fromLatin1(fingerprint.access)});
}

void WatchJournal::Note(const QString& recording, const Entry& entry)
{
    Set(recording, entry);
    unwritten += LineOf(entry.verdict, entry.print, recording, {entry.record, entry.access});
    Flush();
}

void WatchJournal::Flush()
{
    KeepInPlace();
    if (unwritten.isEmpty())
        return;
    Append(unwritten);
    unwritten.clear();
}

void WatchJournal::FailToWrite(int error) const
{
    throw Unwritable(Tr("watch", "'%1' cannot be written: %2; free the disk, or give this user the "
                                 "permission")
                         .arg(path, explain::SystemText(error)));
}

// What is written to a file without a name is lost with the process, and another process may be at work with
// a journal of its own meanwhile.
void WatchJournal::KeepInPlace()
{
    switch (PlaceOf(*file, path)) {
    case Place::Own:
        if (SizeOf(*file) < size)
            MakeAnew();
        return;
    case Place::Empty:
        MakeAnew();
        return;
    case Place::Other:
        throw Taken(Tr("watch", "another file has taken the place of '%1'; start again").arg(path));
    case Place::Unknown:
        FailToWrite(errno);
    }
}

// Empty pieces are appended for the header's sake alone.
void WatchJournal::Append(const QByteArray& bytes)
{
    QByteArray text = bytes;
    if (size < static_cast<qint64>(qstrlen(header))) { // none yet, or it was cut off
        text.prepend(QByteArray(header).mid(static_cast<int>(size)));
    } else {
        char last = '\n';
        if (pread(file->handle(), &last, 1, size - 1) == 1 && last != '\n')
            text.prepend('\n'); // after a line that was cut off a new one begins
    }
    int error = WriteAt(*file, size, text);
    if (error == 0 && !bytes.isEmpty() && fdatasync(file->handle()) != 0)
        error = errno;
    if (error != 0) {
        if (ftruncate(file->handle(), size) != 0)
            size = std::max<qint64>(SizeOf(*file), 0);
        FailToWrite(error);
    }
    size += text.size();
    lines += bytes.count('\n');
    if (!isNamed && !bytes.isEmpty()) {
        error = systemfile::Sync(QFileInfo(path).absolutePath());
        if (error != 0)
            FailToWrite(error);
        isNamed = true;
    }
}

void WatchJournal::ForgetGivenUp()
{
    for (Entry& entry : entries) {
        if (entry.verdict == Verdict::GivenUp)
            entry = {entry.print, Verdict::Unknown, QString(), QString(), entry.unended};
    }
}

void WatchJournal::LetGo()
{
    close(file->handle());
}

// As many as make the entry again when they are read.
QByteArray WatchJournal::LinesOf(const QString& recording, const Entry& entry)
{
    const QByteArray begun = LineOf(Verdict::Begun, entry.print, recording);
    const QByteArray failed = begun + LineOf(Verdict::Failed, entry.print, recording);
    const QByteArray killed = begun + LineOf(Verdict::Killed, entry.print, recording);
    switch (entry.verdict) {
    case Verdict::Converted:
    case Verdict::PutAway:
        return LineOf(entry.verdict, entry.print, recording, {entry.record, entry.access});
    case Verdict::GivenUp:
        return begun.repeated(entry.unended > 0 ? entry.unended + 1 : 0) +
               LineOf(entry.verdict, entry.print, recording, {entry.access});
    default:
        return failed.repeated(entry.failures) + killed.repeated(entry.kills) + begun.repeated(entry.unended);
    }
}

QByteArray WatchJournal::AllLines() const
{
    QByteArray all;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        all += LinesOf(entry.key(), *entry);
    return all;
}

QByteArray WatchJournal::LinesThatCount() const
{
    QSet<QString> there;
    QSet<QString> inUse; // directories
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        if (!QFileInfo::exists(entry.key()))
            continue;
        there.insert(entry.key());
        inUse.insert(QFileInfo(entry.key()).path());
    }
    QByteArray kept;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        if (there.contains(entry.key()) || !inUse.contains(QFileInfo(entry.key()).path()))
            kept += LinesOf(entry.key(), *entry);
    }
    return kept;
}

// By a new file that takes the old one's place: a crash leaves one or the other. Where that fails, the long
// journal is as good.
void WatchJournal::Compact()
{
    const QByteArray kept = LinesThatCount();
    if (lines <= 2 * kept.count('\n') || PlaceOf(*file, path) != Place::Own)
        return;
    auto fresh = std::make_unique<QFile>(path + QStringLiteral(".new"));
    if (!Prepare(*fresh, header + kept))
        return;
    if (std::rename(QFile::encodeName(fresh->fileName()).constData(), QFile::encodeName(path).constData()) !=
        0) {
        fresh->remove();
        return;
    }
    Use(std::move(fresh));
}

void WatchJournal::MakeAnew()
{
    auto fresh = std::make_unique<QFile>(path + QStringLiteral(".new"));
    errno = 0;
    if (!Prepare(*fresh, header + AllLines()))
        FailToWrite(errno);
    int error = 0;
    if (PlaceOf(*file, path) == Place::Own)
        error = std::rename(QFile::encodeName(fresh->fileName()).constData(),
                            QFile::encodeName(path).constData()) == 0
                    ? 0
                    : errno;
    else
        error = systemfile::RenameToFree(fresh->fileName(), path);
    if (error != 0) {
        fresh->remove();
        if (error == EEXIST)
            throw Taken(Tr("watch", "another file has taken the place of '%1'; start again").arg(path));
        FailToWrite(error);
    }
    Use(std::move(fresh));
}

// Opened, locked and written to the disk; removed again if that fails, with errno.
bool WatchJournal::Prepare(QFile& fresh, const QByteArray& bytes)
{
    if (output::TargetOf(fresh.fileName()).kind == output::Kind::Stream) {
        errno = EEXIST;
        return false;
    }
    if (!fresh.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return false;
    if (!Lock(fresh) || PlaceOf(fresh, fresh.fileName()) != Place::Own) { // another process is at it
        errno = EAGAIN;
        return false;
    }
    if (ftruncate(fresh.handle(), 0) == 0 && WriteAt(fresh, 0, bytes) == 0 && fdatasync(fresh.handle()) == 0)
        return true;
    const int error = errno;
    fresh.remove();
    errno = error;
    return false;
}

// The file has the journal's name, and all that is known.
void WatchJournal::Use(std::unique_ptr<QFile> fresh)
{
    file = std::move(fresh);
    systemfile::Sync(QFileInfo(path).absolutePath());
    entries.clear();
    unwritten.clear();
    lines = 0;
    Read();
}
