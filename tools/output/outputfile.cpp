#include "output/outputfile.h"

#include "explain/system.h"
#include "text/texts.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace output {

namespace {

// Without this, a reader that goes away would end the program; now the write fails, and that can be reported.
// Standard output is left out: there a reader that has seen enough ends the program, as in every command.
class NoBrokenPipe
{
public:
    explicit NoBrokenPipe(int descriptor)
    {
        sigemptyset(&pipe);
        if (descriptor != STDOUT_FILENO)
            sigaddset(&pipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipe, &before);
    }
    ~NoBrokenPipe()
    {
        const int failure = errno;
        const timespec atOnce = {};
        while (sigismember(&before, SIGPIPE) == 0 && sigismember(&pipe, SIGPIPE) == 1 &&
               sigtimedwait(&pipe, nullptr, &atOnce) > 0) {
        }
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        errno = failure;
    }
    NoBrokenPipe(const NoBrokenPipe&) = delete;
    NoBrokenPipe& operator=(const NoBrokenPipe&) = delete;

private:
    sigset_t pipe{};
    sigset_t before{};
};

// Waits if the descriptor does not block by itself. False if the write has failed for good.
bool MayTryAgain(int descriptor)
{
    if (errno == EINTR)
        return true;
    if (errno != EAGAIN)
        return false;
    pollfd ready = {descriptor, POLLOUT, 0};
    return poll(&ready, 1, -1) > 0 || errno == EINTR;
}

QString SystemText()
{
    return explain::SystemText(errno);
}

// A file that root replaces keeps its owner. Other users cannot give files away, and need not.
void KeepOwner(const QFileDevice& fresh, const QString& path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0 || status.st_uid == geteuid())
        return;
    const int done = fchown(fresh.handle(), status.st_uid, status.st_gid);
    static_cast<void>(done);
}

// A copy of a descriptor that the program was started with; one that it opened itself is nobody's output.
int CopyOf(int descriptor)
{
    const int flags = fcntl(descriptor, F_GETFD);
    if (flags >= 0 && (flags & FD_CLOEXEC) == 0)
        return fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    errno = EBADF;
    return -1;
}

bool IsPipe(const QString& path)
{
    struct stat status = {};
    return stat(QFile::encodeName(path).constData(), &status) == 0 && S_ISFIFO(status.st_mode);
}

} // namespace

OutputFile::OutputFile(const QString& path) : target(TargetOf(path)) {}

OutputFile::~OutputFile()
{
    if (stream >= 0)
        close(stream);
}

bool OutputFile::Fail(const QString& text)
{
    error = text;
    return false;
}

bool OutputFile::FailFile()
{
    // In these two cases Qt's text is its own, in English and with the path.
    const QFileInfo there(target.path);
    const QString reason = there.isDir()                           ? explain::SystemText(EISDIR)
                           : there.exists() && !there.isWritable() ? explain::SystemText(EACCES)
                                                                   : explain::SystemText(file->errorString());
    return Fail(Tr("output", "%1; check the directory, its permissions and the free space").arg(reason));
}

bool OutputFile::Open()
{
    return target.kind == Kind::Stream ? OpenStream() : OpenFile();
}

bool OutputFile::OpenFile()
{
    file = std::make_unique<QSaveFile>(target.path);
    if (!file->open(QIODevice::WriteOnly))
        return FailFile();
    KeepOwner(*file, target.path);
    return true;
}

bool OutputFile::OpenStream()
{
    std::fflush(stdout); // what comes now comes after it
    if (target.descriptor >= 0) {
        stream = CopyOf(target.descriptor);
        return stream >= 0 || Fail(SystemText());
    }
    // A pipe without a reader would keep the program waiting for ever.
    stream = open(QFile::encodeName(target.path).constData(),
                  O_WRONLY | O_APPEND | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (stream < 0 && errno == ENXIO && IsPipe(target.path))
        return Fail(Tr("output", "nobody reads this pipe; start its reader first"));
    if (stream < 0)
        return Fail(SystemText());
    fcntl(stream, F_SETFL, fcntl(stream, F_GETFL) & ~O_NONBLOCK);
    return true;
}

bool OutputFile::Write(const QByteArray& bytes)
{
    if (file == nullptr)
        return WriteStream(bytes);
    return file->write(bytes) == bytes.size() || FailFile();
}

bool OutputFile::WriteStream(const QByteArray& bytes)
{
    const NoBrokenPipe quiet(target.descriptor);
    int written = 0;
    while (written < bytes.size()) {
        const ssize_t count =
            write(stream, bytes.constData() + written, static_cast<size_t>(bytes.size() - written));
        if (count >= 0)
            written += static_cast<int>(count);
        else if (!MayTryAgain(stream))
            return Fail(SystemText());
    }
    return true;
}

bool OutputFile::Commit()
{
    return file == nullptr || file->commit() || FailFile();
}

bool WriteOutput(const QString& path, const QByteArray& bytes, QString& error)
{
    OutputFile file(path);
    const bool written = file.Open() && file.Write(bytes) && file.Commit();
    error = file.ErrorText();
    return written;
}

} // namespace output
