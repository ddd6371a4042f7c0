#include "watchjournal.h"

#include "command.h"
#include "output/target.h"
#include "sourcefiles.h"
#include "texts.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <cstdio>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// The first line tells the file from others. Each further one is the mark of a verdict, the print of the
// recording, and the absolute path of its first file; of a converted recording the record's name, too. They
// are parted by blanks; paths and names have theirs as %XX.
const char* const header = "zucmtr watch 1\n";
constexpr int printSize = 40;
constexpr int longestLine = 64 * 1024; // a path has 4096 bytes at most, three times as much when encoded

struct Mark
{
    WatchJournal::Verdict verdict;
    char letter;
};
constexpr Mark marks[] = {{WatchJournal::Verdict::Begun, 'B'},
                          {WatchJournal::Verdict::Converted, 'C'},
                          {WatchJournal::Verdict::PutAway, 'P'},
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
                  const QString& recordName)
{
    QByteArray line = LetterOf(verdict) + (' ' + print) + ' ' + Encoded(path);
    if (verdict == WatchJournal::Verdict::Converted)
        line += ' ' + Encoded(recordName);
    return line + '\n';
}

// False if another journal has taken the place of the open one.
bool IsInPlace(const QFile& file)
{
    struct stat open = {};
    struct stat named = {};
    return fstat(file.handle(), &open) == 0 &&
           stat(QFile::encodeName(file.fileName()).constData(), &named) == 0 && open.st_dev == named.st_dev &&
           open.st_ino == named.st_ino;
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
}

void WatchJournal::Open()
{
    do {
        file = std::make_unique<QFile>(path);
        if (!file->open(QIODevice::ReadWrite))
            throw ConfigurationError(
                Tr("watch", "--state: '%1' cannot be written: %2").arg(path, file->errorString()));
        if (!Lock(*file))
            throw ConfigurationError(
                Tr("watch", "--state: another 'zucmtr watch' works with '%1'; end it, or give another file")
                    .arg(path));
    } while (!IsInPlace(*file));
}

void WatchJournal::Read()
{
    if (file->atEnd())
        return;
    // A crash may have cut off the header, too.
    const QByteArray first = file->readLine(longestLine);
    if (!QByteArray(header).startsWith(first))
        throw ConfigurationError(
            Tr("watch", "--state: '%1' is another kind of file; give one that 'zucmtr watch' has made, or "
                        "one that does not exist yet")
                .arg(path));
    while (!file->atEnd())
        Take(file->readLine(longestLine));
}

void WatchJournal::Take(const QByteArray& line)
{
    ++lines;
    if (!line.endsWith('\n'))
        return;
    const QList<QByteArray> words = line.chopped(1).split(' ');
    const Verdict verdict = VerdictOf(words[0]);
    const int expected = verdict == Verdict::Converted ? 4 : 3;
    if (verdict == Verdict::Unknown || words.size() != expected || words[1].size() != printSize)
        return;
    Set(Decoded(words[2]), {words[1], verdict, 0, Decoded(words.value(3))});
}

void WatchJournal::Set(const QString& recording, const Entry& entry)
{
    if (entry.verdict == Verdict::PutAway) { // should it come back, it is a new one
        entries.remove(recording);
        return;
    }
    Entry& known = entries[recording];
    const int before = known.print == entry.print ? known.begun : 0;
    known = entry;
    known.begun = entry.verdict == Verdict::Begun ? before + 1 : 0;
    if (entry.verdict == Verdict::Converted)
        pathOf.insert(entry.recordName, recording);
}

WatchJournal::Verdict WatchJournal::VerdictOn(const QString& recording, const QByteArray& print) const
{
    const auto entry = entries.constFind(PathOf(recording));
    return entry == entries.constEnd() || entry->print != print ? Verdict::Unknown : entry->verdict;
}

