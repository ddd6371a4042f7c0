#include "zucmtr/watch/servicemanager.h"

#include "zucmtr/files/systemfile.h"

#include <QByteArray>

#include <cstddef>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>

namespace servicemanager {

namespace {

// If the manager does not listen, that is no failure of the program.
void Send(const QByteArray& message)
{
    const QByteArray name = qgetenv("NOTIFY_SOCKET");
    sockaddr_un address = {};
    if (name.size() < 2 || name.size() > static_cast<int>(sizeof address.sun_path))
        return;
    if (name[0] != '/' && name[0] != '@')
        return;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), static_cast<size_t>(name.size()));
    if (name[0] == '@') // a name without a file
        address.sun_path[0] = '\0';
    const systemfile::Descriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    if (!socket.IsOpen())
        return;
    const auto size =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path)) + static_cast<socklen_t>(name.size());
    sendto(socket.Number(), message.constData(), static_cast<size_t>(message.size()),
           MSG_NOSIGNAL | MSG_DONTWAIT, reinterpret_cast<const sockaddr*>(&address), size);
}

} // namespace

void Ready()
{
    Send("READY=1");
}

void Stopping()
{
    Send("STOPPING=1");
}

void SetStatus(const QString& text)
{
    static QString last;
    if (text == last)
        return;
    last = text;
    Send("STATUS=" + text.simplified().toUtf8());
}

} // namespace servicemanager
