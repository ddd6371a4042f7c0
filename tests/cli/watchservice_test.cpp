// zucmtr watch --config, --log-format and --status: several recorders in one service, and what it says of
// itself.
#include "watchstation.h"

#include <QDir>
#include <QJsonArray>
#include <QRegularExpression>

#include <csignal>
#include <cstdlib>
#include <sys/stat.h>

using recorderfile::Encode;

namespace {

const QStringList Quick = {"--status", "status.json", "--status-every", "0.05"};

// A place with a directory "conf" for recorders that have their own directories. Paths in a recorder's file
// start there.
class Service : public Workplace
{
public:
    Service() : Workplace({{"Время ожидания", QString::number(QuietMilliseconds)}})
    {
        MakeDirectory("conf");
        output =
            open(Path("events").toLocal8Bit().constData(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    }
    ~Service() { close(output); }
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    /// With "in-NAME" and "out-NAME"; `more` are further lines of its file.
    void Recorder(const QString& name, const QByteArray& more = QByteArray()) const
    {
        MakeDirectory("in-" + name);
        MakeDirectory("out-" + name);
        const QByteArray word = name.toUtf8();
        Write("conf/" + name + ".conf", "ini = ../ZuDrv.ini\ndirectory = ../in-" + word + "\nout = ../out-" +
                                            word + "\nrescan = 0.05\nretry-after = 0.01\n" + more);
    }

    void Start(const QStringList& more = Quick)
    {
        child =
            std::make_unique<Child>(Path(), QStringList{"watch", "--config", "conf"} + more, output, output);
    }

    int End(int signal = SIGTERM)
    {
        child->Send(signal);
        return Ended();
    }

    int Ended()
    {
        return WaitFor([&] { return child->HasEnded(); }) ? child->Code() : -2;
    }

    Child& Running() { return *child; }

    Finished Once(const QStringList& more = {}) const
    {
        return RunProgram(Path(), QStringList{"watch", "--once", "--config", "conf"} + more);
    }

    /// Empty if there is no such file yet.
    QByteArray Bytes(const QString& file) const
    {
        return QFile::exists(Path(file)) ? ReadBytes(Path(file)) : QByteArray();
    }

    QString Said() const { return QString::fromUtf8(ReadBytes(Path("events"))); }

    /// The values of a key in all events of a kind of the recorder, in order.
    QStringList Events(const QString& recorder, const QString& kind, const QString& key = "file") const
    {
        return EventsIn(Said(), recorder, kind, key);
    }

    static QStringList EventsIn(const QString& text, const QString& recorder, const QString& kind,
                                const QString& key)
    {
        QStringList values;
        for (const QString& line : text.split('\n')) {
            const QJsonObject event = QJsonDocument::fromJson(line.toUtf8()).object();
            if (event["event"].toString() == kind && event["recorder"].toString() == recorder)
                values << event[key].toVariant().toString();
        }
        return values;
    }

    bool Waits(const QString& recorder, const QString& kind, int count = 1) const
    {
        return WaitFor([&] { return Events(recorder, kind).size() >= count; });
    }

    QJsonObject Status() const { return QJsonDocument::fromJson(Bytes("status.json")).object(); }

    QJsonObject StatusOf(const QString& recorder) const
    {
        for (const QJsonValue& one : Status()["recorders"].toArray()) {
            if (one.toObject()["recorder"].toString() == recorder)
                return one.toObject();
        }
        return {};
    }

    /// Waits until the file has this value of a key.
    bool Shows(const QString& recorder, const QString& key, const QJsonValue& value) const
    {
        return WaitFor([&] { return StatusOf(recorder)[key] == value; });
    }

private:
    int output = -1;
    std::unique_ptr<Child> child;
};

QByteArray Short(int minutes = 0)
{
    return Encode(ShortRecording(minutes));
}

QJsonObject Commands(int done, int failed, int pending)
{
    return {{"done", done}, {"failed", failed}, {"pending", pending}};
}

} // namespace

TEST(WatchService, EachRecorderHasItsOwnDirectoriesAndJournal)
{
    const Service service;
    service.Recorder("a");
    service.Recorder("b", "device = Vostochnaya\n");
    service.Write("in-a/x.ZU", Short());
    service.Write("in-b/x.ZU", Short(10));
    const Finished run = service.Once();
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(Service::EventsIn(run.out, "a", "converted", "record"), QStringList{ShortRecordName(0)});
    EXPECT_EQ(Service::EventsIn(run.out, "b", "converted", "record"), QStringList{ShortRecordName(10)});
    EXPECT_TRUE(QFile::exists(service.Path("out-a/.zucmtr-watch")));
    EXPECT_TRUE(QFile::exists(service.Path("out-b/.zucmtr-watch")));
    EXPECT_EQ(Service::EventsIn(service.Once().out, "a", "found", "file"), QStringList());
}

TEST(WatchService, RecorderWithWrongSettingsStopsNoOther)
{
    const Service service;
    service.Recorder("a");
    service.Recorder("b");
    service.Write("in-a/x.ZU", Short());
    service.Write("conf/b.conf",
                  "out = ../out-b\nrescan = soon\nrecursive = maybe\nrescam = 1\nout = x\nconfig = y\n"
                  "remove-source = yes\narchive = z\n");
    const Finished run = service.Once();
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err,
              "zucmtr: conf/b.conf:3: 'maybe' is wrong for 'recursive'; give yes or no\n"
              "conf/b.conf:4: there is no key 'rescam'; is 'rescan' meant?\n"
              "conf/b.conf:5: 'out' is here already, in line 1; leave one out\n"
              "conf/b.conf:6: 'config' belongs to the whole service; give it on the command line, as "
              "--config\n"
              "conf/b.conf:2: --rescan: 'soon' is wrong; give a number from 0.01 to 86400\n");
    EXPECT_EQ(Service::EventsIn(run.out, "a", "converted", "record"), QStringList{ShortRecordName(0)});
    EXPECT_EQ(Service::EventsIn(run.out, "b", "recorderDown", "reason"), QStringList{"misconfigured"});
    service.Write("conf/b.conf", "out = x\nremove-source = yes\narchive = z\n");
    EXPECT_EQ(service.Once().err,
              "zucmtr: conf/b.conf:3: 'remove-source' and 'archive' exclude each other; leave one out\n");
    service.Write("conf/b.conf", "directory = x\n");
    EXPECT_EQ(service.Once().err, "zucmtr: conf/b.conf: 'out = ...' is missing\n");
}

TEST(WatchService, TwoRecordersDoNotShareAJournal)
{
    const Service service;
    service.Recorder("a");
    service.Recorder("b", "state = ../out-a/.zucmtr-watch\n");
    const Finished run = service.Once();
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "zucmtr: conf/b.conf: it has the state '" + service.Path("out-a/.zucmtr-watch") +
                           "', as 'a' has; give another 'state = FILE'\n");
}

