// Reads a written record back and compares it with its recording: every sample, state, time and coefficient.
//
// The recording is read by the library's recording classes, the record by the COMTRADE reader; what the
// record must hold is computed here, independently of the writers.
#pragma once

#include "salvage/plan.h"
#include "verify/device.h"
#include "verify/mismatch.h"
#include "verify/ownrecord.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace verify {

class Source;

/// What a recording is, found without converting it.
struct Examined
{
    QString recordName; // without directory and extension
    QStringList files;  // of the chain, the first file first
    QStringList notes;
    qint64 mostRecordSize = 0; // bytes that the record can take on a disk
};

/// A recording, and the record that has its name.
struct Presence
{
    Standing standing;
    Examined examined;
};

/// Verifies the conversions of one converter's device, in their order: the channel order of a recording can
/// depend on the one before it. For one thread at a time.
class Verifier
{
public:
    /// The sections of the ini file from which the converter made its device. Throws Unreadable.
    Verifier(const QString& ini, const QString& defaults, const QString& section);

    const Device& Parameters() const { return device; }

    /// Compares the record in directory with the recording that starts with firstFile. Its files are called
    /// recordName; empty: as the library calls them. Throws Mismatch, or Unreadable if the recording cannot
    /// be read (any longer), or what the reader and the recording classes throw.
    Examined Check(const QString& firstFile, const QString& directory, const QString& recordName = QString());

    /// Finds out what directory holds under the name of the recording's record, likewise. Whatever is there
    /// is an answer; a recording that cannot be read throws as in Check, and so does running out of memory.
    Presence Find(const QString& firstFile, const QString& directory, const QString& recordName = QString());

    /// Which of the recording's channels are in the record that directory holds under the name, by the names
    /// of the channels. Nothing if it has all, none or another's, and if its configuration cannot be read.
    /// Throws as Find.
    std::optional<salvage::Choice> ChannelsThere(const QString& firstFile, const QString& directory,
                                                 const QString& recordName);

    /// Names the lost channels of which the recording has nothing left, if the sorting dictionary has just as
    /// many further ones.
    void NameLost(salvage::Plan& plan) const;

    /// Lines of an ini file that empty the entries of the sorting dictionary for channels that are not among
    /// the chosen ones of the first file. Empty if there are none.
    QString KeysWithout(const salvage::Choice& choice, const salvage::Segment& first) const;

    /// Reads a recording and nothing else. To be called for each recording that the converter could not
    /// finish, and for those that are not verified. Throws Unreadable.
    Examined Examine(const QString& firstFile);

private:
    Device device;
};

/// Reads a record to its end when its recording is gone: the record is whole and readable, whatever it says.
/// Throws Mismatch, and what the reader throws.
void ReadThrough(const QString& recordName, const QString& directory, const Device& device);

} // namespace verify
