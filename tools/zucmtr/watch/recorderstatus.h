// How a recorder is doing: what its process reports to that of the service, which writes the file of
// --status.
#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QMap>
#include <QString>

/// Counts are of this run of the recorder's process. Times are null if there has been none.
struct RecorderStatus
{
    QString recorder; // its name
    QDateTime since;  // start of its process
    QDateTime lastScan;
    QDateTime lastRecording; // when one was last converted
    QString lastFile;        // that one
    int converted = 0;
    int failed = 0;  // given up, or failed with --once
    int pending = 0; // found and not converted yet
    int commandsDone = 0;
    int commandsFailed = 0; // given up, or failed with --once
    int commandsPending = 0;
    QString troubleReason; // a word of reasons.h; empty: none
    QString troubleText;
    QDateTime troubleSince;
    QMap<QString, qint64> freeBytes; // of directories that are written to; -1: cannot be found out
};

/// As the file of --status has it; docs/watch.md lists the keys.
QJsonObject JsonOf(const RecorderStatus& status);

/// Bytes that are free for the user in the directory; -1 if that cannot be found out.
qint64 FreeBytes(const QString& directory);

namespace statuschannel {

/// From here on the status of this process goes to the other end of a SOCK_SEQPACKET socket, which this
/// process keeps open. every: after at most this many seconds a new status is sent, even if nothing changes.
void Use(int socket, double every);

/// Whether there is a service to report to, and a report is due: after this time, or when something happened.
bool IsUsed();
double Every();

/// Sends it, if it can be sent without waiting.
void Send(const RecorderStatus& status);

/// The newest status that has arrived at the service's end of the socket; false if there is no new one.
bool Receive(int socket, QJsonObject& status);

} // namespace statuschannel