TEST(WatchService, NoRecorderAtAllIsWrongUsage)
{
    const Service service;
    EXPECT_EQ(service.Once().err,
              "zucmtr: --config: there is no .conf file in 'conf'; write one for each recorder\n");
    service.Recorder("a", "bad\n");
    EXPECT_EQ(RunProgram(service.Path(), {"watch", "--config", "conf"}).code,
              2); // it does not go on without any
    const Finished beside = service.Once({"--out", "out", "in"});
    EXPECT_EQ(beside.code, 2);
    EXPECT_TRUE(
        beside.err.startsWith("zucmtr: with --config --out belongs into the .conf files, as 'out = ...'\n"))
        << beside.err;
}

// The program itself comes down twice; then a process of its own shows that the recording is to blame.
TEST(WatchService, RecorderThatCrashesIsStartedAgainAndStopsNoOther)
{
    Service service;
    service.Recorder("a", "attempts = 1\n");
    service.Recorder("b");
    service.Write("in-a/crash.ZU", Short());
    setenv("LD_PRELOAD", WATCH_FAULTS_LIBRARY, 1);
    setenv("END_AT", "crash.ZU", 1);
    setenv("END_BY", "11", 1);
    service.Start();
    for (const char* name : {"LD_PRELOAD", "END_AT", "END_BY"})
        unsetenv(name);
    ASSERT_TRUE(service.Waits("a", "recorderDown"));
    EXPECT_EQ(service.Events("a", "recorderDown", "reason"), QStringList{"crashed"});
    service.Write("in-b/x.ZU", Short(10));
    ASSERT_TRUE(service.Waits("b", "converted"));
    ASSERT_TRUE(service.Waits("a", "failed"));
    EXPECT_EQ(service.End(), 0);
    EXPECT_EQ(service.Events("a", "recorderDown", "retrySeconds"), (QStringList{"1", "2"}));
    EXPECT_EQ(service.Events("a", "failed", "reason"), QStringList{"neverEnded"});
    EXPECT_EQ(service.Events("b", "started", "event").size(), 1);
}

