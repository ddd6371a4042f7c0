#include "zucmtr/watch/watch.h"

#include "text/error.h"
#include "text/texts.h"
#include "zucmtr/files/sourcefiles.h"
#include "zucmtr/files/staging.h"
#include "zucmtr/files/systemfile.h"
#include "zucmtr/run/leftovers.h"
#include "zucmtr/run/ownprocess.h"
#include "zucmtr/run/worker.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/watch/watchevents.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

using watchevents::Emit;
using Verdict = WatchJournal::Verdict;

namespace {

// A recording is given up after its process was killed from outside this many times: it may be the one that
// takes all the memory.
constexpr int KillsBorne = 16;

// If the program ended this often while it worked on a recording, a separate process shows whether that is
// the recording's fault. A power failure, the system or somebody else may have ended the program as well.
constexpr int EndsBorne = 2;

double Seconds(std::chrono::milliseconds time)
{
    return std::chrono::duration<double>(time).count();
}

bool Has(const BatchItem& item, const char* reason)
{
    return item.state == ItemState::Failed && qstrcmp(item.reason, reason) == 0;
}

void EmitFailed(const BatchItem& item, int attempt, const QJsonValue& retrySeconds)
{
    QJsonObject object = JsonOf(item);
    object.remove("status");
    object["attempt"] = attempt;
    object["retrySeconds"] = retrySeconds;
    Emit("failed", object);
}

// Whether the recording's own process ended before the work was done.
bool HasCutOff(const BatchItem& item)
{
    return Has(item, reason::NeverEnded) || Has(item, reason::ProcessKilled);
}

} // namespace

Watch::Watch(const WatchOrder& order_, Worker& worker_, WatchJournal& journal_)
    : order(order_), worker(worker_), journal(journal_), input(order), trouble(order.retryAfter),
      commands(order.command, journal, [this](const std::function<void()>& note) { return Remember(note); })
{}

void Watch::ScanInput()
{
    const std::vector<Chain> chains = input.NewScan();
    scanned = Clock::now();
    QSet<QString> there;
    for (const Chain& chain : chains) {
        there << chain.recording.path;
        if (chain.fingerprint.state == Fingerprint::State::There)
            Observe(chain);
    }
    for (auto one = waiting.begin(); one != waiting.end();)
        one = there.contains(one.key()) ? std::next(one) : waiting.erase(one);
    input.ScanDone();
    status.lastScan = QDateTime::currentDateTime();
    MayWork(); // otherwise trouble would go unnoticed until a recording comes
}

void Watch::Observe(const Chain& chain)
{
    const QString& path = chain.recording.path;
    const auto known = waiting.find(path);
    if (known != waiting.end() && known->fingerprint.print == chain.fingerprint.print) {
        ObserveAgain(*known, chain.fingerprint);
        return;
    }
    const Verdict verdict = journal.Known(path, chain.fingerprint).verdict;
    if (verdict == Verdict::Converted || verdict == Verdict::GivenUp) {
        waiting.remove(path);
        return;
    }
    if (known == waiting.end())
        Emit("found", {{"file", path}});
    Expect(chain);
}

// A recording that failed may succeed with other permissions.
void Watch::ObserveAgain(Waiting& one, const Fingerprint& now) const
{
    if (one.failures > 0 && one.fingerprint.access != now.access) {
        one.failures = 0;
        one.due = Clock::now() + order.quiet;
    }
    one.fingerprint = now;
}

void Watch::Expect(const Chain& chain)
{
    const QString& path = chain.recording.path;
    Waiting one;
    one.recording = chain.recording;
    one.fingerprint = chain.fingerprint;
    one.due = scanned + order.quiet;
    const WatchJournal::Entry known = journal.Known(path, chain.fingerprint);
    one.isDoubtful = known.unended > 0;
    one.kills = known.kills;
    if (!order.once && known.failures > 0)
        one.failures = std::min(known.failures, order.attempts - 1); // at least one more attempt
    if (!order.once && known.failures + known.kills > 0)
        one.due += PauseAfter(std::min(std::max(known.failures, known.kills), order.attempts));
    waiting.insert(path, one);
}

// Recordings that may bring the program down, or find no room again, come last.
QStringList Watch::Due() const
{
    const Clock::time_point now = Clock::now();
    QStringList first;
    QStringList last;
    for (auto one = waiting.begin(); one != waiting.end(); ++one) {
        if (one->due <= now)
            (one->isDoubtful ? last : first) << one.key();
    }
    return first + last;
}

