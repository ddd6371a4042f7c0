// A recording in one directory, an archive in another, and the kinds of file systems that they may be on.
#pragma once

#include "calls.h"

#include "support/files.h"
#include "zucmtr/files/sourcefiles.h"

#include <functional>
#include <vector>

/// How the files are put away, and which calls the file system does not support.
struct Way
{
    const char* name;
    bool archive;                                     // else they are removed
    std::vector<std::pair<const char*, int>> unknown; // calls, with the errno that they fail with
};

/// All of them. linkat is the call from one directory to the other.
const std::vector<Way>& Ways();

void PrintTo(const Way& way, std::ostream* out);

class Scene
{
public:
    /// a.ZU with continuations.
    explicit Scene(int continuations);

    QString Source(const QString& name = QString()) const
    {
        return directory.Path(name.isEmpty() ? "in" : "in/" + name);
    }
    QString Archive(const QString& name = QString()) const
    {
        return directory.Path(name.isEmpty() ? "done" : "done/" + name);
    }
    QStringList Sources() const { return directory.Names("in"); }
    QStringList Archived() const { return directory.Names("done"); }
    const QStringList& Names() const { return names; } // of the recording's files

    /// What one of the recording's files holds.
    static QByteArray Content(const QString& name);

    /// Opens the recording and puts it away. The hook is asked before each call that the file system of `way`
    /// supports.
    void PutAway(const Way& way, const calls::Hook& hook = nullptr) const;

    /// The same; returns the text of the error, or an empty one.
    QString TextOfPutAway(const Way& way, const calls::Hook& hook = nullptr) const;

    /// The same in a process that ends before call `nth`, counted from 1; false if it ran to its end.
    bool PutAwayAndKill(const Way& way, long nth) const;

    /// What a new run starts with: Recover in both places.
    sourcefiles::Recovered Recover() const;

    /// Whether all files of the recording are here and nothing else.
    bool IsComplete(const QString& folder) const;

    /// Whether the recording was put away in this way, with nothing left over.
    bool IsPutAway(const Way& way) const;

private:
    TestDirectory directory;
    QStringList names;
};

/// The error's text; empty if there is none.
QString TextOf(const std::function<void()>& action);
