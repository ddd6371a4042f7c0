// Outputs that options name: devices, pipes, links and standard output are written to and stay what they are.
#include "program.h"
#include "terminal.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

using recorderfile::Encode;

mode_t ModeOf(const QString& path)
{
    struct stat status = {};
    EXPECT_EQ(lstat(QFile::encodeName(path).constData(), &status), 0) << path;
    return status.st_mode;
}

// Reads what a program writes while it runs: pipes and terminals hold only a few kilobytes.
class ReadMeanwhile
{
public:
    explicit ReadMeanwhile(int descriptor_) : descriptor(descriptor_), thread([this] { Read(); }) {}
    ~ReadMeanwhile() { End(); }
    ReadMeanwhile(const ReadMeanwhile&) = delete;
    ReadMeanwhile& operator=(const ReadMeanwhile&) = delete;

    QByteArray All()
    {
        End();
        return bytes + TakeFrom(descriptor);
    }

private:
    void Read()
    {
        pollfd ends[] = {{descriptor, POLLIN, 0}, {ended, POLLIN, 0}};
        while ((ends[1].revents & POLLIN) == 0) {
            poll(ends, 2, -1);
            bytes += TakeFrom(descriptor);
        }
    }

    void End()
    {
        if (!thread.joinable())
            return;
        eventfd_write(ended, 1);
        thread.join();
        close(ended);
    }

    const int descriptor;
    const int ended = eventfd(0, EFD_CLOEXEC);
    QByteArray bytes;
    std::thread thread;
};

// An option that names a file to be written; %1 stands for the path.
struct Writer
{
    const char* name;
    const char* command;
    const char* beginning; // start of what is written
    int refusal;           // exit code if it cannot be written
};

std::ostream& operator<<(std::ostream& out, const Writer& writer)
{
    return out << writer.name;
}

const Writer writers[] = {
    {"Page", "zucmtr view a.ZU -o %1", "<!doctype html>", 1},
    {"Svg", "zucmtr view a.ZU --svg %1", "<?xml", 1},
    {"Png", "zucmtr view a.ZU --png %1", "\x89PNG", 1},
    {"Dictionary", "zucmtr dictionary a.ZU -o %1", "nAnMax=1\n", 2},
    {"ForcedDictionary", "zucmtr dictionary a.ZU --force -o %1", "nAnMax=1\n", 2},
    {"LogOfConvert", "zucmtr convert a.ZU --out out --log %1", ">Параметры по умолчанию", 2},
    {"LogOfWatch", "zucmtr watch in --once --rescan 0.01 --out out --log %1", ">Параметры по умолчанию", 2},
};

class Outputs : public testing::TestWithParam<Writer>
{
protected:
    Outputs()
    {
        place.Write("a.ZU", Encode(ShortRecording()));
        place.Write("in/ZuDrv.ini", PlainIni({{"Время ожидания", "10"}}));
    }

    QString MakePipe(const QString& name) const
    {
        EXPECT_EQ(mkfifo(QFile::encodeName(place.Path(name)).constData(), 0640), 0);
        return place.Path(name);
    }

    static QString CommandFor(const QString& path) { return QString::fromUtf8(GetParam().command).arg(path); }
    Finished RunFor(const QString& path) const { return RunShell(place.Path(), CommandFor(path)); }

    const Workplace place;
};

} // namespace

