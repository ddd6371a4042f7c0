#include "zucmtr/watch/watchjournal.h"

#include "explain/system.h"
#include "output/target.h"
#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/watch/journaltables.h"
#include "zucmtr/watch/textjournal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace {

using Verdict = WatchJournal::Verdict;
using Entry = WatchJournal::Entry;

// The byte after those that SQLite locks, on the page that it leaves empty for them.
constexpr off_t LockedByte = 0x40000200;

// It is read back, so it is a regular file, by the name that no link changes.
QString JournalPath(const QString& path)
{
    const output::Target target = output::TargetOf(path);
    if (target.kind == output::Kind::RegularFile || target.kind == output::Kind::NewFile)
        return target.path;
    throw ConfigurationError(
        Tr("watch", "--state: '%1' is no regular file; give a file in a directory that can be written to")
            .arg(path));
}

// What is known of a recording after the entry, given what was known before.
Entry Following(const Entry& known, Entry entry)
{
    const Entry before = known.print == entry.print ? known : Entry();
    const bool isEnd = entry.verdict == Verdict::Converted || entry.verdict == Verdict::GivenUp;
    if (entry.verdict == Verdict::Begun)
        entry.unended = before.unended + 1;
    else if (entry.verdict != Verdict::Converted) // the attempt that was started last has ended
        entry.unended = std::max(before.unended - 1, 0);
    entry.failures = isEnd ? 0 : before.failures + (entry.verdict == Verdict::Failed ? 1 : 0);
    entry.kills = isEnd ? 0 : before.kills + (entry.verdict == Verdict::Killed ? 1 : 0);
    return entry;
}

// Who works with a journal that is locked; nothing if that cannot be read.
QString HolderOf(const QString& path)
{
    QString holder;
    try {
        sql::Sqlite(path).Run("SELECT process, host FROM holder", {}, [&](const sql::Row& row) {
            holder = Tr("watch", " (process %1 on %2)").arg(row.Text(0), row.Text(1));
        });
    } catch (const sql::Failure&) { // a text file, or one that is just being created
    }
    return holder;
}

[[noreturn]] void RefuseTaken(const QString& path)
{
    throw WatchJournal::Taken(
        Tr("watch", "--state: another 'zucmtr watch' works with '%1'%2; end it, or give another file")
            .arg(path, HolderOf(path)));
}

[[noreturn]] void RefuseKind(const QString& path)
{
    throw ConfigurationError(Tr("watch", "--state: '%1' is another kind of file; give one that 'zucmtr "
                                         "watch' has made, or one that does not exist yet")
                                 .arg(path));
}

// Locks the open file, not the process, which would lose its lock when SQLite closes the file. 0 or errno.
int LockOwn(const systemfile::Descriptor& file)
{
    struct flock range = {};
    range.l_type = F_WRLCK;
    range.l_start = LockedByte;
    range.l_len = 1;
    return fcntl(file.Number(), F_OFD_SETLK, &range) == 0 ? 0 : errno;
}

// A file that was to become the journal, and what SQLite has put beside it.
void Discard(const QString& fresh)
{
    if (output::TargetOf(fresh).kind != output::Kind::Stream) {
        QFile::remove(fresh + QStringLiteral("-journal"));
        QFile::remove(fresh);
    }
}

} // namespace

bool WatchJournal::Entry::operator==(const Entry& other) const
{
    const auto values = [](const Entry& one) {
        return std::tie(one.print, one.verdict, one.record, one.access, one.noted, one.unended, one.failures,
                        one.kills);
    };
    return values(*this) == values(other);
}

bool WatchJournal::Task::operator==(const Task& other) const
{
    const auto values = [](const Task& one) {
        return std::tie(one.file, one.input, one.noted, one.failures, one.state);
    };
    return values(*this) == values(other);
}

