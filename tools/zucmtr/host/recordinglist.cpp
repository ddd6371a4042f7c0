#include "zucmtr/host/recordinglist.h"

#include "base/chainnames.h"
#include "text/reasons.h"
#include "text/texts.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>

namespace {

// Without links, as far as the path is there.
QString Canonical(const QString& path)
{
    const QFileInfo info(Normalised(path));
    QString canonical = info.canonicalFilePath();
    if (!canonical.isEmpty() || info.isRoot())
        return canonical;
    return Canonical(info.path()) + QLatin1Char('/') + info.fileName();
}

bool LiesIn(const QString& path, const QString& directory)
{
    return path == directory || path.startsWith(directory + QLatin1Char('/'));
}

bool IsUtf8(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes).toUtf8() == bytes;
}

bool IsDirectory(const QByteArray& path)
{
    struct stat status = {};
    return lstat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

// Qt does not list these names at all, so that nobody would notice the recordings.
std::vector<QByteArray> NamesNotUtf8(const QString& directory)
{
    std::vector<QByteArray> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> listed(opendir(QFile::encodeName(directory).constData()),
                                                     closedir);
    if (!listed)
        return names;
    while (const dirent* entry = readdir(listed.get())) {
        if (!IsUtf8(entry->d_name))
            names.emplace_back(entry->d_name);
    }
    return names;
}

class Collector
{
public:
    Collector(const QStringList& arguments_, bool recursive_, const QStringList& excludedDirectories)
        : arguments(arguments_), recursive(recursive_)
    {
        for (const QString& argument : arguments)
            given.insert(Normalised(argument));
        for (const QString& directory : excludedDirectories)
            excluded << Canonical(directory);
    }

    RecordingList Collect()
    {
        for (const QString& argument : arguments) {
            if (QFileInfo(argument).isDir())
                AddDirectory(argument);
            else
                AddFile(argument);
        }
        return std::move(list);
    }

private:
    void Refuse(const QString& path, const char* reason, const QString& text)
    {
        list.refusals.push_back({path, text, true, reason});
    }

    // Leaves out a path without losing a recording.
    void PassOver(const QString& path, const QString& text)
    {
        list.refusals.push_back({path, text, false, nullptr});
    }

    void Add(const Recording& recording)
    {
        const int before = taken.size();
        taken.insert(Normalised(recording.path));
        if (taken.size() > before)
            list.recordings.push_back(recording);
    }

    void AddFile(const QString& path)
    {
        const QString first = zu::FirstFileOf(path);
        if (first.isEmpty())
            Add({path, QString(), QString()});
        else if (IsGiven(first))
            PassOver(path,
                     Tr("recordings", "passed over, it is converted with its first file %1").arg(first));
        else
            Refuse(path, reason::ContinuationFile,
                   Tr("recordings", "not converted: %1").arg(ContinuationText(path)));
    }

    // Whether a first file is among the arguments, or in a directory of theirs.
    bool IsGiven(const QString& first) const
    {
        return given.contains(Normalised(first)) ||
               (QFileInfo::exists(first) && given.contains(Normalised(QFileInfo(first).path())));
    }

    bool IsExcluded(const QString& directory) const
    {
        const QString path = excluded.isEmpty() ? QString() : Canonical(directory);
        return std::any_of(excluded.begin(), excluded.end(),
                           [&](const QString& other) { return LiesIn(path, other); });
    }

    void AddDirectory(const QString& directory)
    {
        QStringList paths;
        if (!LookInto(directory, paths))
            return;
        if (recursive)
            LookBelow(directory, paths);
        paths.sort();
        if (paths.isEmpty())
            PassOver(directory, recursive
                                    ? Tr("recordings", "there is no recording (.ZU) in this directory")
                                    : Tr("recordings", "there is no recording (.ZU) in this directory; "
                                                       "--recursive searches the directories below it, too"));
        const QDir top(Normalised(directory));
        for (const QString& path : paths) {
            const QString below = QFileInfo(top.relativeFilePath(Normalised(path))).path();
            Add({path, directory, below == QLatin1String(".") ? QString() : below});
        }
    }

    // Takes the first files of a directory and reports what in it cannot be read; false if nothing in it can.
    bool LookInto(const QString& directory, QStringList& paths)
    {
        const QString absolute = Normalised(directory);
        if (IsExcluded(absolute))
            return true;
        if (!QFileInfo(absolute).isReadable()) {
            Refuse(directory, reason::NoPermission,
                   Tr("recordings",
                      "not converted: no permission to read this directory; check its permissions"));
            return false;
        }
        list.directories << absolute;
        RefuseNamesNotUtf8(directory);
        QDirIterator files(directory, zu::FirstFilePatterns(), QDir::Files | QDir::CaseSensitive);
        while (files.hasNext())
            paths << files.next();
        return true;
    }

    void RefuseNamesNotUtf8(const QString& directory)
    {
        for (const QByteArray& entry : NamesNotUtf8(directory)) {
            const QString shown = directory + QLatin1Char('/') + QString::fromUtf8(entry);
            if (zu::IsFirstFileName(QString::fromLatin1(entry)))
                Refuse(shown, reason::NameNotUtf8,
                       Tr("recordings", "not converted: the name is not UTF-8; rename the file"));
            else if (recursive && IsDirectory(QFile::encodeName(directory) + '/' + entry))
                Refuse(shown, reason::NameNotUtf8,
                       Tr("recordings", "not converted: the name is not UTF-8; rename the directory"));
        }
    }

    void LookBelow(const QString& directory, QStringList& paths)
    {
        QDirIterator below(directory, QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks,
                           QDirIterator::Subdirectories);
        while (below.hasNext())
            LookInto(below.next(), paths);
    }

    const QStringList arguments;
    const bool recursive;
    QSet<QString> given;  // arguments, normalised
    QStringList excluded; // without links
    QSet<QString> taken;  // recordings, normalised
    RecordingList list;
};

} // namespace

QString Normalised(const QString& path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

QString ContinuationText(const QString& path)
{
    const QString first = zu::FirstFileOf(path);
    if (QFileInfo::exists(first) || !QFileInfo::exists(path))
        return Tr("recordings", "it continues a recording; give the first file %1 instead").arg(first);
    return Tr("recordings", "it continues a recording whose first file %1 is not there; bring that back")
        .arg(first);
}

RecordingList CollectRecordings(const QStringList& arguments, bool recursive, const QStringList& excluded)
{
    return Collector(arguments, recursive, excluded).Collect();
}