TEST(WatchService, RecorderThatCannotStartNowIsStartedWhenItCan)
{
    Service service;
    service.Recorder("a");
    service.Write("in-a/x.ZU", Short());
    ASSERT_TRUE(QDir().rmdir(service.Path("out-a")));
    service.Start();
    ASSERT_TRUE(service.Waits("a", "recorderDown"));
    ASSERT_TRUE(service.Shows("a", "state", "waiting"));
    EXPECT_EQ(service.StatusOf("a")["trouble"].toObject()["text"].toString(),
              "--out: the directory '../out-a' does not exist; make it first: mkdir -p ../out-a");
    service.MakeDirectory("out-a");
    ASSERT_TRUE(service.Waits("a", "converted"));
    EXPECT_TRUE(service.Shows("a", "trouble", QJsonValue()));
    EXPECT_EQ(service.End(), 0);
    EXPECT_TRUE(service.Said().contains("zucmtr: a: --out: the directory '../out-a' does not exist"));
}

TEST(WatchService, HangUpHasTheSettingsReadAgain)
{
    Service service;
    service.Recorder("a");
    service.Recorder("b");
    service.Recorder("c");
    service.Start();
    for (const char* name : {"a", "b", "c"})
        ASSERT_TRUE(service.Waits(name, "started"));
    ASSERT_TRUE(QFile::remove(service.Path("conf/a.conf")));
    service.Recorder("b", "attempts = 2\n");
    service.Recorder("d");
    service.Write("conf/c.conf", "wrong\n");
    service.Running().Send(SIGHUP);
    ASSERT_TRUE(service.Waits("a", "stopped"));
    ASSERT_TRUE(service.Waits("b", "started", 2));
    ASSERT_TRUE(service.Waits("d", "started"));
    service.Write("in-c/x.ZU", Short());
    ASSERT_TRUE(service.Waits("c", "converted")); // it goes on as it was
    EXPECT_EQ(service.End(), 0);
    EXPECT_EQ(service.Events("", "reloaded", "startedRecorders").size(), 1);
    const QJsonObject reloaded = [&] {
        for (const QString& line : service.Said().split('\n')) {
            if (line.contains("\"reloaded\""))
                return QJsonDocument::fromJson(line.toUtf8()).object();
        }
        return QJsonObject();
    }();
    EXPECT_EQ(reloaded["startedRecorders"].toVariant().toStringList(), (QStringList{"b", "d"}));
    EXPECT_EQ(reloaded["endedRecorders"].toVariant().toStringList(), QStringList{"a"});
    EXPECT_EQ(reloaded["mistakes"].toVariant().toStringList().size(), 1);
    EXPECT_EQ(service.Events("c", "started", "event").size(), 1);
}

// Whoever ends the service ends all recorders, and the commands that they run.
TEST(WatchService, NothingRunsOnWhenTheServiceIsKilled)
{
    Service service;
    service.Write("hook", "#!/bin/sh\necho $$ > ../hook-process; sleep 1000 & wait\n");
    EXPECT_EQ(chmod(service.Path("hook").toLocal8Bit().constData(), 0700), 0);
    service.Recorder("a", "exec = ../hook\n");
    service.Write("in-a/x.ZU", Short());
    service.Start();
    ASSERT_TRUE(service.Waits("a", "converted"));
    ASSERT_TRUE(WaitFor([&] { return !service.Bytes("hook-process").trimmed().isEmpty(); }));
    ASSERT_TRUE(WaitFor([&] { return service.StatusOf("a")["process"].toInt() > 0; }));
    const int recorder = service.StatusOf("a")["process"].toInt();
    const int hook = ReadBytes(service.Path("hook-process")).trimmed().toInt();
    EXPECT_EQ(service.End(SIGKILL), -1);
    EXPECT_TRUE(WaitFor([&] { return kill(recorder, 0) != 0 && kill(-hook, 0) != 0; }));
}

