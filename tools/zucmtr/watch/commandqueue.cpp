#include "zucmtr/watch/commandqueue.h"

#include "comtrade/moment.h"
#include "comtrade/record.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/watch/watchevents.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

using State = WatchJournal::Task::State;

namespace {

QString Absolute(const QString& path)
{
    return path.isEmpty() ? QString() : QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

// A record that cannot be read now, as on a network, has no station; the command runs all the same.
void AddRecord(QJsonObject& variables, const QString& configuration)
{
    try {
        const comtrade::Configuration config = comtrade::Record(configuration).Config();
        variables["ZUCMTR_STATION"] = config.station;
        variables["ZUCMTR_DEVICE"] = config.device;
        variables["ZUCMTR_TRIGGER"] = comtrade::MomentText(config.trigger, comtrade::UtcOffset(config));
    } catch (const comtrade::Error&) {
        return;
    }
}

// The variables of docs/watch.md. All are set for each record, so that none is left from elsewhere.
QJsonObject VariablesOf(const BatchItem& item, const QJsonObject& report, const QString& recorder)
{
    const QJsonObject summary = report["summary"].toObject();
    QStringList files;
    for (const QString& file : item.files)
        files << Absolute(file);
    QJsonObject variables{
        {"ZUCMTR_RECORDER", recorder},
        {"ZUCMTR_RECORDING", Absolute(item.recording.path)},
        {"ZUCMTR_RECORD", files.value(0)},
        {"ZUCMTR_FILES", files.join(QLatin1Char('\n'))},
        {"ZUCMTR_STATUS", report["status"]},
        {"ZUCMTR_SOURCE", report["source"]},
        {"ZUCMTR_STATION", QString()},
        {"ZUCMTR_DEVICE", QString()},
        {"ZUCMTR_TRIGGER", QString()},
        {"ZUCMTR_FAULT", summary["fault"].toObject()["kind"].toString()},
        {"ZUCMTR_TEXT", summary["text"].toVariant().toStringList().join(QLatin1Char('\n'))}};
    if (!files.isEmpty())
        AddRecord(variables, files.first());
    return variables;
}

RecordCommand::Order OrderOf(const CommandOrder& order, const WatchJournal::Task& task)
{
    const QJsonObject kept = QJsonDocument::fromJson(task.input.toUtf8()).object();
    RecordCommand::Order one;
    one.words = order.words;
    one.limit = order.limit;
    one.input = QJsonDocument(kept["input"].toObject()).toJson(QJsonDocument::Compact) + '\n';
    const QJsonObject variables = kept["variables"].toObject();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable)
        one.variables[variable.key()] = variable->toString();
    one.variables[QStringLiteral("ZUCMTR_ATTEMPT")] = QString::number(task.failures + 1);
    return one;
}

QString RecordOf(const WatchJournal::Task& task)
{
    return QJsonDocument::fromJson(task.input.toUtf8())
        .object()["variables"]
        .toObject()["ZUCMTR_RECORD"]
        .toString();
}

} // namespace

CommandQueue::CommandQueue(const CommandOrder& order_, WatchJournal& journal_, Remember remember_)
    : order(order_), journal(journal_), remember(std::move(remember_))
{}

void CommandQueue::Start()
{
    for (auto task = journal.ToDo().begin(); task != journal.ToDo().end(); ++task) {
        if (!order.once && task->failures > 0)
            due[task.key()] = Clock::now() + PauseAfter(task->failures);
    }
}

void CommandQueue::Add(const BatchItem& item)
{
    if (order.words.isEmpty())
        return;
    const QJsonObject report = JsonOf(item);
    const QJsonObject kept{{"input", report}, {"variables", VariablesOf(item, report, order.recorder)}};
    journal.AddTask(
        {item.recording.path, QString::fromUtf8(QJsonDocument(kept).toJson(QJsonDocument::Compact))});
}

CommandQueue::Clock::time_point CommandQueue::Next() const
{
    Clock::time_point next = Clock::time_point::max();
    if (running && running->Descriptor() < 0) // it could not be started
        return Clock::time_point::min();
    if (order.words.isEmpty() || running)
        return next;
    for (auto task = journal.ToDo().begin(); task != journal.ToDo().end(); ++task) {
        if (task->state == State::Waiting)
            next = std::min(next, due.value(task.key(), Clock::time_point::min()));
    }
    return next;
}

int CommandQueue::Waiting() const
{
    const WatchJournal::Tasks& tasks = journal.ToDo();
    return static_cast<int>(std::count_if(tasks.begin(), tasks.end(), [](const WatchJournal::Task& task) {
        return task.state == State::Waiting;
    }));
}

void CommandQueue::Step()
{
    if (running && running->HasEnded())
        Finish();
    if (running || order.words.isEmpty() || interrupt::Came())
        return;
    const Clock::time_point now = Clock::now();
    for (auto task = journal.ToDo().begin(); task != journal.ToDo().end(); ++task) {
        if (task->state == State::Waiting && due.value(task.key(), Clock::time_point::min()) <= now) {
            Begin(task.key());
            return;
        }
    }
}

void CommandQueue::Begin(qint64 number)
{
    current = number;
    running =
        std::make_unique<RecordCommand>(OrderOf(order, journal.ToDo()[number]), [this] { journal.LetGo(); });
}

// A signal that ends the service may have ended the command, too; that is no failure of the command.
void CommandQueue::Finish()
{
    const RecordCommand::Outcome outcome = running->Result();
    running.reset();
    WatchJournal::Task task = journal.ToDo().value(current);
    if (!outcome.reason.isEmpty() && interrupt::Came())
        return;
    if (outcome.reason.isEmpty()) {
        ++done;
        watchevents::Emit("commandDone", {{"file", task.file},
                                          {"record", RecordOf(task)},
                                          {"attempt", task.failures + 1},
                                          {"seconds", outcome.seconds}});
        task.state = State::Done;
    } else {
        ++task.failures;
        const bool isLast = !order.once && task.failures > order.retries;
        task.state = isLast ? State::GivenUp : State::Waiting;
        failed += isLast || order.once ? 1 : 0;
        ReportFailure(task, outcome, isLast || order.once);
        due[current] = order.once ? Clock::time_point::max() : Clock::now() + PauseAfter(task.failures);
    }
    remember([&] { journal.NoteTask(current, task); });
}

void CommandQueue::ReportFailure(const WatchJournal::Task& task, const RecordCommand::Outcome& outcome,
                                 bool isLast)
{
    const double pause = std::chrono::duration<double>(PauseAfter(task.failures)).count();
    watchevents::Emit("commandFailed", {{"file", task.file},
                                        {"record", RecordOf(task)},
                                        {"reason", outcome.reason},
                                        {"error", outcome.error},
                                        {"output", outcome.output},
                                        {"attempt", task.failures},
                                        {"seconds", outcome.seconds},
                                        {"retrySeconds", isLast ? QJsonValue() : QJsonValue(pause)}});
}

std::chrono::milliseconds CommandQueue::PauseAfter(int failures) const
{
    return std::min(order.firstPause * (1 << std::min(failures - 1, 16)),
                    std::max(order.firstPause, order.longestPause));
}
