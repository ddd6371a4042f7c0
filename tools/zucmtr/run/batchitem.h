// What became of one recording of a run.
#pragma once

#include "text/reasons.h"
#include "zucmtr/host/recordinglist.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

enum class ItemState {
    Converted, // its record is written
    Present,   // its record was there already and is right
    Planned,   // it could be converted; nothing is written in a dry run
    Failed
};

enum class SourceFate { Kept, Removed, Archived };

/// What has to be put right before a failed recording can succeed.
enum class Blame {
    Recording, // it, or what lies at its record's name
    Memory,    // not enough of it
    Input,     // the directory of the recording: it cannot be put away
    Output,    // the directory of the records: missing, not writable, or its disk full
    Archive,   // the same for the archive
    Catalogue  // it cannot be written
};

struct BatchItem
{
    Recording recording;
    ItemState state = ItemState::Failed;
    QString error;                           // of a failed one: what is wrong and what to do
    const char* reason = reason::Unexpected; // of the error
    Blame blame = Blame::Recording;          // of the error
    bool noRoom = false;                     // because a disk is full
    QString recordName;    // without directory and extension; may be unknown for a failed one
    QString directory;     // of the record
    QString form;          // of the record: words as the options of convert have them, with blanks between
    QStringList files;     // paths of the record's files
    QStringList sources;   // paths of the recording's files, as far as they are known
    QStringList notes;     // of the library, and of the program
    bool leftOut = false;  // a file of the recording is bad, and is not in the record
    bool written = false;  // by this run, whether it is right or not
    bool verified = false; // the record was compared with the recording, and is right
    SourceFate fate = SourceFate::Kept;
    double seconds = 0;
    QString summary;  // what happened, as JSON; empty: it was not asked for, or cannot be found out
    QString salvaged; // what was saved of a damaged one, for people; empty: it is whole, or failed
    QString loss;     // the same as JSON

    /// Marks it as failed. word is one of those in reasons.h.
    void Fail(const char* word, const QString& text);
};

/// Calls visit with each field of an item, always in the same order. As all fields are named here, one that
/// is added to BatchItem alone does not compile.
template <class Item, class Visitor>
void ForEachField(Item& item, const Visitor& visit)
{
    auto& [recording, state, error, reason, blame, noRoom, recordName, directory, form, files, sources, notes,
           leftOut, written, verified, fate, seconds, summary, salvaged, loss] = item;
    auto& [path, top, below] = recording;
    const auto all = [&visit](auto&... fields) { (visit(fields), ...); };
    all(path, top, below, state, error, reason, blame, noRoom, recordName, directory, form, files, sources,
        notes, leftOut, written, verified, fate, seconds, summary, salvaged, loss);
}

/// The item as it is reported to programs; docs/json.md lists the keys.
QJsonObject JsonOf(const BatchItem& item);
