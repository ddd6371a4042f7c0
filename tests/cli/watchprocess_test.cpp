// zucmtr watch: recordings at which the program, or the process that converts one of them, comes down.
#include "watchstation.h"

#include <sys/stat.h>

using recorderfile::Encode;

// The power may have failed as often, or somebody may have ended the program.
TEST(WatchProcess, RecordingWithWhichTheProgramWasEndedComesLastAndIsConverted)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    EXPECT_EQ(station.Once().code, 0);
    const QByteArray begun = station.Journal('B').value(0) + '\n';
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    for (const int times : {1, 2, 3, 100}) {
        station.Write("out/.zucmtr-watch", "zucmtr watch 1\n" + begun.repeated(times));
        EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), (QStringList{"in/b.ZU", "in/a.ZU"}));
    }
}

// In a process of its own it is the one that ends.
TEST(WatchProcess, RecordingThatEndsTheProgramIsFoundAndGivenUp)
{
    const Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    const QMap<QString, QString> fault = {{"LD_PRELOAD", WATCH_FAULTS_LIBRARY}, {"END_AT", "a.ZU"}};
    for (int run = 0; run < 2; ++run)
        EXPECT_EQ(station.Once({}, fault).code, -1);
    for (int run = 0; run < 2; ++run) {
        const Finished last = station.Once({}, fault);
        EXPECT_EQ(last.code, 1);
        EXPECT_EQ(Station::EventsIn(last.out, "failed", "reason"), QStringList{"neverEnded"});
        EXPECT_EQ(
            Station::EventsIn(last.out, "failed", "error"),
            QStringList{"not converted: the program does not survive it (signal 9); send the recording to "
                        "the maintainers"});
    }
    EXPECT_EQ(station.Records(), QStringList{ShortRecordName(10) + ".cfg"});
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList{"in/a.ZU"});
}

// What the other process found out comes back whole: here that a bad file is not in the record, which is made
// again when that file is touched.
TEST(WatchProcess, FileThatTheOtherProcessLeftOutIsRemembered)
{
    const Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Write("in/a.Z01", "junk");
    EXPECT_EQ(station.Once().code, 0);
    const QByteArray begun = station.Journal('B').value(0) + '\n';
    station.Write("out/.zucmtr-watch", "zucmtr watch 1\n" + begun.repeated(3));
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList{"in/a.ZU"});
    EXPECT_EQ(Station::EventsIn(station.Once().out, "found"), QStringList());
    EXPECT_EQ(chmod(station.Path("in/a.Z01").toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList{"in/a.ZU"});
}
