// Files that could not be opened or read for a moment.
#include "program.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <cerrno>

namespace {

using recorderfile::Encode;

QMap<QString, QString> Fault(const QString& call, const QString& name, int nth, int error)
{
    return {{"LD_PRELOAD", FILE_FAULTS_LIBRARY},
            {"FAULT_CALL", call},
            {"FAULT_NAME", name},
            {"FAULT_NTH", QString::number(nth)},
            {"FAULT_ERROR", QString::number(error)}};
}

QMap<QString, QString> LastingFault(const QString& call, const QString& name, int nth, int error)
{
    QMap<QString, QString> fault = Fault(call, name, nth, error);
    fault["FAULT_ONWARDS"] = "1";
    return fault;
}

QStringList Arguments(const QStringList& more)
{
    return QStringList{"convert",  "--ini",       "ZuDrv.ini", "--defaults", "Default",
                       "--device", "Vostochnaya", "--out",     "out",        "--json"} +
           more;
}

// The possible results of a run with one fault: the whole record, or a failure that is not blamed on the
// recording.
void ExpectWholeOrToBeTriedAgain(const Workplace& place, const Workplace& whole, const Finished& run)
{
    for (const char* name : {"a.ZU", "a.Z01"})
        EXPECT_EQ(ReadBytes(place.Path(name)), Encode(ShortRecording()));
    if (run.code == 0) {
        EXPECT_EQ(place.Names("out"), whole.Names("out"));
        for (const QString& name : whole.Names("out"))
            EXPECT_EQ(ReadBytes(place.Path("out/" + name)), ReadBytes(whole.Path("out/" + name)));
        return;
    }
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(place.Names("out"), QStringList());
    EXPECT_EQ(QJsonDocument::fromJson(run.out.toUtf8()).object()["reason"].toString(), "sourceUnreadable")
        << run.out;
}

void WriteRecording(const Workplace& place)
{
    for (const char* name : {"a.ZU", "a.Z01"})
        place.Write(name, Encode(ShortRecording()));
}

const std::vector<std::pair<QString, int>> Calls = {{"open", ENFILE}, {"read", EIO}, {"stat", EIO}};

} // namespace

TEST(Unreadable, FileThatCannotBeReadForAMomentIsNotTheRecordingsFault)
{
    constexpr int most = 9; // calls on one file
    const Workplace whole;
    WriteRecording(whole);
    ASSERT_EQ(RunProgram(whole.Path(), Arguments({"a.ZU"})).code, 0);
    for (const auto& [call, error] : Calls) {
        for (const char* name : {"a.ZU", "a.Z01"}) {
            for (int nth = 1; nth <= most; ++nth) {
                SCOPED_TRACE(QString("%1 %2 %3").arg(call, name).arg(nth).toStdString());
                const Workplace place;
                WriteRecording(place);
                const Finished run =
                    RunProgram(place.Path(), Arguments({"a.ZU"}), Fault(call, name, nth, error));
                ExpectWholeOrToBeTriedAgain(place, whole, run);
            }
        }
    }
}

TEST(Unreadable, FileThatCannotBeReadAnyMoreIsNotTheRecordingsFault)
{
    const Workplace whole;
    WriteRecording(whole);
    ASSERT_EQ(RunProgram(whole.Path(), Arguments({"a.ZU"})).code, 0);
    for (const auto& [call, error] : Calls) {
        for (int nth = 2; nth <= 9; ++nth) {
            SCOPED_TRACE(QString("%1 %2").arg(call).arg(nth).toStdString());
            const Workplace place;
            WriteRecording(place);
            const Finished run =
                RunProgram(place.Path(), Arguments({"a.ZU"}), LastingFault(call, "a.Z01", nth, error));
            ExpectWholeOrToBeTriedAgain(place, whole, run);
        }
    }
}

TEST(Unreadable, NorIsItWithoutVerification)
{
    const Workplace whole;
    WriteRecording(whole);
    ASSERT_EQ(RunProgram(whole.Path(), Arguments({"a.ZU"})).code, 0);
    for (const auto& [call, error] : Calls) {
        for (int nth = 1; nth <= 7; ++nth) {
            SCOPED_TRACE(QString("%1 %2").arg(call).arg(nth).toStdString());
            const Workplace place;
            WriteRecording(place);
            const Finished run = RunProgram(place.Path(), Arguments({"--no-verify", "a.ZU"}),
                                            Fault(call, "a.Z01", nth, error));
            ExpectWholeOrToBeTriedAgain(place, whole, run);
        }
    }
}

TEST(Unreadable, SystemsReasonIsInTheUsersLanguage)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording()));
    QMap<QString, QString> environment = LastingFault("open", "a.ZU", 1, ENFILE);
    environment["LC_ALL"] = "ru_RU.UTF-8";
    environment["LANGUAGE"] = "";
    const Finished run = RunProgram(place.Path(), Arguments({"a.ZU"}), environment);
    EXPECT_EQ(run.code, 1);
    const QJsonObject object = QJsonDocument::fromJson(run.out.toUtf8()).object();
    EXPECT_EQ(object["reason"].toString(), "sourceUnreadable");
    EXPECT_EQ(object["error"].toString(),
              "не преобразована: «a.ZU» не удалось прочитать: слишком много открытых файлов в системе; "
              "преобразуйте меньше осциллограмм одновременно (--jobs)");
}

TEST(Unreadable, FileIsNotCalledEmpty)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording()));
    place.Write("x.cfg", "station,recorder,1999\n");
    const QStringList reasons = {"Too many open files in system", "Input/output error"};
    for (const char* name : {"a.ZU", "x.cfg"}) {
        for (int i = 0; i < reasons.size(); ++i) {
            const auto& [call, error] = Calls[static_cast<size_t>(i)];
            const Finished run = RunProgram(place.Path(), {"info", name}, LastingFault(call, name, 1, error));
            EXPECT_EQ(run.code, 1);
            EXPECT_EQ(run.err, QString("zucmtr: %1: the file cannot be read: %2\n").arg(name, reasons[i]));
        }
    }
}

// The name of its record must be read before another that may go to the same files can start.
TEST(SlowFile, KeepsNoFinishedRecordingWaiting)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording()));
    place.Write("b.ZU", Encode(ShortRecording(1)));
    const Finished run = RunShell(
        place.Path(),
        QStringLiteral("LD_PRELOAD=%1 HELD_NAME=b.ZU HELD_UNTIL=go timeout -s KILL 30 zucmtr convert -j2 "
                       "--json --out out a.ZU b.ZU | { read -r line; touch go; echo \"$line\"; cat; }")
            .arg(FILE_FAULTS_LIBRARY));
    EXPECT_EQ(run.out.count("\"status\":\"converted\""), 2) << run.out << run.err;
    EXPECT_TRUE(run.out.section('\n', 0, 0).contains("\"file\":\"a.ZU\"")) << run.out;
}