WatchJournal::WatchJournal(const QString& path_) : path(JournalPath(path_))
{
    Place place = Place::Other;
    while (place == Place::Other || place == Place::Empty) { // it was exchanged after it was opened
        file = Claimed(path);
        place = FindPlace();
    }
    if (place == Place::Unknown)
        FailToWrite(explain::SystemText(errno));
    Load();
    Discard(path + QStringLiteral(".new")); // of a run that was killed
}

WatchJournal::~WatchJournal()
{
    try {
        if (database && FindPlace() == Place::Own)
            database->Run("PRAGMA journal_mode=DELETE"); // removes the file beside it
    } catch (const std::exception&) {
        return; // the next run removes it
    }
}

systemfile::Descriptor WatchJournal::Claimed(const QString& at, int flags) const
{
    systemfile::Descriptor claimed(
        open(QFile::encodeName(at).constData(), O_RDWR | O_CREAT | O_CLOEXEC | flags, 0666));
    const int error = claimed.IsOpen() ? LockOwn(claimed) : errno;
    if (claimed.IsOpen() && (error == EAGAIN || error == EACCES))
        RefuseTaken(path);
    if (error != 0)
        FailToWrite(explain::SystemText(error));
    return claimed;
}

void WatchJournal::Load()
{
    std::array<char, 15> begin{};
    const ssize_t count = pread(file.Number(), begin.data(), begin.size(), 0);
    const QByteArray head(begin.data(), static_cast<int>(std::max<ssize_t>(count, 0)));
    if (textjournal::Is(head)) {
        TakeOverText();
        return;
    }
    try {
        database = Connected();
        const Contents stored = Stored();
        entries = stored.entries;
        tasks = stored.tasks;
    } catch (const sql::Failure& failure) {
        if (failure.trouble != sql::Trouble::Damaged)
            FailToWrite(failure.Message());
        if (!QByteArray("SQLite format 3").startsWith(head))
            RefuseKind(path);
        throw ConfigurationError(
            Tr("watch", "--state: '%1' is damaged (%2); put a copy of it in its place, or move it away: then "
                        "all recordings that are there are converted again")
                .arg(path, failure.Message()));
    }
}

// An earlier version may be using it, which locks the whole file.
void WatchJournal::TakeOverText()
{
    if (flock(file.Number(), LOCK_EX | LOCK_NB) != 0)
        RefuseTaken(path);
    QFile text(path);
    if (!text.open(QIODevice::ReadOnly))
        FailToWrite(explain::SystemText(text.errorString()));
    textjournal::Read(text.readAll(), [this](const QString& recording, const Entry& entry) {
        if (entry.verdict == Verdict::PutAway)
            entries.remove(recording);
        else
            entries[recording] = Following(entries.value(recording), entry);
    });
    MakeAnew({});
}

// The file by which SQLite undoes an unfinished change keeps its name and its space on the disk until the
// end, because removing it after each change takes longer. It works on network file systems, unlike a
// write-ahead log.
std::unique_ptr<sql::Sqlite> WatchJournal::Connected() const
{
    auto opened = std::make_unique<sql::Sqlite>(path);
    QStringList marks;
    const auto mark = [&marks](const sql::Row& row) { marks << row.Text(0); };
    opened->Run("PRAGMA synchronous=EXTRA");
    opened->Together([&] {
        opened->Run("PRAGMA quick_check(1)", {}, mark);
        if (marks[0] != QLatin1String("ok"))
            throw sql::Failure(marks[0], sql::Trouble::Damaged);
        opened->Run("SELECT count(*) FROM sqlite_master", {}, mark);
        if (marks[1] == QLatin1String("0"))
            journaltables::Create(*opened);
        const int version = journaltables::VersionOf(*opened);
        if (version == 0)
            RefuseKind(path);
        if (version > journaltables::Version)
            throw ConfigurationError(Tr("watch", "--state: '%1' was made by a newer version of the program; "
                                                 "install that, or give another file")
                                         .arg(path));
        journaltables::Migrate(*opened, version);
        journaltables::WriteHolder(*opened);
    });
    opened->Run("PRAGMA journal_mode=PERSIST");
    return opened;
}

