// The log that the library appends to while it loads: the user's file, or one of our own that goes with the
// object.
#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryFile>

class LogFile
{
public:
    /// Sets the library's log path to `path`, or to a temporary file if it is empty. Throws
    /// ConfigurationError if no temporary file can be made.
    explicit LogFile(const QString& path);
    ~LogFile();
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    /// The lines that came since the object was made or since the last call; long logs are cut to the last of
    /// them, behind a line that tells how many are left out.
    QStringList TakeNewLines();

private:
    QString MakeTemporary();

    QTemporaryFile temporary;
    QString path;
    qint64 seen = 0; // bytes
};
