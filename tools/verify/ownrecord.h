// Whose record it is that has the name already.
//
// Two recordings can have the same name: those of two recorders with the same settings, or of the same time
// after the clock was set back. Their records differ nearly everywhere, while a record of the same recording
// has its stamps and its samples, whatever the settings were. Of the two possible mistakes, replacing
// another's record loses it, not replacing this recording's own costs a question: in doubt it is another's.
#pragma once

#include <QString>

namespace verify {

class Source;

enum class RecordState {
    Absent,     // no file of a record has the name
    Same,       // the record verifies as it stands
    Own,        // this recording's: made with other settings, of fewer of its files, or damaged
    Unfinished, // this recording's as far as it goes: without a configuration, or without all of its data
    Longer,     // starts like this recording and goes on: files of the recording are missing
    Foreign     // another recording's, or unreadable
};

struct Standing
{
    RecordState state = RecordState::Absent;
    QString reason; // why it is not Same, for people; may be empty for Absent and Unfinished
};

/// What the files in directory are that are called recordName, for the recording; Same is not distinguished
/// from Own. The record in the form of the device counts, separate files or a CFF file; one in the other form
/// only where that is absent. Reads no more than the recording can fill. Nothing is thrown but
/// std::bad_alloc.
///
/// A record is the recording's if its stamps are, if it has as many channels and no more samples, and if its
/// columns hold the samples of the recording's channels, in whatever order. At most one value in a thousand,
/// of all and of each channel, may differ: those are damaged bits. If the configuration cannot be read, the
/// data decide.
///
/// After a power failure there may be zeros in place of what was not written, anywhere in the files. Then all
/// that is written of the data, and at least one whole record, must be the recording's; a stamp that is left
/// of the configuration, too. Without data the stamps decide, or the first lines, which are the same for all
/// recordings of a recorder: so not in a container that has anything after a hole that may hide the mark of
/// its data.
Standing StandingOf(const Source& source, const QString& directory, const QString& recordName);

} // namespace verify
