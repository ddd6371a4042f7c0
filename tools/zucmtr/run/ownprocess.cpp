#include "zucmtr/run/ownprocess.h"

#include "explain/system.h"
#include "text/texts.h"
#include "zucmtr/files/systemfile.h"

#include <QDataStream>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <set>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <type_traits>
#include <unistd.h>

namespace {

// A copy that lives as long as the program, as the words of reasons.h do.
const char* Kept(const QByteArray& word)
{
    static std::set<QByteArray> words;
    return words.insert(word).first->constData();
}

// Writes a field of an item to the stream, or reads it back.
template <class Field>
void Put(QDataStream& stream, const Field& field)
{
    if constexpr (std::is_enum_v<Field>)
        stream << static_cast<int>(field);
    else if constexpr (std::is_same_v<Field, const char*>)
        stream << QByteArray(field);
    else
        stream << field;
}

template <class Field>
void Get(QDataStream& stream, Field& field)
{
    if constexpr (std::is_enum_v<Field>) {
        int number = 0;
        stream >> number;
        field = static_cast<Field>(number);
    } else if constexpr (std::is_same_v<Field, const char*>) {
        QByteArray word;
        stream >> word;
        field = Kept(word);
    } else {
        stream >> field;
    }
}

QByteArray Packed(const BatchItem& item)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    ForEachField(item, [&stream](const auto& field) { Put(stream, field); });
    return bytes;
}

bool Unpack(const QByteArray& bytes, BatchItem& item)
{
    QDataStream stream(bytes);
    ForEachField(item, [&stream](auto& field) { Get(stream, field); });
    return stream.status() == QDataStream::Ok && stream.atEnd();
}

[[noreturn]] void WorkAndEnd(const std::function<BatchItem()>& work, const std::function<void()>& prepare,
                             int answer, pid_t program)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != program)
        _exit(1); // the program had ended before the signal was asked for
    prepare();
    const QByteArray bytes = Packed(work());
    for (int at = 0; at < bytes.size();) {
        const ssize_t size = write(answer, bytes.constData() + at, static_cast<size_t>(bytes.size() - at));
        if (size < 0 && errno != EINTR)
            _exit(1);
        at += size > 0 ? static_cast<int>(size) : 0;
    }
    _exit(0);
}

QByteArray ReadAll(int file)
{
    QByteArray bytes;
    std::array<char, 4096> part{};
    for (;;) {
        const ssize_t size = read(file, part.data(), part.size());
        if (size > 0)
            bytes.append(part.data(), static_cast<int>(size));
        else if (size == 0 || errno != EINTR)
            return bytes;
    }
}

int EndOf(pid_t process)
{
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

BatchItem Failed(const char* word, const QString& text)
{
    BatchItem item;
    item.Fail(word, text);
    return item;
}

BatchItem WithoutProcess(int error)
{
    BatchItem item =
        Failed(reason::OutOfMemory,
               Tr("watch", "not converted: no process for it: %1").arg(explain::SystemText(error)));
    item.blame = Blame::Memory;
    return item;
}

// The signal by which something other than a fault of the program has ended the process: an operator, a
// system short of memory, the end of a session. 0: none. A second SIGTERM or Ctrl-C gives an exit code.
int SignalFromOutside(int status)
{
    for (const int number : {SIGKILL, SIGTERM, SIGINT, SIGHUP, SIGQUIT}) {
        if (WIFSIGNALED(status) ? WTERMSIG(status) == number : WEXITSTATUS(status) == 128 + number)
            return number;
    }
    return 0;
}

BatchItem CutOff(int status)
{
    const int outside = SignalFromOutside(status);
    if (outside != 0)
        return Failed(reason::ProcessKilled,
                      Tr("watch", "not converted: the process that worked on it was ended from outside "
                                  "(signal %1); if the system lacked memory, its log has a line on that")
                          .arg(outside));
    const QString how = WIFSIGNALED(status) ? Tr("watch", "signal %1").arg(WTERMSIG(status))
                                            : Tr("watch", "exit code %1").arg(WEXITSTATUS(status));
    return Failed(
        reason::NeverEnded,
        Tr("watch",
           "not converted: the program does not survive it (%1); send the recording to the maintainers")
            .arg(how));
}

} // namespace

BatchItem WorkInOwnProcess(const std::function<BatchItem()>& work, const std::function<void()>& prepare)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return WithoutProcess(errno);
    const systemfile::Descriptor answer(ends[0]);
    systemfile::Descriptor question(ends[1]);
    const pid_t program = getpid();
    const pid_t process = fork();
    if (process < 0)
        return WithoutProcess(errno);
    if (process == 0)
        WorkAndEnd(work, prepare, question.Number(), program);
    question = systemfile::Descriptor();
    BatchItem item;
    const bool whole = Unpack(ReadAll(answer.Number()), item);
    const int status = EndOf(process);
    return whole ? item : CutOff(status);
}