int WatchJournal::Begun(const QString& recording, const QByteArray& print) const
{
    const auto entry = entries.constFind(PathOf(recording));
    return entry == entries.constEnd() || entry->print != print ? 0 : entry->begun;
}

QString WatchJournal::OtherOf(const QString& recordName, const QString& recording) const
{
    const QString other = pathOf.value(recordName);
    return other == PathOf(recording) ? QString() : other;
}

void WatchJournal::NoteBegun(const QString& recording, const QByteArray& print)
{
    Note(PathOf(recording), {print, Verdict::Begun, 0, QString()});
}

void WatchJournal::NoteConverted(const QString& recording, const QByteArray& print, const QString& recordName)
{
    Note(PathOf(recording), {print, Verdict::Converted, 0, recordName});
}

void WatchJournal::NotePutAway(const QString& recording, const QByteArray& print)
{
    Note(PathOf(recording), {print, Verdict::PutAway, 0, QString()});
}

void WatchJournal::NoteGivenUp(const QString& recording, const QByteArray& print)
{
    Note(PathOf(recording), {print, Verdict::GivenUp, 0, QString()});
}

void WatchJournal::Note(const QString& recording, const Entry& entry)
{
    Append(LineOf(entry.verdict, entry.print, recording, entry.recordName));
    ++lines;
    Set(recording, entry);
}

void WatchJournal::Append(const QByteArray& bytes)
{
    const qint64 size = file->size();
    QByteArray text = bytes;
    if (size < static_cast<qint64>(qstrlen(header))) // none yet, or its header was cut off
        text.prepend(QByteArray(header).mid(static_cast<int>(size)));
    else if (file->seek(size - 1) && file->read(1) != "\n") // behind a line that was cut off a new one begins
        text.prepend('\n');
    const bool written = file->seek(size) && file->write(text) == text.size() && file->flush();
    if (!written || fdatasync(file->handle()) != 0)
        throw std::runtime_error(Tr("watch", "'%1' cannot be written: %2; free the disk")
                                     .arg(path, file->errorString())
                                     .toStdString());
    if (size == 0)
        sourcefiles::Sync({}, QFileInfo(path).absolutePath()); // of a new file the name, too
}

void WatchJournal::ForgetGivenUp()
{
    for (auto entry = entries.begin(); entry != entries.end();)
        entry = entry->verdict == Verdict::GivenUp ? entries.erase(entry) : std::next(entry);
}

QByteArray WatchJournal::LinesThatCount(int& count) const
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
        if (!there.contains(entry.key()) && inUse.contains(QFileInfo(entry.key()).path()))
            continue;
        const int times = entry->verdict == Verdict::Begun ? entry->begun : 1;
        kept += LineOf(entry->verdict, entry->print, entry.key(), entry->recordName).repeated(times);
        count += times;
    }
    return kept;
}

void WatchJournal::Compact()
{
    int count = 0;
    const QByteArray kept = LinesThatCount(count);
    if (lines > 2 * count)
        Replace(header + kept);
}

// By a new file that takes the old one's place: a crash leaves one or the other. Where that fails, the long
// journal is as good.
void WatchJournal::Replace(const QByteArray& bytes)
{
    auto fresh = std::make_unique<QFile>(path + QStringLiteral(".new"));
    if (output::TargetOf(fresh->fileName()).kind == output::Kind::Stream)
        return;
    if (!fresh->open(QIODevice::ReadWrite | QIODevice::Truncate))
        return;
    const bool written = Lock(*fresh) && fresh->write(bytes) == bytes.size() && fresh->flush() &&
                         fdatasync(fresh->handle()) == 0;
    if (!written || std::rename(QFile::encodeName(fresh->fileName()).constData(),
                                QFile::encodeName(path).constData()) != 0) {
        fresh->remove();
        return;
    }
    file = std::move(fresh);
    sourcefiles::Sync({}, QFileInfo(path).absolutePath());
    entries.clear();
    pathOf.clear();
    lines = 0;
    file->seek(0);
    Read();
}