WatchJournal::Place WatchJournal::FindPlace() const
{
    systemfile::Identity open;
    systemfile::Identity named;
    errno = systemfile::Identify(file, open);
    if (errno == 0)
        errno = systemfile::Identify(path, named);
    if (errno != 0)
        return errno == ENOENT ? Place::Empty : Place::Unknown;
    return open.IsSameFile(named) ? Place::Own : Place::Other;
}

WatchJournal::Entry WatchJournal::Known(const QString& recording, const Fingerprint& fingerprint) const
{
    Entry entry = entries.value(Normalised(recording));
    if (entry.print != fingerprint.print)
        return Entry();
    if (!entry.access.isEmpty() && entry.access != QString::fromLatin1(fingerprint.access))
        entry.verdict = Verdict::Unknown;
    return entry;
}

void WatchJournal::NoteBegun(const QString& recording, const QByteArray& print)
{
    const QString first = Normalised(recording);
    Entries changed = unwritten;
    changed[first] = Following(entries.value(first), {print, Verdict::Begun, {}, {}, journaltables::Now()});
    try {
        Save(changed);
    } catch (const Unwritable&) {
        Withdraw(first, print);
        throw;
    }
    Saved(changed);
    entries[first] = changed[first];
}

// The attempt was not started, so the counts stay. The row takes no less space than the one that could not be
// written: once it can be written, so can that one.
void WatchJournal::Withdraw(const QString& first, const QByteArray& print)
{
    Entry entry = entries.value(first);
    if (entry.print != print)
        entry = {print};
    entry.verdict = Verdict::Withdrawn;
    entry.record.clear();
    entry.access.clear();
    entry.noted = journaltables::Now();
    unwritten[first] = entry;
    entries[first] = entry;
}

void WatchJournal::Note(const QString& recording, const QByteArray& print, Verdict verdict)
{
    Note(recording, {print, verdict});
}

// A bad file that is repaired may keep its size and its time of modification, as with 'cp -p'.
void WatchJournal::NoteConverted(const QString& recording, const Fingerprint& fingerprint,
                                 const QString& recordName, bool leftOut)
{
    Note(recording, {fingerprint.print, Verdict::Converted, recordName,
                     leftOut ? QString::fromLatin1(fingerprint.access) : QString()});
}

void WatchJournal::NoteGivenUp(const QString& recording, const Fingerprint& fingerprint)
{
    Note(recording,
         {fingerprint.print, Verdict::GivenUp, QString(), QString::fromLatin1(fingerprint.access)});
}

void WatchJournal::Note(const QString& recording, const Entry& entry)
{
    const QString first = Normalised(recording);
    Entry now = Following(entries.value(first), entry);
    now.noted = journaltables::Now();
    unwritten[first] = now;
    if (now.verdict == Verdict::PutAway) // if it comes back, it is a new one
        entries.remove(first);
    else
        entries[first] = now;
    Flush();
}

void WatchJournal::AddTask(const Task& task)
{
    const qint64 number = tasks.isEmpty() ? 1 : tasks.lastKey() + 1;
    tasks[number] = task;
    tasks[number].noted = journaltables::Now();
    unwrittenTasks[number] = tasks[number];
}

void WatchJournal::NoteTask(qint64 number, const Task& task)
{
    unwrittenTasks[number] = task;
    unwrittenTasks[number].noted = journaltables::Now();
    if (task.state == Task::State::Done)
        tasks.remove(number);
    else
        tasks[number] = unwrittenTasks[number];
    Flush();
}

void WatchJournal::Flush()
{
    Save(unwritten);
    Saved(unwritten);
}

void WatchJournal::Saved(const Entries& changed)
{
    for (auto one = changed.begin(); isNewsWanted && one != changed.end(); ++one)
        news.entries[one.key()] = *one;
    for (auto one = unwrittenTasks.begin(); isNewsWanted && one != unwrittenTasks.end(); ++one)
        news.tasks[one.key()] = *one;
    unwritten.clear();
    unwrittenTasks.clear();
}

