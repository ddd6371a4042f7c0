#include "zucmtr/archive/scribes.h"

#include "catalogue/catalogue.h"
#include "explain/system.h"
#include "text/texts.h"
#include "zucmtr/archive/files.h"
#include "zucmtr/host/recordinglist.h"

#include <QDataStream>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <new>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace archive {

namespace {

using catalogue::Catalogue;
using catalogue::Entry;
using catalogue::Kind;
using catalogue::Piece;

bool SendAll(int line, const char* bytes, size_t size)
{
    while (size > 0) {
        const ssize_t sent = send(line, bytes, size, MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR)
            return false;
        if (sent > 0) {
            bytes += sent;
            size -= static_cast<size_t>(sent);
        }
    }
    return true;
}

bool ReceiveAll(int line, char* bytes, size_t size)
{
    while (size > 0) {
        const ssize_t received = recv(line, bytes, size, 0);
        if (received == 0 || (received < 0 && errno != EINTR))
            return false;
        if (received > 0) {
            bytes += received;
            size -= static_cast<size_t>(received);
        }
    }
    return true;
}

bool Send(int line, const QByteArray& message)
{
    const auto size = static_cast<quint32>(message.size());
    std::array<char, sizeof size> head{};
    std::memcpy(head.data(), &size, sizeof size);
    return SendAll(line, head.data(), head.size()) && SendAll(line, message.constData(), size);
}

bool Receive(int line, QByteArray& message)
{
    std::array<char, sizeof(quint32)> head{};
    if (!ReceiveAll(line, head.data(), head.size()))
        return false;
    quint32 size = 0;
    std::memcpy(&size, head.data(), sizeof size);
    message.resize(static_cast<int>(size));
    return ReceiveAll(line, message.data(), size);
}

QByteArray Packed(const KeptRecord& record)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << record.record << record.recording << record.isRecordingKept << record.isVerified << record.left;
    return bytes;
}

KeptRecord Unpacked(const QByteArray& bytes)
{
    KeptRecord record;
    QDataStream stream(bytes);
    stream >> record.record >> record.recording >> record.isRecordingKept >> record.isVerified >> record.left;
    return record;
}

// The work of one process.
class Writer
{
public:
    Writer(const QString& address, const Reading& reading) : catalogue(address), looker(reading) {}

    void Write(const KeptRecord& kept)
    {
        const QString record = Normalised(kept.record);
        const QString recording = Normalised(kept.recording);
        std::vector<Entry> entries;
        Add(record, Kind::Record, entries);
        if (kept.isRecordingKept)
            Add(recording, Kind::Recording, entries);
        if (!entries.empty())
            catalogue.Put(entries);
        if (kept.isVerified)
            catalogue.NoteRight(record, recording);
        if (!kept.left.isEmpty())
            catalogue.MarkGone({Normalised(kept.left)});
    }

private:
    // Looks at it unless the catalogue has it as it is.
    void Add(const QString& path, Kind kind, std::vector<Entry>& entries)
    {
        std::vector<Piece> pieces = PiecesOf(path, kind);
        if (pieces.empty())
            throw text::Error(Tr("archive", "'%1' is not there any more").arg(path));
        const auto known = catalogue.KnownAt({path}).value(path);
        if (std::equal(known.pieces.begin(), known.pieces.end(), pieces.begin(), pieces.end(),
                       catalogue::IsSameState))
            return;
        HashPieces(path, pieces);
        if (catalogue.Move(path, pieces))
            return;
        Entry entry = looker.Look(path, kind);
        const std::vector<Piece> after = PiecesOf(path, kind, pieces);
        if (!std::equal(pieces.begin(), pieces.end(), after.begin(), after.end(), catalogue::IsSameState))
            throw text::Error(Tr("archive", "it changed while it was read; the next update reads it"));
        entry.pieces = std::move(pieces);
        entries.push_back(std::move(entry));
    }

    Catalogue catalogue;
    Looker looker;
};

// Shared by a process that works and the one that looks after it.
struct State
{
    std::atomic<bool> isAtWork{false};
};

[[noreturn]] void Serve(int line, State& state, const QString& address, const Reading& reading)
{
    std::unique_ptr<Writer> writer;
    QByteArray message;
    while (Receive(line, message)) {
        state.isAtWork = true;
        QString failure;
        try {
            if (!writer) // it may have been impossible a moment ago
                writer = std::make_unique<Writer>(address, reading);
            writer->Write(Unpacked(message));
        } catch (const std::exception& error) {
            failure = text::MessageOf(error);
            writer.reset(); // the next one opens the catalogue anew
        }
        state.isAtWork = false;
        if (!Send(line, failure.toUtf8()))
            break;
    }
    writer.reset();
    _exit(0);
}

void EndWith(pid_t parent)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(1); // it had ended before the signal was asked for
}

// Starts the process that works, and another one whenever it crashes.
[[noreturn]] void Supervise(int line, const QString& address, const Reading& reading)
{
    void* memory = mmap(nullptr, sizeof(State), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        _exit(1);
    State& state = *new (memory) State;
    while (true) {
        const pid_t self = getpid();
        const pid_t process = fork();
        if (process < 0)
            _exit(1);
        if (process == 0) {
            EndWith(self);
            Serve(line, state, address, reading);
        }
        int status = 0;
        while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
        }
        if (WIFEXITED(status))
            _exit(0);
        const QString text =
            Tr("archive", "the process that looked at it has ended (signal %1)").arg(WTERMSIG(status));
        if (state.isAtWork.exchange(false) && !Send(line, text.toUtf8()))
            _exit(0);
    }
}

} // namespace

Scribes::Scribes(const QString& catalogue, const Reading& reading, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        Start(catalogue, reading);
}

void Scribes::Start(const QString& catalogue, const Reading& reading)
{
    std::array<int, 2> ends{};
    const pid_t program = getpid();
    const pid_t process = socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) == 0 ? fork() : -1;
    if (process < 0)
        throw text::Error(
            Tr("crew", "no further process can be started: %1").arg(explain::SystemText(errno)));
    if (process == 0) {
        EndWith(program);
        // The program ends it after the last record, whatever signal all processes get.
        std::signal(SIGINT, SIG_IGN);
        std::signal(SIGTERM, SIG_IGN);
        close(ends[0]);
        for (const Scribe& other : scribes)
            close(other.line);
        Supervise(ends[1], catalogue, reading);
    }
    close(ends[1]);
    Scribe scribe;
    scribe.process = process;
    scribe.line = ends[0];
    scribes.push_back(scribe);
}

Scribes::~Scribes()
{
    for (const Scribe& scribe : scribes)
        close(scribe.line);
    for (const Scribe& scribe : scribes) {
        while (waitpid(scribe.process, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
}

QString Scribes::Keep(const KeptRecord& record)
{
    std::unique_lock<std::mutex> lock(mutex);
    auto scribe = scribes.end();
    freed.wait(lock, [&] {
        scribe = std::find_if(scribes.begin(), scribes.end(), [](const Scribe& one) { return one.isFree; });
        return scribe != scribes.end();
    });
    scribe->isFree = false;
    lock.unlock();
    QByteArray answer;
    const bool isAnswered = Send(scribe->line, Packed(record)) && Receive(scribe->line, answer);
    lock.lock();
    scribe->isFree = true;
    lock.unlock();
    freed.notify_one();
    return isAnswered ? QString::fromUtf8(answer)
                      : Tr("archive", "the process that writes the catalogue has ended");
}

} // namespace archive
