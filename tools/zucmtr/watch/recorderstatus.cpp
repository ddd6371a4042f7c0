#include "zucmtr/watch/recorderstatus.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <sys/socket.h>
#include <sys/statvfs.h>

namespace {

constexpr int LargestMessage = 65536; // bytes

struct Channel
{
    int socket = -1;
    double every = 0; // s
};

Channel& Used()
{
    static Channel channel;
    return channel;
}

QJsonValue TimeOf(const QDateTime& time)
{
    return time.isValid() ? QJsonValue(time.toOffsetFromUtc(time.offsetFromUtc()).toString(Qt::ISODateWithMs))
                          : QJsonValue();
}

} // namespace

QJsonObject JsonOf(const RecorderStatus& status)
{
    QJsonArray disks;
    for (auto one = status.freeBytes.begin(); one != status.freeBytes.end(); ++one)
        disks << QJsonObject{{"directory", one.key()},
                             {"freeBytes", *one < 0 ? QJsonValue() : QJsonValue(static_cast<double>(*one))}};
    QJsonValue trouble;
    if (!status.troubleReason.isEmpty())
        trouble = QJsonObject{{"reason", status.troubleReason},
                              {"text", status.troubleText},
                              {"since", TimeOf(status.troubleSince)}};
    return {{"recorder", status.recorder},
            {"since", TimeOf(status.since)},
            {"lastScan", TimeOf(status.lastScan)},
            {"lastRecording", TimeOf(status.lastRecording)},
            {"lastFile", status.lastFile.isEmpty() ? QJsonValue() : QJsonValue(status.lastFile)},
            {"converted", status.converted},
            {"failed", status.failed},
            {"pending", status.pending},
            {"commands", QJsonObject{{"done", status.commandsDone},
                                     {"failed", status.commandsFailed},
                                     {"pending", status.commandsPending}}},
            {"trouble", trouble},
            {"disks", disks}};
}

qint64 FreeBytes(const QString& directory)
{
    struct statvfs disk = {};
    if (statvfs(QFile::encodeName(directory).constData(), &disk) != 0)
        return -1;
    return static_cast<qint64>(disk.f_bavail) * static_cast<qint64>(disk.f_frsize);
}

namespace statuschannel {

void Use(int socket, double every)
{
    Used() = {socket, every};
}

bool IsUsed()
{
    return Used().socket >= 0;
}

double Every()
{
    return Used().every;
}

// If it cannot be sent now, the next one can.
void Send(const RecorderStatus& status)
{
    const QByteArray message = QJsonDocument(JsonOf(status)).toJson(QJsonDocument::Compact);
    if (IsUsed())
        send(Used().socket, message.constData(), static_cast<size_t>(message.size()),
             MSG_DONTWAIT | MSG_NOSIGNAL);
}

bool Receive(int socket, QJsonObject& status)
{
    QByteArray message(LargestMessage, '\0');
    bool isNew = false;
    ssize_t size = 0;
    while ((size = recv(socket, message.data(), static_cast<size_t>(message.size()), MSG_DONTWAIT)) > 0) {
        const QJsonObject one =
            QJsonDocument::fromJson(QByteArray(message.constData(), static_cast<int>(size))).object();
        isNew = isNew || !one.isEmpty();
        if (!one.isEmpty())
            status = one;
    }
    return isNew;
}

} // namespace statuschannel
