// Environments that differ from a user's desktop: no home, no session, no font cache, closed streams,
// messages of Qt.
#include "program.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>

namespace {

using recorderfile::Encode;

class Surrounded : public testing::Test
{
protected:
    Surrounded() { place.Write("a.ZU", Encode(ShortRecording())); }

    void ExpectSilent(const QString& command) const
    {
        const Finished run = RunShell(place.Path(), command);
        EXPECT_EQ(run.code, 0) << command.toStdString() << '\n' << run.err;
        EXPECT_EQ(run.err, QString()) << command;
    }

    const Workplace place;
};

// A place with recordings, and the content of all its files, which must not depend on the streams.
class Place : public Workplace
{
public:
    Place() : Workplace({{"Время ожидания", "10"}})
    {
        Write("a.ZU", Encode(ShortRecording()));
        Write("in/ZuDrv.ini", ReadBytes(Path("ZuDrv.ini")));
    }

    QMap<QString, QByteArray> Contents() const
    {
        QMap<QString, QByteArray> contents;
        for (const QString& below : {QString(), QStringLiteral("out/")})
            for (const QString& name : Names(below))
                contents[below + name] = ReadBytes(Path(below + name)).left(name == "journal" ? 16 : -1);
        return contents;
    }
};

struct Command
{
    const char* command;
    bool prints; // on standard output, when all goes well
};

std::ostream& operator<<(std::ostream& out, const Command& command)
{
    return out << command.command;
}

class ClosedStreamsOf : public testing::TestWithParam<Command>
{};

INSTANTIATE_TEST_SUITE_P(Commands, ClosedStreamsOf,
                         testing::Values(Command{"convert --out out --log a.log a.ZU", true},
                                         Command{"convert --out out --log a.log nosuch.ZU", false},
                                         Command{"info a.ZU", true}, Command{"info nosuch.ZU", false},
                                         Command{"view a.ZU -o a.html --png a.png", true},
                                         Command{"dictionary --force -o new.ini a.ZU", false},
                                         Command{"watch --once --out out --state journal in", true}));

using ClosedStreams = Surrounded;
using NoDesktop = Surrounded;
using QtMessages = Surrounded;

// An environment with nothing but what the program needs.
const QString bare = QStringLiteral("env -i ZUCMTR_QT_MESSAGES=fail TMPDIR=$TMPDIR ");
const QString pictures = QStringLiteral("\"$(command -v zucmtr)\" view a.ZU --svg a.svg --png a.png");

} // namespace

TEST_F(NoDesktop, PicturesNeedNoHomeNoSessionAndNoDisplay)
{
    ExpectSilent("zucmtr view a.ZU --png desk.png");
    for (const char* variables :
         {"", "HOME=/nonexistent", "HOME=/proc XDG_RUNTIME_DIR=/nonexistent", "DISPLAY=:77",
          "XDG_RUNTIME_DIR=/ WAYLAND_DISPLAY=wayland-77", "QT_QPA_PLATFORM=xcb", "QT_QPA_PLATFORMTHEME=gtk3",
          "QT_IM_MODULE=ibus", "LC_ALL=C", "XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true"}) {
        QFile::remove(place.Path("a.png"));
        ExpectSilent(bare + QLatin1String(variables) + ' ' + pictures);
        EXPECT_EQ(ReadBytes(place.Path("a.png")), ReadBytes(place.Path("desk.png"))) << variables;
    }
    ExpectSilent(bare + "LC_ALL=ru_RU.UTF-8 " + pictures); // its words differ
}

// What the font library reports about its files is dropped; without fonts the picture has no texts.
TEST_F(NoDesktop, FontLibraryIsSilent)
{
    ExpectSilent(bare + "FONTCONFIG_FILE=/nonexistent " + pictures);
    place.Write("fonts.conf",
                "<fontconfig><dir>/usr/share/fonts</dir><cachedir>/proc/no</cachedir></fontconfig>");
    ExpectSilent(bare + "FONTCONFIG_FILE=$PWD/fonts.conf " + pictures);
    const Finished broken = RunShell(place.Path(), "echo '<' > fonts.conf; " + bare +
                                                       "FONTCONFIG_FILE=$PWD/fonts.conf " + pictures);
    EXPECT_EQ(broken.code, 0);
    EXPECT_EQ(broken.err, QString());
}

