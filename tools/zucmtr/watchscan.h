// What lies in the watched directories: recordings with all their files.
#pragma once

#include "recordinglist.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

/// A recording as it lies there now.
struct Chain
{
    Recording recording;
    QByteArray print; // of the names, sizes and times of its files: another one if any of them changes
};

struct Scan
{
    std::vector<Chain> chains;       // by path
    QStringList directories;         // that were looked into
    std::vector<Refusal> unreadable; // directories, and recordings whose names no program text can hold
};

/// Looks through the directories, with `recursive` also below them, but not into the excluded ones.
Scan ScanDirectories(const QStringList& directories, bool recursive, const QStringList& excluded);

/// The print of a recording as it lies there now; empty if its first file is gone.
QByteArray PrintOf(const QString& firstFile);