TEST(WatchService, StatusSaysHowEachRecorderIsDoing)
{
    Service service;
    service.Recorder("a", "exec = true\nattempts = 1\n");
    service.Recorder("b", "out = x\n");
    service.Write("in-a/x.ZU", Short());
    service.Write("in-a/junk.ZU", "junk");
    service.Start();
    ASSERT_TRUE(service.Shows("a", "commands", Commands(1, 0, 0)));
    ASSERT_TRUE(service.Shows("a", "failed", 1));
    const QJsonObject a = service.StatusOf("a");
    EXPECT_EQ(a["state"].toString(), "running");
    EXPECT_EQ(a["converted"].toInt(), 1);
    EXPECT_EQ(a["pending"].toInt(), 0);
    EXPECT_EQ(a["lastFile"].toString(), service.Path("in-a/x.ZU"));
    for (const char* time : {"since", "seen", "lastScan", "lastRecording"})
        EXPECT_TRUE(QDateTime::fromString(a[time].toString(), Qt::ISODateWithMs).isValid()) << time;
    const QJsonObject disk = a["disks"].toArray()[0].toObject();
    EXPECT_EQ(disk["directory"].toString(), QDir::cleanPath(service.Path("out-a")));
    EXPECT_GT(disk["freeBytes"].toDouble(), 0);
    EXPECT_EQ(service.StatusOf("b")["state"].toString(), "misconfigured");
    ASSERT_TRUE(QFile::rename(service.Path("out-a"), service.Path("away")));
    ASSERT_TRUE(WaitFor([&] { return service.StatusOf("a")["trouble"].isObject(); }));
    EXPECT_EQ(service.StatusOf("a")["trouble"].toObject()["reason"].toString(), "outputUnusable");
    ASSERT_TRUE(QFile::rename(service.Path("away"), service.Path("out-a")));
    ASSERT_TRUE(service.Shows("a", "trouble", QJsonValue()));
    EXPECT_EQ(service.End(), 0);
    EXPECT_EQ(service.StatusOf("a")["state"].toString(), "ended");
}

TEST(WatchService, StatusIsFreshThoughNothingHappens)
{
    Service service;
    service.Recorder("a");
    service.Start();
    ASSERT_TRUE(service.Waits("a", "started"));
    for (const char* key : {"seen", "lastScan"}) {
        const QString before = service.StatusOf("a")[key].toString();
        EXPECT_TRUE(WaitFor([&] { return service.StatusOf("a")[key].toString() > before; })) << key;
    }
    const QString updated = service.Status()["updated"].toString();
    EXPECT_TRUE(WaitFor([&] { return service.Status()["updated"].toString() > updated; }));
    EXPECT_EQ(service.End(), 0);
}

// Each time it is read it is whole, and its process is another one than the recorder's, which may be busy.
TEST(WatchService, StatusIsReplacedAtOnce)
{
    Service service;
    service.Recorder("a");
    service.Start({"--status", "status.json", "--status-every", "0.05"});
    ASSERT_TRUE(WaitFor([&] { return QFile::exists(service.Path("status.json")); }));
    QSet<QString> versions;
    EXPECT_TRUE(WaitFor([&] {
        const QJsonObject status = service.Status();
        EXPECT_EQ(status["process"].toInt(), service.Running().Process());
        versions << status["updated"].toString();
        return versions.size() >= 5;
    }));
    EXPECT_EQ(service.End(), 0);
    EXPECT_EQ(service.Names("").filter("status"), QStringList{"status.json"});
}