void Watch::ConvertDue()
{
    if (trouble.IsOn() && trouble.MayTry())
        MayWork();
    for (const QString& path : Due()) {
        if (interrupt::Came() || !MayWork())
            return;
        if (IsAsItWas(path))
            Convert(waiting[path]);
        commands.Step();
        if (order.copy != nullptr)
            order.copy->Step(journal);
        ReportStatus();
    }
}

void Watch::CheckPlaces() const
{
    CheckPlace(reason::OutputUnusable, QStringLiteral("--out"), order.out);
    if (!order.archive.isEmpty())
        CheckPlace(reason::ArchiveUnusable, QStringLiteral("--archive"), order.archive);
}

// Whether no recording could be put away, wherever it is.
bool Watch::IsInputReadOnly() const
{
    QSet<QString> directories;
    for (const QString& directory : order.directories)
        directories << directory;
    for (auto one = waiting.begin(); one != waiting.end(); ++one)
        directories << QFileInfo(one.key()).path();
    return std::none_of(directories.begin(), directories.end(), systemfile::IsWritable);
}

// Whether it would affect any other recording, too. What is wrong with one directory below --out or --archive
// affects only its own recordings.
bool Watch::IsTrouble(const BatchItem& item) const
{
    if (item.state != ItemState::Failed)
        return false;
    if (item.blame == Blame::Input)
        return IsInputReadOnly();
    if (item.blame != Blame::Output && item.blame != Blame::Archive)
        return false;
    if (item.noRoom || item.recording.below.isEmpty())
        return true;
    try {
        CheckPlaces();
        return false;
    } catch (const WatchPlaceError&) {
        return true;
    }
}

// Whether what a recording needs besides itself is there; if not, that is trouble.
bool Watch::MayWork()
{
    const bool borne = order.once && troublesInRow > 0 && troublesInRow < TroublesBorne;
    if (!trouble.MayTry() && !borne)
        return false;
    bool isReady = false;
    try {
        CheckPlaces();
        isReady = Remember([this] { journal.Flush(); });
    } catch (const WatchPlaceError& error) {
        trouble.Meet(error.word, text::MessageOf(error), WatchTrouble::Cure::Check);
    }
    if (isReady)
        trouble.Checked();
    else
        troublesInRow = TroublesBorne; // nothing can be started
    return isReady;
}

// The recordings that met the trouble may be gone. Those that wait for a reason of their own prove nothing.
void Watch::LeaveTrouble()
{
    const bool isWaitedFor = std::any_of(waiting.begin(), waiting.end(), [](const Waiting& one) {
        return one.isHeldUp || one.failures + one.kills == 0;
    });
    if (!order.once && !isWaitedFor)
        trouble.NobodyWaits();
}

// It may have grown while others were converted, or be gone. While that is unknown, it is not converted.
bool Watch::IsAsItWas(const QString& path)
{
    Waiting& one = waiting[path];
    const Fingerprint now = FingerprintOf(path);
    switch (now.state) {
    case Fingerprint::State::Gone:
        waiting.remove(path);
        return false;
    case Fingerprint::State::Unknown:
        if (order.once) {
            BatchItem item;
            item.recording = one.recording;
            item.Fail(reason::SourceUnreadable,
                      Tr("watch", "not converted: its files cannot be checked; the next run tries again"));
            FailForThisRun(path, item);
            return false;
        }
        one.due = Clock::now() + std::max(order.quiet, order.retryAfter);
        return false;
    case Fingerprint::State::There:
        break;
    }
    const bool isSame = now.print == one.fingerprint.print;
    one.fingerprint = now;
    if (!isSame) {
        one.due = Clock::now() + order.quiet;
        one.failures = 0;
        one.kills = 0;
    }
    return isSame;
}

BatchItem Watch::WorkSafely(const Waiting& one)
{
    // The current attempt counts, too.
    if (journal.Known(one.recording.path, one.fingerprint).unended <= EndsBorne)
        return worker.Work(one.recording);
    BatchItem item =
        WorkInOwnProcess([&] { return worker.Work(one.recording); }, [this] { journal.LetGo(); });
    item.recording = one.recording;
    if (HasCutOff(item))
        ClearAfter(one.recording, order.mirror ? QDir(order.out).filePath(one.recording.below) : order.out,
                   order.archive);
    return item;
}

