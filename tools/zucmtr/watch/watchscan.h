// What is in the watched directories: recordings with all their files.
#pragma once

#include "zucmtr/host/recordinglist.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

/// The state of a recording's files. Nothing in it is computed from their content.
struct Fingerprint
{
    enum class State {
        There,
        Gone,   // the first file
        Unknown // one of the files could not be checked just now; print and access are empty
    };
    State state = State::Unknown;
    QByteArray print;  // of names, sizes and times of change: differs if the recording may have changed
    QByteArray access; // of modes and the times they changed: differs if the files may be readable now
    QByteArray modes;  // of modes only
};

/// The fingerprint of a recording as it is now.
Fingerprint FingerprintOf(const QString& firstFile);

/// A recording as it is now.
struct Chain
{
    Recording recording;
    Fingerprint fingerprint;
};

struct Scan
{
    std::vector<Chain> chains;       // by path, without those that are already gone again
    QStringList directories;         // that were scanned, absolute
    std::vector<Refusal> unreadable; // directories, and recordings whose names are not valid text
};

/// Scans the directories, with `recursive` also those below them, but not the excluded ones.
Scan ScanDirectories(const QStringList& directories, bool recursive, const QStringList& excluded);
