// Converts recordings one after the other on one device of the library, verifies the records and puts the
// recordings away.
#pragma once

#include "zucmtr/host/devicechoice.h"
#include "zucmtr/host/host.h"
#include "zucmtr/host/recordform.h"
#include "zucmtr/host/recordlayout.h"
#include "zucmtr/run/batchitem.h"
#include "zucmtr/run/recordkeeper.h"

#include "analysis/linedata.h"
#include "salvage/plan.h"
#include "verify/verifier.h"
#include "view/view.h"

#include <QSet>

#include <map>
#include <memory>

struct WorkOrder
{
    QString out;              // directory of the records
    bool dryRun = false;      // read the recordings, write nothing
    bool verify = true;       // compare each record with its recording
    bool trustWriter = false; // the ini file may delete recordings: records are read, not compared
    bool view = false;        // write a page beside each record
    bool events = false;      // write what happened beside each record
    bool summary = false;     // find out what happened, for the report
    analysis::Lines lines;    // for these three
    QString lineFile;         // path of the file that has them; empty: none
    RecordForm form;          // of the records, over the ini file
    bool removeSource = false;
    QString archive;      // directory for the recordings; empty: none
    bool sync = false;    // records are on the disk when their work is done; always where recordings go
    bool again = false;   // convert even if the right record is already there
    bool replace = false; // even if the name belongs to another recording's record
    bool salvage = false; // of a damaged recording convert what is whole
    bool mirror = false;  // out and archive get the directories that the recordings have below `top`
    RecordKeeper* keeper = nullptr; // gets each record that is in its place
    RecordLayout layout; // of out, if it is given: instead of these directories and the library's names
};

/// For one thread at a time. Different workers may work at once.
class Worker
{
public:
    /// device is a device of the library, made from choice, and used by this worker alone; own_ is the choice
    /// of the user, of which that one is a copy in the form of the order. Throws ConfigurationError.
    Worker(Host& host_, unsigned int device, const DeviceChoice& choice, DeviceChoice own_, WorkOrder order_);

    /// Where the recording's record will be below the order's directory; without a name if the recording
    /// cannot be read.
    RecordPlace PlaceOf(const Recording& recording) const;

    /// Whether the ini file has the library delete the recordings.
    bool LibraryDeletes() const;

    /// How long the ini file says to wait for a recording to be complete, milliseconds.
    unsigned int WaitTime() const { return Host::WaitTime(usual.device); }

    /// From now on another order, of records of the same form.
    void Follow(const WorkOrder& next);

    /// Does everything that the order says with one recording. Nothing is thrown.
    BatchItem Work(const Recording& recording);

private:
    // The devices that convert and compare with one ini file.
    struct Devices
    {
        Devices(unsigned int device_, const DeviceChoice& choice);
        const unsigned int device; // of the library
        verify::Verifier verifier;
        verify::Verifier present; // for records that were there before
    };

    // A conversion in progress: the recording's files, and the record before it has its final names.
    struct Job;

    bool PutsAway() const { return order.removeSource || !order.archive.isEmpty(); }
    BatchItem TryOnce(const Recording& recording);
    void Try(BatchItem& item);
    void Plan(BatchItem& item);
    void PlanFrom(BatchItem& item, Devices& devices, const QString& source);
    void Prepare(const QString& directory);
    void ConvertUnseen(BatchItem& item, const Job& job);
    void Do(BatchItem& item, Job& job);
    void ConvertAgain(BatchItem& item);
    static bool CanBeRead(const QString& file, Devices& devices, const QString& source);
    static qint64 MostRecordSize(const Job& job);
    void MakeDirectory(const QString& directory);
    bool IsForeignThere(BatchItem& item, Job& job);
    bool TakePresent(BatchItem& item, Job& job);
    bool MayReplace(BatchItem& item, const verify::Presence& presence) const;
    bool Convert(BatchItem& item, Job& job);
    bool Verify(BatchItem& item, Job& job);
    bool FindSources(BatchItem& item, Job& job);
    bool CheckEnd(BatchItem& item, Job& job) const;
    static bool CheckCopysEnd(BatchItem& item, Job& job);
    static void ReportLoss(BatchItem& item, const Job& job);
    static verify::Presence FindThere(const Job& job, const QString& name);
    static bool IsPartThere(const Job& job, const verify::Presence& presence, const QString& name);
    Devices& DevicesFor(const salvage::Choice& choice, const salvage::Segment& first);
    bool CheckUnchanged(BatchItem& item, Job& job) const;
    QStringList WritePieces(Job& job, const QString& recordName, QString& pageError) const;
    bool Commit(BatchItem& item, Job& job);
    view::Options PageOptions(const QString& recording) const;
    void WritePageBeside(BatchItem& item) const;
    void Summarise(BatchItem& item, const QString& directory, const QString& configuration,
                   QString& error) const;
    QString AddEvents(BatchItem& item, Job& job, QStringList& names) const;
    void WriteEventsBeside(BatchItem& item) const;
    void WriteFurtherBeside(BatchItem& item) const;
    void SyncPresent(BatchItem& item);
    void Keep(BatchItem& item) const;
    void KeepAway(BatchItem& item) const;
    QString ArchiveOf(const Recording& recording) const;
    void PutAway(BatchItem& item, Job& job);
    void Name(BatchItem& item, const QString& recordName) const;
    QString BelowOf(const Recording& recording) const;
    void TakeName(BatchItem& item, Job& job, const QString& libraryName) const;

    Host& host;
    const DeviceChoice own;
    WorkOrder order;
    Devices usual;
    std::map<QString, std::unique_ptr<Devices>> narrowed; // of ini files with further keys
    QSet<QString> cleaned; // directories already cleared of what killed runs left
    QSet<QString> onDisk;  // directories of records whose names are on the disk, up to that of the order
};
