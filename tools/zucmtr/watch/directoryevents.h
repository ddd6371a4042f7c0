// Notices through the system (inotify) that something happens in directories. The system limits how many
// directories it watches; events in the others go unnoticed.
#pragma once

#include "zucmtr/files/systemfile.h"

#include <QSet>
#include <QStringList>

#include <chrono>
#include <vector>

class DirectoryEvents
{
public:
    DirectoryEvents();

    /// Watches these directories and no others. True if one of them was not watched before: what happened in
    /// it until now went unnoticed.
    bool Watch(const QStringList& directories);

    /// How many of them the system does not watch because its limit is reached.
    int Unwatched() const { return unwatched; }

    /// Waits until something happens, a signal arrives or the time is over. True if something has happened.
    /// others: further descriptors to wait for, -1 is none; isOtherReady is set to true if one can be read.
    bool Wait(std::chrono::milliseconds time, const std::vector<int>& others, bool& isOtherReady);

private:
    systemfile::Descriptor queue;
    QSet<int> watches;
    int unwatched = 0;
};
