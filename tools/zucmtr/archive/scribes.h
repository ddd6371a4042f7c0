// Processes that write records, and their recordings, into a catalogue as they are made.
//
// The library has one converter in a process, and what finds out what happened in a recording needs one of
// its own. A recording that brings down the process that looks at it does so there.
#pragma once

#include "zucmtr/archive/look.h"
#include "zucmtr/run/recordkeeper.h"
#include "zucmtr/run/sideprocess.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

namespace archive {

class Scribes : public RecordKeeper
{
public:
    /// Starts the processes (SideProcess). To be called before threads are started and before there is a
    /// Host. The catalogue is opened when the first record comes. Throws text::Error if no process can be
    /// started.
    Scribes(const QString& catalogue, const Reading& reading, size_t count);

    QString Keep(const KeptRecord& record) override;

private:
    struct Place
    {
        std::unique_ptr<SideProcess> process;
        bool isFree = true;
    };

    std::mutex mutex;
    std::condition_variable freed;
    std::vector<Place> scribes;
};

} // namespace archive