TEST_F(NoDesktop, OptionsOfQtAreNotAccepted)
{
    const Finished run = RunProgram(place.Path(), {"view", "a.ZU", "--png", "a.png", "-platform", "xcb"});
    EXPECT_EQ(run.code, 2);
    EXPECT_TRUE(run.err.startsWith("zucmtr: ")) << run.err;
}

TEST_F(NoDesktop, LoadingNeedsNoDirectoryForTemporaryFiles)
{
    const Finished run =
        RunProgram(place.Path(), {"convert", "--out", "out", "a.ZU"}, {{"TMPDIR", place.Path("no")}});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.err, QString());
}

// Every file that a program opens gets the lowest free descriptor: that must not be one of the three.
TEST_P(ClosedStreamsOf, GetNoFileOfTheProgram)
{
    const QString line = QStringLiteral("zucmtr %1 ").arg(QLatin1String(GetParam().command));
    const Place open;
    const Finished whole = RunShell(open.Path(), line);
    EXPECT_FALSE(whole.out.isEmpty() && GetParam().prints);
    for (const char* closed : {"<&-", ">&-", "2>&-", "<&- 2>&-", "<&- >&- 2>&-"}) {
        const Place place;
        const Finished run = RunShell(place.Path(), line + QLatin1String(closed));
        const bool loses = GetParam().prints && QString(closed).contains(QRegularExpression("(^| )>"));
        EXPECT_EQ(run.code, loses ? 1 : whole.code) << closed;
        EXPECT_EQ(place.Contents(), open.Contents()) << closed;
    }
}

TEST_F(ClosedStreams, OutputThatIsLostIsAFailure)
{
    for (const char* command : {"info a.ZU", "view a.ZU -o -", "dictionary a.ZU", "--help"}) {
        const Finished run =
            RunShell(place.Path(), QStringLiteral("zucmtr %1 >&-").arg(QLatin1String(command)));
        EXPECT_EQ(run.code, 1) << command;
        EXPECT_TRUE(run.err.startsWith("zucmtr: ")) << run.err;
        EXPECT_EQ(run.err.count('\n'), 1) << run.err;
    }
}

// In the tests every warning of Qt ends the program.
TEST_F(QtMessages, FailTheTestsAndAreOtherwiseSilent)
{
    const QStringList arguments = {"view", "a.ZU", "--png", "a.png"};
    QMap<QString, QString> warning{{"QT_DEVICE_PIXEL_RATIO", "2"},           // Qt 5 warns of its age
                                   {"QT_SCALE_FACTOR_ROUNDING_POLICY", "x"}, // Qt 6 does not know it
                                   {"TMPDIR", place.Path()}};
    const Finished failed = RunProgram(place.Path(), arguments, warning);
    EXPECT_EQ(failed.code, 70);
    EXPECT_TRUE(failed.err.startsWith("zucmtr: stopped by an unexpected error: ")) << failed.err;
    warning.insert(
        {{"QT_LOGGING_RULES", "*.debug=true"}, {"QT_DEBUG_PLUGINS", "1"}, {"ZUCMTR_QT_MESSAGES", ""}});
    const Finished quiet = RunProgram(place.Path(), arguments, warning);
    EXPECT_EQ(quiet.code, 0);
    EXPECT_EQ(quiet.err, QString());
}

// What the library cannot write into a record, it prints to Qt's debug output.
TEST_F(QtMessages, AreLinesOfTheLog)
{
    recorderfile::Recording recording = ShortRecording();
    for (int i = 0; i < 200; ++i)
        recording.Add(recorderfile::DiscreteChannel{QStringLiteral("Q1:state %1").arg(i), 0, {{0, 1}}});
    place.Write("long.ZU", Encode(recording));
    for (const char* log : {"a.log", "/dev/fd/7"}) {
        const Finished run = RunShell(
            place.Path(),
            QStringLiteral("trap '' XFSZ; ulimit -f 16; exec zucmtr convert --no-verify --log %1 --out "
                           "out long.ZU 7> seven.log")
                .arg(QLatin1String(log)));
        EXPECT_FALSE(run.err.contains("WriteString")) << run.err;
    }
    for (const char* log : {"a.log", "seven.log"})
        EXPECT_EQ(ReadLines(place.Path(log)).last(), "WriteString error!") << log;
}
