// The conversion that a worker is doing.
#pragma once

#include "output/temporarydirectory.h"
#include "salvage/plan.h"
#include "zucmtr/files/chainfiles.h"
#include "zucmtr/files/staging.h"
#include "zucmtr/files/systemfile.h"
#include "zucmtr/run/worker.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

struct Worker::Job
{
    /// For the item's recording and directory. If the worker is to salvage, a damaged recording is replaced
    /// by a copy of what is whole of it.
    Job(Worker& worker, const BatchItem& item);

    bool HasCopy() const { return copy != nullptr; }

    /// A text about the copy, as one about the recording.
    QString AboutOriginal(QString text) const;

    /// Paths of the recording's first files, for those of what is converted.
    QStringList Originals(const QStringList& converted) const;

    const ChainFiles chain;
    const QString directory; // of the final names
    QString source;          // first file of what is converted: the recording or the copy
    Devices* devices;        // that convert it
    std::unique_ptr<output::TemporaryDirectory>
        copy;                          // of what is whole; null: the recording itself is converted
    std::optional<salvage::Loss> loss; // of a damaged recording
    bool isHopeless = false;           // it is damaged, and nothing of it is whole
    std::unique_ptr<Staging> staging;
    bool mayLackRoom = false;                // the record was not written, or not right
    bool isDoubtful = false;                 // what failed may succeed now, such as reading a file
    bool lackedMemory = false;               // it was the library that did, for a file of the chain
    bool pageIsBeside = false;               // it is written to its own name at once
    QString leftOut;                         // a file of the recording that is not in the record
    QString checkedName;                     // name of the record whose files were checked at the final names
    std::vector<systemfile::Identity> found; // what was there
};
