#include "terminal.h"

#include "child.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

Terminal::Terminal() : user(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK))
{
    if (user < 0 || grantpt(user) != 0 || unlockpt(user) != 0)
        std::abort();
    path = QString::fromLatin1(ptsname(user));
    program = open(ptsname(user), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings = {};
    tcgetattr(program, &settings);
    settings.c_oflag &= ~static_cast<tcflag_t>(OPOST); // line feeds stay line feeds
    tcsetattr(program, TCSANOW, &settings);
}

Terminal::~Terminal()
{
    CloseProgramEnd();
    close(user);
}

void Terminal::CloseProgramEnd()
{
    if (program >= 0)
        close(program);
    program = -1;
}

QByteArray TakeFrom(int descriptor)
{
    QByteArray taken;
    std::array<char, 4096> bytes{};
    for (ssize_t count = 1; count > 0;) {
        count = read(descriptor, bytes.data(), bytes.size());
        if (count > 0)
            taken.append(bytes.data(), static_cast<int>(count));
    }
    return taken;
}

Finished RunOnTerminal(const QString& directory, const QStringList& arguments,
                       const QMap<QString, QString>& environment)
{
    Terminal output;
    Terminal error;
    // A process can only take a controlling terminal itself, as the leader of a new session.
    PreparedProcess process([&] {
        setsid();
        ioctl(error.ProgramEnd(), TIOCSCTTY, 0);
        dup2(error.ProgramEnd(), STDIN_FILENO);
        dup2(output.ProgramEnd(), STDOUT_FILENO);
        dup2(error.ProgramEnd(), STDERR_FILENO);
    });
    process.setWorkingDirectory(directory);
    process.setProcessEnvironment(EnvironmentWith(environment));
    process.start(QStringLiteral(ZUCMTR_PROGRAM), arguments);
    output.CloseProgramEnd();
    error.CloseProgramEnd();
    QByteArray out;
    QByteArray err;
    std::array<pollfd, 2> ends = {pollfd{output.UserEnd(), POLLIN, 0}, pollfd{error.UserEnd(), POLLIN, 0}};
    do {
        poll(ends.data(), ends.size(), -1);
        out += TakeFrom(output.UserEnd());
        err += TakeFrom(error.UserEnd());
        for (pollfd& end : ends) // an end whose program is gone has nothing more to read
            end.fd = (end.revents & POLLHUP) != 0 ? -1 : end.fd;
    } while (ends[0].fd >= 0 || ends[1].fd >= 0);
    process.waitForFinished(-1);
    return {CodeOf(process), QString::fromUtf8(out), QString::fromUtf8(err)};
}

QString Seen(const QString& text)
{
    static const QString clear = QStringLiteral("\r\033[K");
    QString seen;
    const QStringList parts = text.split(clear);
    for (const QString& part : parts)
        seen = seen.left(seen.lastIndexOf(QLatin1Char('\n')) + 1) + part;
    return seen;
}