void Watch::Convert(Waiting& one)
{
    const QString path = one.recording.path;
    if (!Remember([&] { journal.NoteBegun(path, one.fingerprint.print); }))
        return;
    const bool isProbe = trouble.IsOn();
    if (!isProbe)
        Emit("converting", {{"file", path}});
    const BatchItem item = WorkSafely(one);
    if (interrupt::Came() && HasCutOff(item))
        return; // the signal ended the other process, too
    if (IsTrouble(item)) {
        Postpone(one, item);
        return;
    }
    if (item.state == ItemState::Failed && item.blame == Blame::Recording &&
        FingerprintOf(path).state == Fingerprint::State::Gone) {
        Forget(path, one.fingerprint);
        return;
    }
    if (item.state != ItemState::Failed) {
        trouble.Worked();
        troublesInRow = 0;
    }
    if (isProbe)
        Emit("converting", {{"file", path}});
    if (item.state == ItemState::Failed)
        Fail(one, item);
    else
        Finish(one, item);
}

void Watch::Finish(Waiting& one, const BatchItem& item)
{
    const QString path = one.recording.path;
    QJsonObject object = JsonOf(item);
    object.remove("reason");
    object.remove("error");
    if (!order.reportsSummary)
        object.remove("summary");
    commands.Add(item);
    Remember([&] {
        if (item.fate == SourceFate::Kept)
            journal.NoteConverted(path, one.fingerprint, item.recordName, item.leftOut);
        else
            journal.Note(path, one.fingerprint.print, Verdict::PutAway);
    });
    ++converted;
    status.lastRecording = QDateTime::currentDateTime();
    status.lastFile = Normalised(path);
    Emit("converted", object);
    waiting.remove(path);
}

// If it cannot be written, that is trouble; the journal keeps it in memory, and writes it when it can.
bool Watch::Remember(const std::function<void()>& note)
{
    try {
        note();
        return true;
    } catch (const WatchJournal::Unwritable& error) {
        trouble.Meet(reason::JournalNotWritten, text::MessageOf(error), WatchTrouble::Cure::Check);
        return false;
    }
}

// A run with --once does not try it again, but may still have room for another recording.
void Watch::Postpone(Waiting& one, const BatchItem& item)
{
    const QString path = one.recording.path;
    Remember([&] { journal.Note(path, one.fingerprint.print, Verdict::Withdrawn); });
    one.isDoubtful = true;
    one.isHeldUp = true;
    ++troublesInRow;
    trouble.Meet(item.reason, item.error, WatchTrouble::Cure::Work, path);
    if (order.once)
        FailForThisRun(path, item);
}

// It went away during the attempt, as it may at any other time: no failure, and nothing to give up.
void Watch::Forget(const QString& path, const Fingerprint& last)
{
    Remember([&] { journal.Note(path, last.print, Verdict::Withdrawn); });
    waiting.remove(path);
}

// The next run tries it as if nothing had happened.
void Watch::FailForThisRun(const QString& path, const BatchItem& item)
{
    EmitFailed(item, 1, QJsonValue());
    ++failed;
    waiting.remove(path);
}

void Watch::Fail(Waiting& one, const BatchItem& item)
{
    const QString path = one.recording.path;
    // An attempt to put the files away renames them twice; that is no reason to try again at once.
    const Fingerprint now = FingerprintOf(path);
    if (now.print == one.fingerprint.print && now.modes == one.fingerprint.modes)
        one.fingerprint = now;
    one.isHeldUp = false;
    const bool isKilled = Has(item, reason::ProcessKilled);
    int& count = isKilled ? one.kills : one.failures;
    ++count;
    const bool isLast = count >= (isKilled ? KillsBorne : order.attempts);
    // What lacks memory now may have it when other programs have ended, and a directory may be put right
    // without a change to the recording: such recordings are tried again and again.
    const bool isGivenUp = isLast && (order.once || item.blame == Blame::Recording);
    Remember([&] {
        if (isGivenUp)
            journal.NoteGivenUp(path, one.fingerprint);
        else
            journal.Note(path, one.fingerprint.print, isKilled ? Verdict::Killed : Verdict::Failed);
    });
    const std::chrono::milliseconds pause = PauseAfter(std::min(count, order.attempts));
    const bool isTriedAgain = !isGivenUp && !order.once;
    EmitFailed(item, count, isTriedAgain ? QJsonValue(Seconds(pause)) : QJsonValue());
    one.due = Clock::now() + pause;
    if (isTriedAgain)
        return;
    ++failed;
    waiting.remove(path);
}

std::chrono::milliseconds Watch::PauseAfter(int failures) const
{
    return order.retryAfter * (1 << std::min(failures - 1, 16));
}