// Without --config the one recorder is named after its section, and its exit code is the service's.
TEST(WatchService, OneRecorderHasAStatusToo)
{
    Station station;
    station.Write("in/a.ZU", "junk");
    const Finished run = station.Once({"--status", "status.prom"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(Station::EventsIn(run.out, "stopped", "recorder"), QStringList{QString()});
    const QByteArray metrics = ReadBytes(station.Path("status.prom"));
    EXPECT_TRUE(metrics.contains("\nzucmtr_watch_failed_total{recorder=\"Vostochnaya\"} 1\n"))
        << metrics.constData();
    EXPECT_EQ(station.Once({"--status", "status.prom", "--max-memory", "1"}).code, 2);
    EXPECT_EQ(RunProgram(station.Path(), {"watch", "--out", "none", "--status", "status.prom", "in"}).code,
              1);
    EXPECT_EQ(RunProgram(station.Path(), {"watch", "--out", "out", "--status", "status.prom", "none"}).code,
              1);
}

TEST(WatchService, StatusThatCannotBeWrittenIsReportedOnceAndStopsNothing)
{
    Station station;
    station.Write("in/a.ZU", Short());
    const Finished run = station.Once({"--status", "none/status.json", "--status-every", "0.05"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(
        run.err.count("zucmtr: --status: 'none/status.json' cannot be written: No such file or directory"), 1)
        << run.err;
    EXPECT_EQ(station.Records().size(), 1);
}

namespace {

// Time, level, recorder, event, and the rest.
const QString LinePattern = "^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}(?:Z|[+-]\\d\\d:\\d\\d) "
                            "(INFO|WARNING|ERROR) (\\S+) (\\w+) (.*)$";

QStringList WithoutTimes(const QString& text)
{
    QStringList lines;
    for (const QString& line : text.split('\n')) {
        if (line.isEmpty())
            continue;
        const QRegularExpressionMatch match = QRegularExpression(LinePattern).match(line);
        EXPECT_TRUE(match.hasMatch()) << line;
        lines << match.capturedTexts().mid(1).join('|');
    }
    return lines;
}

} // namespace

TEST(WatchLog, LinesHaveTimeLevelRecorderEventAndWhatHappened)
{
    const Station station;
    station.Write("in/a.ZU", Short());
    station.Write("in/junk.ZU", "junk");
    const Finished run = station.Once({"--log-format", "text", "--rescan", "0.01"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(
        WithoutTimes(run.out),
        (QStringList{
            "INFO|Vostochnaya|started|in; a recording is complete when unchanged for 0.1 s",
            "INFO|Vostochnaya|found|in/a.ZU", "INFO|Vostochnaya|found|in/junk.ZU",
            "INFO|Vostochnaya|converting|in/a.ZU",
            "INFO|Vostochnaya|converted|in/a.ZU -> out/" + ShortRecordName(0),
            "INFO|Vostochnaya|converting|in/junk.ZU",
            "ERROR|Vostochnaya|failed|in/junk.ZU: not converted: it is no recording: it does not start like "
            "a "
            "recorder's file; give a recording's first file (.ZU); attempt 1, the last one",
            "INFO|Vostochnaya|stopped|nothing is left to do; 1 converted, 1 given up, 0 waiting"}));
}

// As logrotate does it, and without a signal to the program.
TEST(WatchLog, FileMayBeMovedAwayAtAnyTime)
{
    Station station;
    station.Start({"--log-format", "text", "--log", "log"});
    const auto waits = [&](const char* file, const char* text) {
        return WaitFor([&] {
            return QFile::exists(station.Path(file)) && ReadBytes(station.Path(file)).contains(text);
        });
    };
    ASSERT_TRUE(waits("log", " started "));
    station.Rename("log", "log.1");
    station.Write("in/a.ZU", Short());
    ASSERT_TRUE(waits("log", " converted in/a.ZU -> out/"));
    EXPECT_EQ(station.End(), 0);
    EXPECT_FALSE(ReadBytes(station.Path("log.1")).contains(" converted "));
    EXPECT_TRUE(waits("events", " converted in/a.ZU -> out/"));
}

// Or a name could write lines of its own.
TEST(WatchLog, ControlCharactersDoNotBreakALine)
{
    const Station station;
    station.Write("in/a\nb.ZU", Short());
    const Finished run = station.Once({"--log-format", "text", "--log", "log"});
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.out.contains(" found in/a?b.ZU\n"));
    EXPECT_TRUE(ReadBytes(station.Path("log")).contains(" found in/a?b.ZU\n"));
}