TEST_P(Outputs, PipeIsWrittenToAndStays)
{
    MakePipe("pipe");
    QFile::link("pipe", place.Path("link"));
    // Opened for reading and writing it has a reader, and never ends.
    const int pipe = open(QFile::encodeName(place.Path("pipe")).constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    for (const char* name : {"pipe", "link"}) {
        ReadMeanwhile read(pipe);
        const Finished run = RunShell(place.Path(), CommandFor(name) + " > said");
        EXPECT_EQ(run.code, 0) << run.err;
        EXPECT_EQ(run.err, QString());
        EXPECT_TRUE(read.All().startsWith(GetParam().beginning)) << name;
    }
    close(pipe);
    EXPECT_EQ(ModeOf(place.Path("pipe")), mode_t{S_IFIFO | 0640});
    EXPECT_TRUE(QFileInfo(place.Path("link")).isSymLink());
}

TEST_P(Outputs, PipeThatNobodyReadsIsRefused)
{
    MakePipe("pipe");
    const Finished run = RunFor("pipe");
    EXPECT_EQ(run.code, GetParam().refusal);
    EXPECT_TRUE(
        run.err.endsWith("'pipe' cannot be written: nobody reads this pipe; start its reader first\n"))
        << run.err;
    EXPECT_EQ(ModeOf(place.Path("pipe")), mode_t{S_IFIFO | 0640});
}

// A device that every user has: the end of a pseudo-terminal.
TEST_P(Outputs, DeviceIsWrittenToAndStays)
{
    const Terminal terminal;
    const mode_t before = ModeOf(terminal.Path());
    QFile::link(terminal.Path(), place.Path("link"));
    for (const QString& path : {terminal.Path(), place.Path("link")}) {
        ReadMeanwhile read(terminal.UserEnd());
        const Finished run = RunShell(place.Path(), CommandFor(path) + " > said");
        EXPECT_EQ(run.code, 0) << run.err;
        EXPECT_EQ(run.err, QString());
        EXPECT_TRUE(read.All().startsWith(GetParam().beginning)) << path;
    }
    EXPECT_EQ(ModeOf(terminal.Path()), before);
    EXPECT_TRUE(QFileInfo(place.Path("link")).isSymLink());
}

TEST_P(Outputs, StandardOutputHoldsTheOutputAlone)
{
    QFile::link("/proc/self/fd/1", place.Path("stdout")); // as /dev/stdout is
    for (const char* path : {"-", "stdout", "/dev/fd/1", "/proc/self/fd/1"}) {
        place.Write("said", "before\n");
        const Finished run = RunShell(place.Path(), CommandFor(path) + " >> said");
        EXPECT_EQ(run.code, 0) << run.err;
        EXPECT_EQ(run.err, QString());
        const QByteArray said = ReadBytes(place.Path("said"));
        EXPECT_TRUE(said.startsWith(QByteArray("before\n") + GetParam().beginning)) << path;
        EXPECT_FALSE(said.endsWith(QByteArray(path) + '\n')) << path;
    }
    EXPECT_FALSE(QFileInfo::exists(place.Path("-")));
}

TEST_P(Outputs, OpenDescriptorIsWrittenWhereItStands)
{
    const Finished run =
        RunShell(place.Path(), "(echo before >&7; " + CommandFor("/dev/fd/7") + "; echo after >&7) 7> seven");
    EXPECT_EQ(run.code, 0) << run.err;
    const QByteArray seven = ReadBytes(place.Path("seven"));
    EXPECT_TRUE(seven.startsWith(QByteArray("before\n") + GetParam().beginning));
    EXPECT_TRUE(seven.endsWith("after\n"));
}

INSTANTIATE_TEST_SUITE_P(Options, Outputs, testing::ValuesIn(writers),
                         [](const auto& writer) { return writer.param.name; });

TEST(OutputLinks, LinksToFilesStayAndTheirFilesKeepTheirPermissions)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording()));
    for (const char* command :
         {"zucmtr view a.ZU -o %1", "zucmtr view a.ZU --svg %1", "zucmtr view a.ZU --png %1",
          "zucmtr dictionary a.ZU --force -o %1", "zucmtr convert a.ZU --out out --log %1"}) {
        const QString file = place.Write("below/file", "");
        chmod(QFile::encodeName(file).constData(), 0640);
        QFile::link("below/file", place.Path("first"));
        QFile::link("first", place.Path("second"));
        const Finished run = RunShell(place.Path(), QString::fromUtf8(command).arg("second"));
        EXPECT_EQ(run.code, 0) << run.err;
        EXPECT_GT(ReadBytes(file).size(), 0) << command;
        EXPECT_EQ(ModeOf(file), mode_t{S_IFREG | 0640}) << command;
        for (const char* link : {"first", "second"})
            EXPECT_TRUE(S_ISLNK(ModeOf(place.Path(link)))) << command;
    }
}

TEST(OutputLinks, SampleReplacesTheFilesOfLinks)
{
    const TestDirectory place;
    place.Write("elsewhere", "old");
    QFile::link("../elsewhere", place.MakeDirectory("station") + "/ZuDrv.ini");
    QFile::link("../elsewhere", place.Path("station/Vostochnaya_000123.Z01"));
    EXPECT_EQ(RunProgram(place.Path(), {"sample", "--seconds", "0.5", "--out", "station"}).code, 2);
    EXPECT_EQ(ReadBytes(place.Path("elsewhere")), "old");
    EXPECT_EQ(RunProgram(place.Path(), {"sample", "--seconds", "0.5", "--force", "--out", "station"}).code,
              0);
    EXPECT_TRUE(S_ISLNK(ModeOf(place.Path("station/ZuDrv.ini"))));
    EXPECT_TRUE(ReadBytes(place.Path("elsewhere")).contains("[Vostochnaya]"));
    EXPECT_EQ(place.Names("station").filter(".Z01"), QStringList()); // it would continue another recording
}

TEST(OutputLinks, SampleWaitsForNoPipe)
{
    const TestDirectory place;
    const QString pipe = place.Path("ZuDrv.ini");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0640), 0);
    const Finished run = RunProgram(place.Path(), {"sample", "--force", "--out", "."});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err,
              "zucmtr: './ZuDrv.ini' cannot be written: nobody reads this pipe; start its reader first\n");
    EXPECT_EQ(ModeOf(pipe), mode_t{S_IFIFO | 0640});
}

