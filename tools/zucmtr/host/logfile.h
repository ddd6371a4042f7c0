// The log that the library appends to while it loads: the user's file, or one of our own that vanishes with
// the program, however that ends.
#pragma once

#include "output/outputfile.h"
#include "output/scratchfile.h"

#include <QString>
#include <QStringList>

#include <memory>

class LogFile
{
public:
    /// Sets the library's log path to `path`, or to a log of our own if it is empty. The library writes only
    /// to regular files: if the path leads to anything else, our own log is copied there line by line. Qt's
    /// messages go to the user's log as well. Throws ConfigurationError if there can be no log.
    explicit LogFile(const QString& path);
    ~LogFile();
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    /// The lines added since the object was made or since the last call; a long log is cut to its last lines,
    /// after a line that says how many are left out. To be called after each load, since copying is done
    /// here.
    QStringList TakeNewLines();

    /// Appends a line. A regular file is open only for the moment, so that it can be moved away meanwhile.
    void Append(const QString& line);

private:
    void OpenStream(const QString& name);
    void UseOwnLog();
    void Copy(const QByteArray& bytes);

    std::unique_ptr<output::ScratchFile> own;
    std::unique_ptr<output::OutputFile> stream; // the user's log, if it is no regular file
    QString path;                               // of the library's log
    qint64 seen = 0;                            // bytes
};
