// A COMTRADE record to work on, whatever the user has: the record itself, or a recording that is converted
// into a temporary directory. The recording stays as it is, even if its ini file says that sources are to be
// deleted.
#pragma once

#include "text/error.h"
#include "zucmtr/host/devicechoice.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

/// A recording that cannot be converted.
class SourceError : public text::Error
{
public:
    using text::Error::Error;
};

class RecordSource
{
public:
    /// Completes the choice as convert does; if nothing is chosen and no ini file is found, or with isPlain,
    /// a recording is converted without dictionary. Throws SourceError, or ConfigurationError if the choice
    /// does not load.
    RecordSource(const QString& file, DeviceChoice choice, bool isPlain);

    /// The record's .cfg or .cff, as long as this object lives.
    const QString& Path() const { return path; }

    /// The ini file that was used for the recording, or named for the record; empty if there is none.
    const QString& Ini() const { return ini; }

private:
    void Convert(const QString& file, const DeviceChoice& choice);

    std::unique_ptr<QTemporaryDir> directory;
    QString path;
    QString ini;
};