TEST(OutputLinks, JournalIsRewrittenWhereItsLinkLeads)
{
    const Workplace place({{"Время ожидания", "10"}});
    place.Write("in/a.ZU", Encode(ShortRecording()));
    place.Write("in/ZuDrv.ini", ReadBytes(place.Path("ZuDrv.ini")));
    place.Write("journal", "zucmtr watch 1\ntorn line\n");
    QFile::link("journal", place.Path("link"));
    const Finished run = RunProgram(
        place.Path(), {"watch", "--once", "--rescan", "0.01", "--out", "out", "--state", "link", "in"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_TRUE(S_ISLNK(ModeOf(place.Path("link"))));
    EXPECT_FALSE(ReadBytes(place.Path("journal")).contains("torn line"));
    EXPECT_TRUE(ReadBytes(place.Path("journal")).contains("in/a.ZU"));
}

TEST(OutputLinks, JournalIsARegularFile)
{
    const Workplace place;
    place.MakeDirectory("in");
    place.Write("in/ZuDrv.ini", PlainIni());
    ASSERT_EQ(mkfifo(QFile::encodeName(place.Path("pipe")).constData(), 0640), 0);
    const Terminal terminal;
    for (const QString& state : {QStringLiteral("pipe"), terminal.Path(), QStringLiteral("/dev/fd/1"),
                                 QStringLiteral("-"), QStringLiteral("out")}) {
        const Finished run =
            RunProgram(place.Path(), {"watch", "--once", "--out", "out", "--state", state, "in"});
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.err,
                  QStringLiteral("zucmtr: --state: '%1' is no regular file; give a file in a directory "
                                 "that can be written to\n")
                      .arg(state));
    }
    EXPECT_TRUE(S_ISFIFO(ModeOf(place.Path("pipe"))));
}

namespace {

// A /dev of its own, in a name space that ends with the shell.
const char* const ownDevices = "mount -t tmpfs none /dev && mknod -m 622 /dev/null c 1 3 && "
                               "mknod -m 622 /dev/full c 1 7 && ln -s /proc/self/fd/1 /dev/stdout && "
                               "echo > /dev/null";

bool MayMakeDevices()
{
    return RunShell(QString(), QStringLiteral("unshare -m sh -c '%1'").arg(QLatin1String(ownDevices))).code ==
           0;
}

// Writes to the devices and to a link with every option, and checks them each time.
const char* const writeToDevices = R"sh(
set -e
ln -s /dev/null link
states() { stat -L -c '%F %a %u' /dev/null /dev/full link; stat -c '%F' /dev/stdout link; }
states > before
stays() { states | cmp - before; }
for path in /dev/null link /dev/stdout; do
    zucmtr view a.ZU -o $path; stays
    zucmtr view a.ZU --svg $path; stays
    zucmtr view a.ZU --png $path; stays
    zucmtr dictionary a.ZU -o $path; stays
    zucmtr dictionary a.ZU --force -o $path; stays
    zucmtr convert a.ZU --out out --log $path; stays
done
for command in 'view a.ZU -o' 'view a.ZU --svg' 'view a.ZU --png' 'dictionary a.ZU --force -o'; do
    if zucmtr $command /dev/full 2> failure; then exit 3; fi
    grep -q 'No space left on device$' failure; stays
done
)sh";

} // namespace

// The devices by their names. Root gets devices of its own, made for the test. Other users cannot harm the
// machine's devices, so they use those; so does a root that may not make devices, as in some containers: only
// the tests above cover it, with the terminal.
TEST(NullDevice, StaysADeviceWhateverIsWrittenToIt)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording()));
    const bool own = MayMakeDevices();
    const bool harmless = own || geteuid() != 0;
    place.Write("script", (own ? QByteArray(ownDevices) : QByteArray()) + (harmless ? writeToDevices : ""));
    const Finished run = RunShell(
        place.Path(), QStringLiteral("%1 sh script > said").arg(QLatin1String(own ? "unshare -m" : "")));
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.err, QString());
}

TEST(OutputLinks, WhatIsReadIsNeverReplaced)
{
    const Workplace place;
    const QByteArray recording = Encode(ShortRecording());
    place.Write("a.ZU", recording);
    place.Write("a.Z01", recording);
    QFile::link(place.Path("a.ZU"), place.Path("link.html"));
    for (const QStringList& command :
         {QStringList{"view", "a.ZU", "-o", "a.ZU"}, QStringList{"view", "a.ZU", "--svg", "a.Z01"},
          QStringList{"view", "a.ZU", "--png", "./a.ZU"}, QStringList{"view", "a.ZU", "-o", "link.html"},
          QStringList{"dictionary", "a.ZU", "--force", "-o", "a.ZU"}}) {
        const Finished run = RunProgram(place.Path(), command);
        EXPECT_EQ(run.code, 2) << command.join(' ');
        EXPECT_TRUE(run.err.endsWith("' is what is to be read; choose another name\n")) << run.err;
    }
    EXPECT_EQ(ReadBytes(place.Path("a.ZU")), recording);
    EXPECT_EQ(ReadBytes(place.Path("a.Z01")), recording);
}

TEST(OutputLinks, PageOfARecordIsWrittenThroughItsLink)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording()));
    place.Write("shared.html", "");
    place.MakeDirectory("out");
    const QString link = place.Path("out/" + ShortRecordName() + ".html");
    QFile::link(place.Path("shared.html"), link);
    const Finished run = RunProgram(place.Path(), {"convert", "--view", "--out", "out", "a.ZU"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_TRUE(ReadBytes(place.Path("shared.html")).startsWith("<!doctype html>"));
}
