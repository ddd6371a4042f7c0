// Runs the built program as a user does, and makes recordings for it.
#pragma once

#include "recorderfile/recorderfile.h"
#include "support/files.h"

#include <QMap>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// What a process left: its exit code (-1 after a crash) and its outputs, decoded as UTF-8.
struct Finished
{
    int code = -1;
    QString out;
    QString err;
};

/// The exit code of a process; -1 while it runs, if it could not be started and if a signal ended it.
int CodeOf(const QProcess& process);

/// The test's own environment with the variables set on top of it.
QProcessEnvironment EnvironmentWith(const QMap<QString, QString>& variables);

/// Runs zucmtr in a working directory. `environment` is set on top of the test's own.
Finished RunProgram(const QString& directory, const QStringList& arguments,
                    const QMap<QString, QString>& environment = {});

/// Runs a command line with sh in a working directory; `zucmtr` in it is the built program.
Finished RunShell(const QString& directory, const QString& command);

/// The text with "#" in place of the seconds of the summary line.
QString Untimed(QString text);

/// The summary line of a run over `total` recordings, as Untimed leaves it; `counts` is text such as "2
/// failed".
QString Summary(int total, const QString& counts);

/// An ini file with the sections Default and Vostochnaya, with further keys in the latter and no dictionary.
QByteArray PlainIni(const QMap<QString, QString>& deviceKeys = {});

/// A short recording with one analog and one discrete channel that starts some minutes after the sample's
/// time.
recorderfile::Recording ShortRecording(int minutes = 0);

/// Output name of the short recording.
QString ShortRecordName(int minutes = 0);

/// A directory with ZuDrv.ini (PlainIni) and an empty subdirectory out.
class Workplace : public TestDirectory
{
public:
    explicit Workplace(const QMap<QString, QString>& deviceKeys = {});

    /// Runs `zucmtr convert` with the ini file, its two sections, --out out and the arguments.
    Finished Convert(const QStringList& arguments) const;
};
