// Processes that write records, and their recordings, into a catalogue as they are made.
//
// The library has one converter in a process, and what finds out what happened in a recording needs one of
// its own. A recording that brings down the process that looks at it does so there.
#pragma once

#include "zucmtr/archive/look.h"
#include "zucmtr/run/recordkeeper.h"

#include <condition_variable>
#include <mutex>
#include <vector>

namespace archive {

class Scribes : public RecordKeeper
{
public:
    /// Starts the processes; they end with this object, or when the program ends, however that happens. To be
    /// called before threads are started and before there is a Host. The catalogue is opened when the first
    /// record comes. Throws text::Error if no process can be started.
    Scribes(const QString& catalogue, const Reading& reading, size_t count);
    ~Scribes() override;
    Scribes(const Scribes&) = delete;
    Scribes& operator=(const Scribes&) = delete;

    QString Keep(const KeptRecord& record) override;

private:
    struct Scribe
    {
        int process = 0;
        int line = -1; // a socket
        bool isFree = true;
    };

    void Start(const QString& catalogue, const Reading& reading);

    std::mutex mutex;
    std::condition_variable freed;
    std::vector<Scribe> scribes;
};

} // namespace archive
