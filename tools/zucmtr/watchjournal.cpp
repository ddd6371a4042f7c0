#include "watchjournal.h"

#include "command.h"
#include "texts.h"

#include <QDir>
#include <QFileInfo>

#include <sys/file.h>
#include <unistd.h>

namespace {

// A line is "C", "G" and the print, a blank, and the path with line ends and "%" as %XX.
constexpr char convertedMark = 'C';
constexpr char givenUpMark = 'G';
constexpr int printSize = 40;

QString PathOf(const QString& recording)
{
    return QDir::cleanPath(QFileInfo(recording).absoluteFilePath());
}

} // namespace

WatchJournal::WatchJournal(const QString& path) : file(path)
{
    Open();
    Read();
}

void WatchJournal::Open()
{
    if (!file.open(QIODevice::ReadWrite))
        throw ConfigurationError(
            Tr("watch", "--state: '%1' cannot be written: %2").arg(file.fileName(), file.errorString()));
    if (flock(file.handle(), LOCK_EX | LOCK_NB) != 0)
        throw ConfigurationError(
            Tr("watch", "--state: another 'zucmtr watch' works with '%1'; end it, or give another file")
                .arg(file.fileName()));
}

void WatchJournal::Read()
{
    while (!file.atEnd()) {
        const QByteArray line = file.readLine();
        if (!line.endsWith('\n') || line.size() < printSize + 3)
            continue;
        const Verdict verdict = line[0] == convertedMark ? Verdict::Converted : Verdict::GivenUp;
        const QByteArray path = QByteArray::fromPercentEncoding(line.mid(printSize + 2).chopped(1));
        entries.insert(QString::fromUtf8(path), {line.mid(1, printSize), verdict});
    }
}

WatchJournal::Verdict WatchJournal::VerdictOn(const QString& recording, const QByteArray& print) const
{
    const auto entry = entries.constFind(PathOf(recording));
    return entry == entries.constEnd() || entry->print != print ? Verdict::Unknown : entry->verdict;
}

QByteArray WatchJournal::LineOf(const QString& recording, const Entry& entry)
{
    QByteArray path = recording.toUtf8();
    path.replace('%', "%25").replace('\n', "%0A").replace('\r', "%0D");
    return (entry.verdict == Verdict::Converted ? convertedMark : givenUpMark) + entry.print + ' ' + path +
           '\n';
}

void WatchJournal::Append(const QByteArray& bytes)
{
    // Behind a line that was cut off a new one begins.
    const qint64 size = file.size();
    QByteArray text = bytes;
    if (size > 0 && file.seek(size - 1) && file.read(1) != "\n")
        text.prepend('\n');
    const bool written = file.seek(size) && file.write(text) == text.size() && file.flush();
    if (!written || fdatasync(file.handle()) != 0)
        throw std::runtime_error(Tr("watch", "'%1' cannot be written: %2; free the disk")
                                     .arg(file.fileName(), file.errorString())
                                     .toStdString());
}

void WatchJournal::Note(const QString& recording, const QByteArray& print, Verdict verdict)
{
    const QString path = PathOf(recording);
    const Entry entry{print, verdict};
    Append(LineOf(path, entry));
    entries.insert(path, entry);
}

void WatchJournal::DropGone()
{
    QByteArray kept;
    int gone = 0;
    for (auto entry = entries.begin(); entry != entries.end();) {
        if (QFileInfo::exists(entry.key())) {
            kept += LineOf(entry.key(), *entry);
            ++entry;
        } else {
            entry = entries.erase(entry);
            ++gone;
        }
    }
    if (gone <= entries.size())
        return;
    // In a new file that takes the old one's place: a crash leaves one or the other.
    QFile fresh(file.fileName() + QStringLiteral(".new"));
    const bool written = fresh.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                         fresh.write(kept) == kept.size() && fresh.flush() && fdatasync(fresh.handle()) == 0;
    fresh.close();
    if (!written || rename(QFile::encodeName(fresh.fileName()).constData(),
                           QFile::encodeName(file.fileName()).constData()) != 0) {
        fresh.remove();
        return; // the long journal is as good
    }
    file.close();
    Open();
}
