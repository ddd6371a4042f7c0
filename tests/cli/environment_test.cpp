// Surroundings that differ from a user's desktop: no home, no session, no fonts' cache, streams that are
// closed, messages of Qt.
#include "program.h"
#include "terminal.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

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

using ClosedStreams = Surrounded;
using NoDesktop = Surrounded;
using QtMessages = Surrounded;

// Nothing of the program's own environment but what it needs.
const QString bare = QStringLiteral("env -i ZUCMTR_QT_MESSAGES=fail TMPDIR=$TMPDIR ");
const QString pictures = QStringLiteral("\"$(command -v zucmtr)\" view a.ZU --svg a.svg --png a.png");

} // namespace

TEST_F(NoDesktop, PicturesNeedNoHomeNoSessionAndNoDisplay)
{
    ExpectSilent("zucmtr view a.ZU --png desk.png");
    for (const char* variables :
         {"", "HOME=/nonexistent", "HOME=/dev/full XDG_RUNTIME_DIR=/nonexistent", "DISPLAY=:77",
          "XDG_RUNTIME_DIR=/ WAYLAND_DISPLAY=wayland-77", "QT_QPA_PLATFORM=xcb", "QT_QPA_PLATFORMTHEME=gtk3",
          "QT_IM_MODULE=ibus", "LC_ALL=ru_RU.UTF-8", "XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true"}) {
        QFile::remove(place.Path("a.png"));
        ExpectSilent(bare + QLatin1String(variables) + ' ' + pictures);
        EXPECT_EQ(ReadBytes(place.Path("a.png")), ReadBytes(place.Path("desk.png"))) << variables;
    }
}

// What the font library says of its files goes nowhere; of fonts that are not there the picture has no texts.
TEST_F(NoDesktop, FontLibraryIsNotHeard)
{
    ExpectSilent(bare + "FONTCONFIG_FILE=/nonexistent " + pictures);
    place.Write("fonts.conf",
                "<fontconfig><dir>/usr/share/fonts</dir><cachedir>/dev/null/x</cachedir></fontconfig>");
    ExpectSilent(bare + "FONTCONFIG_FILE=$PWD/fonts.conf " + pictures);
    const Finished broken = RunShell(place.Path(), "echo '<' > fonts.conf; " + bare +
                                                       "FONTCONFIG_FILE=$PWD/fonts.conf " + pictures);
    EXPECT_EQ(broken.code, 0);
    EXPECT_EQ(broken.err, QString());
}

TEST_F(NoDesktop, OptionsOfQtAreNotTaken)
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

// Every file that a program opens takes the lowest free descriptor: that must not be one of the three.
TEST_F(ClosedStreams, GetNoFileOfTheProgram)
{
    for (const char* closed : {"<&-", ">&-", "2>&-", "<&- 2>&-", "<&- >&- 2>&-"}) {
        const bool loses = QByteArray(closed).contains(" >&-") || QByteArray(closed).startsWith(">&-");
        for (const char* command : {"convert --out out --log a.log a.ZU nosuch.ZU", "info a.ZU nosuch.ZU",
                                    "view a.ZU -o a.html --png a.png", "dictionary --force -o new.ini a.ZU",
                                    "check a.ZU", "watch --once --out out --state journal in"}) {
            const Workplace fresh({{"Время ожидания", "10"}});
            fresh.Write("a.ZU", Encode(ShortRecording()));
            fresh.MakeDirectory("in");
            fresh.Write("in/ZuDrv.ini", PlainIni({{"Время ожидания", "10"}}));
            const QString line = QStringLiteral("zucmtr ") + QLatin1String(command);
            const Finished open = RunShell(fresh.Path(), line);
            const QStringList names = fresh.Names() + fresh.Names("out");
            QList<QByteArray> contents;
            for (const QString& name : fresh.Names())
                contents << ReadBytes(fresh.Path(name));
            const Finished run = RunShell(fresh.Path(), line + ' ' + QLatin1String(closed));
            if (loses && !open.out.isEmpty() && open.code == 0)
                EXPECT_EQ(run.code, 1) << command << ' ' << closed;
            else
                EXPECT_EQ(run.code, open.code) << command << ' ' << closed;
            EXPECT_EQ(fresh.Names() + fresh.Names("out"), names) << command << ' ' << closed;
            if (QByteArray(command).contains("--log"))
                continue; // it grows
            for (int i = 0; i < contents.size(); ++i)
                EXPECT_EQ(ReadBytes(fresh.Path(fresh.Names()[i])), contents[i])
                    << command << ' ' << closed << ' ' << fresh.Names()[i];
        }
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

// The tests have every warning of Qt end the program.
TEST_F(QtMessages, FailTheTestsAndAreOtherwiseNotHeard)
{
    const QStringList arguments = {"view", "a.ZU", "--png", "a.png"};
    const Finished failed =
        RunProgram(place.Path(), arguments,
                   {{"QT_DEVICE_PIXEL_RATIO", "2"}, {"TMPDIR", place.Path()}}); // Qt warns of its age
    EXPECT_EQ(failed.code, 70);
    EXPECT_TRUE(failed.err.startsWith("zucmtr: stopped by an unexpected error: ")) << failed.err;
    const Finished quiet = RunProgram(place.Path(), arguments,
                                      {{"QT_DEVICE_PIXEL_RATIO", "2"},
                                       {"QT_LOGGING_RULES", "*.debug=true"},
                                       {"QT_DEBUG_PLUGINS", "1"},
                                       {"ZUCMTR_QT_MESSAGES", ""}});
    EXPECT_EQ(quiet.code, 0);
    EXPECT_EQ(quiet.err, QString());
}

TEST_F(QtMessages, AreLinesOfTheLog)
{
    recorderfile::Recording recording;
    recording.Add(recorderfile::AnalogChannel{"Q1:Ib", "А", std::vector<int16_t>(4000, 1)});
    place.Write("long.ZU", Encode(recording));
    // The library gives Qt's debug output what it cannot write.
    const Finished run = RunShell(place.Path(), "trap '' XFSZ; ulimit -f 16; exec zucmtr convert --no-verify "
                                                "--log a.log --out out long.ZU");
    EXPECT_EQ(run.err, QString());
    EXPECT_EQ(ReadLines(place.Path("a.log")).last(), "x");
}
