#include "zucmtr/watch/recordcommand.h"

#include "explain/system.h"
#include "text/reasons.h"
#include "text/texts.h"
#include "zucmtr/watch/commandminder.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <cerrno>
#include <csignal>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr size_t LargestMessage = 65536; // bytes

} // namespace

RecordCommand::RecordCommand(const Order& order, const std::function<void()>& prepare)
{
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        Fail(reason::CommandNotStarted, explain::SystemText(errno));
        return;
    }
    channel = systemfile::Descriptor(ends[0]);
    systemfile::Descriptor other(ends[1]);
    process = fork();
    if (process < 0)
        Fail(reason::CommandNotStarted, explain::SystemText(errno));
    if (process != 0)
        return;
    channel = systemfile::Descriptor(); // or the end of the program would go unnoticed
    prepare();
    MindCommand(order, other.Number());
}

RecordCommand::~RecordCommand()
{
    if (channel.IsOpen())
        shutdown(channel.Number(), SHUT_RDWR);
    WaitForEnd();
}

void RecordCommand::Fail(const char* reason, const QString& text)
{
    outcome.reason = QLatin1String(reason);
    outcome.error = text;
    hasEnded = true;
}

void RecordCommand::WaitForEnd()
{
    while (process > 0 && waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
    process = -1;
}

bool RecordCommand::HasEnded()
{
    if (hasEnded)
        return true;
    QByteArray message(LargestMessage, '\0');
    const ssize_t size =
        recv(channel.Number(), message.data(), static_cast<size_t>(message.size()), MSG_DONTWAIT);
    if (size < 0 && (errno == EAGAIN || errno == EINTR))
        return false;
    hasEnded = true;
    WaitForEnd();
    if (size <= 0) {
        Fail(reason::CommandKilled,
             Tr("exec", "the process that watched over the command was ended from outside"));
        return true;
    }
    const QJsonObject told =
        QJsonDocument::fromJson(QByteArray(message.constData(), static_cast<int>(size))).object();
    outcome = {told["reason"].toString(), told["error"].toString(), told["output"].toString(),
               told["seconds"].toDouble()};
    return true;
}
