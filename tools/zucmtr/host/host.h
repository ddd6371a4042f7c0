// The program as the library's host: one converter, its log, and what it reports.
#pragma once

#include "text/reasons.h"
#include "zucmtr/host/logfile.h"

#include <QString>
#include <QStringList>

#include <mutex>
#include <shared_mutex>

/// What became of one recording.
struct Outcome
{
    bool converted = false;
    QString outputName;                        // of the record, without directory and extension
    QString error;                             // why it was not converted
    const char* reason = reason::NotConverted; // of the error
    QStringList notes;                         // what else the device reported
    bool couldNotWrite = false;                // a file of the record
    bool lackedMemory = false;                 // for a file of the recording, which then counts as its end
};

/// Owns the library's converter. There is one at a time.
class Host
{
public:
    /// Starts the converter with a log at logPath (empty: a temporary one). Throws ConfigurationError.
    explicit Host(const QString& logPath);
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// Loads the defaults, once and first. A section that the file does not have is an error. Throws
    /// ConfigurationError with the log's lines.
    void LoadDefaults(const QString& iniPath, const QString& section);

    /// Loads a device and returns its number. A section that the file does not have is an error, though the
    /// library would make a device from the defaults alone. Throws ConfigurationError with the log's lines.
    unsigned int LoadDevice(const QString& iniPath, const QString& section);

    /// Does the work while nothing is converted: loading changes what all devices share.
    template <class Work>
    void Alone(const Work& work)
    {
        const std::unique_lock<std::shared_mutex> lock(converting);
        work();
    }

    /// Appends a line to the log.
    void AddToLog(const QString& line) { log.Append(line); }

    /// How long a host should wait for a recording according to the device's section, milliseconds.
    static unsigned int WaitTime(unsigned int device);

    /// Converts one recording. Nothing is thrown: an exception of the library makes the recording fail.
    Outcome Convert(const QString& file, const QString& outDirectory, unsigned int device);

    /// The notes in the device's queue, which is empty afterwards.
    static QStringList TakeNotes(unsigned int device);

private:
    /// Throws ConfigurationError with what failed, the log's lines about it, and any further explanation.
    [[noreturn]] void FailToLoad(const QString& what, const QString& iniPath);

    LogFile log;
    std::shared_mutex converting; // shared by the conversions
};