void WatchJournal::FailToWrite(const QString& reason) const
{
    if (!file.IsOpen())
        throw Unwritable(
            Tr("watch", "--state: '%1' cannot be written: %2; give another file").arg(path, reason));
    throw Unwritable(
        Tr("watch", "'%1' cannot be written: %2; free the disk, or give this user the permission")
            .arg(path, reason));
}

// What is written to a file without a name is lost with the process, and another process may be at work with
// a journal of its own meanwhile.
void WatchJournal::Save(const Entries& changed)
{
    const Place place = FindPlace();
    if (place == Place::Other)
        throw Taken(Tr("watch", "another file has taken the place of '%1'; start again").arg(path));
    if (place == Place::Unknown)
        FailToWrite(explain::SystemText(errno));
    bool isDamaged = false;
    try {
        if (place == Place::Own && !(changed.isEmpty() && unwrittenTasks.isEmpty())) {
            if (!database)
                database = Connected();
            database->Together([&] { journaltables::Write({*database}, {changed, unwrittenTasks}); });
        }
    } catch (const sql::Failure& failure) {
        isDamaged = failure.trouble == sql::Trouble::Damaged;
        if (!isDamaged)
            FailToWrite(failure.Message());
    }
    if (place == Place::Empty || isDamaged)
        MakeAnew(changed);
}

// Writes a new file, which then replaces the old one: a crash leaves one or the other.
void WatchJournal::MakeAnew(const Entries& changed)
{
    const QString fresh = path + QStringLiteral(".new");
    Discard(fresh);
    systemfile::Descriptor own = Claimed(fresh, O_EXCL);
    database.reset();
    try {
        sql::Sqlite made(fresh);
        made.Together([&] {
            journaltables::Create(made);
            journaltables::Write({made}, {entries, tasks});
            journaltables::Write({made}, {changed, unwrittenTasks});
        });
    } catch (const sql::Failure& failure) {
        Discard(fresh);
        FailToWrite(failure.Message());
    }
    const QString undo =
        path + QStringLiteral("-journal"); // of the old file; it would be used on the new one
    int error =
        QFile::remove(undo) || !systemfile::IsTaken(undo) ? systemfile::RenameToFree(fresh, path) : EIO;
    if (error == EEXIST && FindPlace() == Place::Own)
        error = std::rename(QFile::encodeName(fresh).constData(), QFile::encodeName(path).constData()) == 0
                    ? 0
                    : errno;
    if (error != 0) {
        Discard(fresh);
        if (error == EEXIST)
            throw Taken(Tr("watch", "another file has taken the place of '%1'; start again").arg(path));
        FailToWrite(explain::SystemText(error));
    }
    file = std::move(own);
    systemfile::Sync(QFileInfo(path).absolutePath());
}

void WatchJournal::ForgetGivenUp()
{
    for (Entry& entry : entries) {
        if (entry.verdict == Verdict::GivenUp)
            entry = {entry.print, Verdict::Withdrawn, {}, {}, entry.noted, entry.unended};
    }
    for (Task& task : tasks) {
        if (task.state == Task::State::GivenUp)
            task = {task.file, task.input, task.noted};
    }
}

void WatchJournal::ForgetGone()
{
    QSet<QString> inUse; // directories
    QStringList gone;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        if (QFileInfo::exists(entry.key()))
            inUse.insert(QFileInfo(entry.key()).path());
        else
            gone << entry.key();
    }
    for (const QString& first : gone) {
        if (inUse.contains(QFileInfo(first).path())) {
            entries.remove(first);
            unwritten[first] = {QByteArray(), Verdict::PutAway};
        }
    }
}

WatchJournal::Contents WatchJournal::Stored() const
{
    if (!database) // it has just been written anew
        return {entries, tasks};
    Contents stored;
    journaltables::Read({*database}, stored);
    return stored;
}

WatchJournal::Contents WatchJournal::TakeNews()
{
    isNewsWanted = true;
    return std::exchange(news, {});
}

void WatchJournal::LetGo()
{
    file = systemfile::Descriptor();
}
