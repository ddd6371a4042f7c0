// The conversion that a worker is doing.
#pragma once

#include "zucmtr/files/chainfiles.h"
#include "zucmtr/files/staging.h"
#include "zucmtr/files/systemfile.h"
#include "zucmtr/run/worker.h"

#include <QString>

#include <memory>
#include <vector>

struct Worker::Job
{
    Job(const QString& file, const QString& directory_) : chain(file), directory(directory_) {}

    const ChainFiles chain;
    const QString directory; // of the final names
    std::unique_ptr<Staging> staging;
    bool mayLackRoom = false;                // the record was not written, or not right
    bool isDoubtful = false;                 // what failed may succeed now, such as reading a file
    bool lackedMemory = false;               // it was the library that did, for a file of the chain
    bool pageIsBeside = false;               // it is written to its own name at once
    QString leftOut;                         // a file of the recording that is not in the record
    QString checkedName;                     // name of the record whose files were checked at the final names
    std::vector<systemfile::Identity> found; // what was there
};
