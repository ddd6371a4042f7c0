// A COMTRADE record to work on, whatever the user has: the record itself, or a recording that is converted
// into a temporary directory. The recording stays as it is, even if its ini file says that sources are to be
// deleted.
#pragma once

#include "output/temporarydirectory.h"
#include "text/error.h"
#include "zucmtr/host/devicechoice.h"

#include <QByteArray>
#include <QString>

#include <memory>

class ChangedIni;
class Host;

/// A recording that cannot be converted.
class SourceError : public text::Error
{
public:
    using text::Error::Error;
};

/// Throws SourceError if the file could not be written.
void CheckIsWritten(const output::TemporaryFile& file);

/// Throws SourceError unless the file may be the first file of a recording.
void CheckRecording(const QString& file);

/// The choice for a recording that is only read: completed as convert does; empty if nothing is chosen and no
/// ini file is found, or with isPlain. Throws ConfigurationError.
DeviceChoice ChoiceForReading(const QString& file, DeviceChoice choice, bool isPlain);

/// An ini file for a recording of which nothing but its name is known, and its sections; the path is left
/// open.
QByteArray NamelessIni(const QString& file);
DeviceChoice NamelessChoice();

/// Loads the device, so that a failure is explained with the name of the user's own ini file. Throws
/// ConfigurationError.
unsigned int LoadDevice(Host& host, const ChangedIni& ini);

/// Converts recordings into temporary records, one after the other: what was loaded for one serves those
/// after it. The recordings stay as they are. As there is one Host at a time, there is one of these at work.
class RecordMaker
{
public:
    struct Made
    {
        QString record; ///< path of its .cfg
        QString ini;    ///< that was used; empty: there is none
    };

    RecordMaker();
    ~RecordMaker();
    RecordMaker(const RecordMaker&) = delete;
    RecordMaker& operator=(const RecordMaker&) = delete;

    /// The choice is completed as ChoiceForReading does. Recordings without an ini file share one that is
    /// made up: their records have the name of the first of them as their station. The record is there until
    /// the next call and as long as this object lives. Throws SourceError, or ConfigurationError if the
    /// choice does not load.
    Made Make(const QString& file, const DeviceChoice& choice, bool isPlain);

    /// Ends the Host; the last record stays.
    void Rest();

private:
    struct Loaded;

    const DeviceChoice& Completed(const QString& file, const DeviceChoice& choice, bool isPlain);
    QString Place(const QString& file);
    void Clear();
    unsigned int Load(const QString& file, DeviceChoice choice);

    std::unique_ptr<Loaded> loaded;
    std::unique_ptr<output::TemporaryDirectory> onDisk;
    std::unique_ptr<output::TemporaryDirectory> inMemory;
    QString place;        // directory of the last record, with links to its recording; one of these two
    QString completedFor; // directory of the recording
    DeviceChoice asked;   // and the choice before it was completed
    DeviceChoice completed;
};

class RecordSource
{
public:
    /// Completes the choice as convert does; if nothing is chosen and no ini file is found, or with isPlain,
    /// a recording is converted without dictionary. Throws SourceError, or ConfigurationError if the choice
    /// does not load.
    RecordSource(const QString& file, const DeviceChoice& choice, bool isPlain);

    /// The record's .cfg or .cff, as long as this object lives.
    const QString& Path() const { return path; }

    /// The ini file that was used for the recording, or named for the record; empty if there is none.
    const QString& Ini() const { return ini; }

private:
    std::unique_ptr<RecordMaker> maker;
    QString path;
    QString ini;
};
