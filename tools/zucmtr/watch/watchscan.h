// What lies in the watched directories: recordings with all their files.
#pragma once

#include "zucmtr/host/recordinglist.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

/// The state of a recording's files. Nothing in it comes from their content.
struct Fingerprint
{
    enum class State {
        There,
        Gone,   // the first file
        Unknown // one of the files could not be looked at, now; print and access are empty
    };
    State state = State::Unknown;
    QByteArray print;  // of names, sizes and times of change: another one if the recording may be another
    QByteArray access; // of modes and times of the last change to them: another one if it may be readable now
    QByteArray modes;  // of modes alone
};

/// The fingerprint of a recording as it lies there now.
Fingerprint FingerprintOf(const QString& firstFile);

/// A recording as it lies there now.
struct Chain
{
    Recording recording;
    Fingerprint fingerprint;
};

struct Scan
{
    std::vector<Chain> chains;       // by path; not those that are gone again
    QStringList directories;         // that were looked into, absolute
    std::vector<Refusal> unreadable; // directories, and recordings whose names no program text can hold
};

/// Looks through the directories, with `recursive` also below them, but not into the excluded ones.
Scan ScanDirectories(const QStringList& directories, bool recursive, const QStringList& excluded);
