// Whose record already has the name: this recording's, whatever its form and whatever is left of it, or
// another's.
#include "scene.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace recorderfile;
using verify::RecordState;

namespace {

const QByteArray Dictionary =
    "nAnMax=3\nnDiMax=1\nA01=Q2:3U0,V_L=110 E_G=L S_G=VT\nA02=Q1:Ub,V_L=110 E_G=L S_G=VT\n"
    "A03=Q1:Ia,V_L=110 E_G=L S_G=CT\nD01=Q2:x,E_G=L\n";

// Changes this many codes of one analog channel of a long recording, from the first one on.
Segments WithOtherCodes(size_t channel, int count)
{
    Segments segments = LongRecording();
    for (int i = 0; i < count; ++i)
        ChannelOf<AnalogChannel>(segments[0], channel).samples[static_cast<size_t>(i)] += 7000;
    return segments;
}

// What the record of one recording is for another, both of the same form.
verify::Standing Between(const Segments& record, const Segments& recording, const QByteArray& lines = "")
{
    const Scene of(lines, record);
    return Scene(lines, recording).Find(of.Out());
}

} // namespace

TEST(OwnRecord, IsAbsentSameOrOfAnotherForm)
{
    std::vector<std::unique_ptr<Scene>> scenes;
    for (const Form& form : AllForms())
        scenes.push_back(std::make_unique<Scene>(form.lines, SmallRecording()));
    const TestDirectory empty;
    for (size_t i = 0; i < scenes.size(); ++i) {
        EXPECT_EQ(scenes[i]->Find(empty.Path()).state, RecordState::Absent);
        for (size_t j = 0; j < scenes.size(); ++j) {
            const verify::Standing standing = scenes[i]->Find(scenes[j]->Out());
            EXPECT_EQ(standing.state, i == j ? RecordState::Same : RecordState::Own)
                << AllForms()[i].name << ", record " << AllForms()[j].name;
            EXPECT_EQ(standing.reason.isEmpty(), i == j);
        }
    }
}

TEST(OwnRecord, IsOfAnotherOrderAndOtherNames)
{
    for (const Form& form : AllForms()) {
        const Scene plain(form.lines, SmallRecording());
        const Scene sorted(form.lines + "\n" + Dictionary, SmallRecording());
        EXPECT_NE(plain.Bytes(form.cff ? "cff" : "dat"), sorted.Bytes(form.cff ? "cff" : "dat"));
        EXPECT_EQ(plain.Find(sorted.Out()).state, RecordState::Own) << form.name;
        EXPECT_EQ(sorted.Find(plain.Out()).state, RecordState::Own) << form.name;
        const Scene renamed(form.lines + "\nОбъект=Object", SmallRecording());
        EXPECT_TRUE(IsThisRecordings(plain.Find(renamed.Out()).state)) << form.name;
    }
}

TEST(OwnRecord, OfAnotherOrderMayBeDamagedOrCut)
{
    const Scene plain("", LongRecording());
    const Scene sorted("nAnMax=3\nA01=Q1:I3,V_L=110 E_G=L S_G=CT\nA02=Q1:I1,V_L=110 E_G=L S_G=CT\n"
                       "A03=Q1:I0,V_L=110 E_G=L S_G=CT\n",
                       LongRecording());
    const Copy copy(sorted);
    QByteArray data = copy.Bytes("dat");
    const int damaged = data.indexOf("\n500,");
    data[damaged + 12] = data[damaged + 12] == '1' ? '2' : '1';
    copy.Write("dat", data.left(data.size() * 3 / 4));
    EXPECT_EQ(StateOf(plain, copy), RecordState::Unfinished);
}

TEST(OwnRecord, MayHaveLostTheEndOfALineOrGotOneMore)
{
    const Scene scene("", LongRecording());
    const Copy copy(scene);
    const QByteArray data = copy.Bytes("dat");
    for (const auto position : {data.indexOf("\n300,"), data.indexOf("\n600,") + 8}) {
        QByteArray changed = data;
        changed[position] = changed.at(position) == '\n' ? ' ' : '\n';
        copy.Write("dat", changed);
        EXPECT_EQ(StateOf(scene, copy), RecordState::Own);
    }
}

TEST(OwnRecord, HasAMarkForMissingSamplesInEachForm)
{
    Segments segments = LongRecording();
    for (int16_t& code : ChannelOf<AnalogChannel>(segments[0], 1).samples)
        code = -0x8000;
    EXPECT_EQ(Scene("", segments).Find(Scene("Тип Comtrade BIN=1", segments).Out()).state, RecordState::Own);
}

TEST(OwnRecord, OfARecordingThatGrewIsReplaced)
{
    const Segments both = SmallRecording();
    for (const Form& form : AllForms())
        EXPECT_EQ(Between({both[0]}, both, form.lines).state, RecordState::Own) << form.name;
}

TEST(OwnRecord, ThatGoesOnAfterTheRecordingIsLonger)
{
    const Segments both = SmallRecording();
    for (const Form& form : AllForms())
        EXPECT_EQ(Between(both, {both[0]}, form.lines).state, RecordState::Longer) << form.name;
    const Scene shorter("", {both[0]});
    const Copy copy(Scene("", both));
    copy.Remove("cfg");
    EXPECT_EQ(StateOf(shorter, copy), RecordState::Longer);
}

TEST(OwnRecord, WithMoreSamplesAndOthersThanTheRecordingIsForeign)
{
    const Segments both = SmallRecording();
    Segments other = both;
    for (int16_t& code : ChannelOf<AnalogChannel>(other[0], 1).samples)
        code = static_cast<int16_t>(code + 1);
    for (const Form& form : AllForms()) {
        const verify::Standing standing = Between(other, {both[0]}, form.lines);
        EXPECT_EQ(standing.state, RecordState::Foreign) << form.name;
        EXPECT_TRUE(
            standing.reason.endsWith("number of the last sample: the record says '10', the recording '5'"))
            << standing.reason;
    }
}

TEST(OwnRecord, OfOtherStampsIsForeign)
{
    for (const Form& form : AllForms()) {
        Segments later = SmallRecording();
        later[0].trigMicroseconds += 1;
        EXPECT_EQ(Between(later, SmallRecording(), form.lines).state, RecordState::Foreign) << form.name;
        later = SmallRecording();
        later[0].startMicroseconds += 1;
        const verify::Standing standing = Between(later, SmallRecording(), form.lines);
        EXPECT_EQ(standing.state, RecordState::Foreign) << form.name;
        EXPECT_TRUE(standing.reason.contains("first sample: the record says")) << standing.reason;
    }
}

TEST(OwnRecord, OfOtherSamplesIsForeign)
{
    for (const Form& form : AllForms()) {
        Segments other = SmallRecording();
        for (int16_t& code : ChannelOf<AnalogChannel>(other[0], 1).samples)
            code = static_cast<int16_t>(code + 1);
        const verify::Standing standing = Between(other, SmallRecording(), form.lines);
        EXPECT_EQ(standing.state, RecordState::Foreign) << form.name;
        EXPECT_TRUE(standing.reason.endsWith(" has other samples than the recording")) << standing.reason;
    }
}

TEST(OwnRecord, OfOtherChannelsIsForeign)
{
    Segments fewer = SmallRecording();
    for (Recording& segment : fewer)
        segment.sections.erase(segment.sections.begin());
    for (const Form& form : AllForms()) {
        EXPECT_EQ(Between(fewer, SmallRecording(), form.lines).state, RecordState::Foreign) << form.name;
        EXPECT_EQ(Between(SmallRecording(), fewer, form.lines).state, RecordState::Foreign) << form.name;
    }
}

TEST(OwnRecord, MayDifferInAThousandthOfAChannel)
{
    for (const char* lines : {"", "Тип Comtrade BIN=1"}) {
        const Scene scene(lines, LongRecording());
        EXPECT_EQ(scene.Find(Scene(lines, WithOtherCodes(2, 1)).Out()).state, RecordState::Own);
        EXPECT_EQ(scene.Find(Scene(lines, WithOtherCodes(2, 2)).Out()).state, RecordState::Foreign);
    }
}

TEST(OwnRecord, OfAFewSamplesMayNotDifferAtAll)
{
    Segments other = SmallRecording();
    ChannelOf<AnalogChannel>(other[0], 0).samples[1] = 1000;
    EXPECT_EQ(Between(other, SmallRecording()).state, RecordState::Foreign);
}

TEST(OwnRecord, IsForeignIfOneStateOfManyChannelsIsAnother)
{
    Segments other = LongRecording();
    ChannelOf<DiscreteChannel>(other[0], 5).changes = {{0, 1}, {20000, 0}};
    EXPECT_EQ(Between(other, LongRecording()).state, RecordState::Foreign);
}

TEST(OwnRecord, WithAByteOfItsDataChangedIsReplaced)
{
    for (const Form& form : AllForms()) {
        if (form.cff)
            continue;
        const Scene scene(form.lines, LongRecording());
        const Copy copy(scene);
        const QByteArray bytes = copy.Bytes("dat");
        for (int i = 0; i < bytes.size(); i += bytes.size() / 97) {
            QByteArray changed = bytes;
            changed[i] = static_cast<char>(changed.at(i) ^ 1);
            copy.Write("dat", changed);
            EXPECT_TRUE(IsThisRecordings(StateOf(scene, copy))) << form.name << ", byte " << i;
        }
    }
}

TEST(OwnRecord, WithAnUnreadableConfigurationIsKnownByItsData)
{
    Segments other = SmallRecording();
    ChannelOf<AnalogChannel>(other[0], 0).samples = {9, 8, 7, 6, 5};
    for (const Form& form : AllForms()) {
        const QString name = form.cff ? "cff" : "cfg";
        const Scene scene(form.lines, SmallRecording());
        const Scene stranger(form.lines, other);
        const Copy copy(scene);
        copy.Write(name, copy.Bytes(name).replace("3A", "?A"));
        EXPECT_EQ(StateOf(scene, copy), RecordState::Own) << form.name;
        EXPECT_EQ(StateOf(stranger, copy), RecordState::Foreign) << form.name;
    }
}

TEST(OwnRecord, IsUnfinishedOrOwnWhereverItIsCut)
{
    for (const Form& form : AllForms()) {
        const Scene scene(form.lines, SmallRecording());
        const Copy copy(scene);
        for (const QString& extension : form.cff ? QStringList{"cff"} : QStringList{"cfg", "dat"}) {
            const QByteArray bytes = copy.Bytes(extension);
            const int step = bytes.size() > 300 ? 29 : 3;
            for (int size = bytes.size() - 1; size >= 0; size -= step) {
                copy.Write(extension, bytes.left(size));
                EXPECT_TRUE(IsThisRecordings(StateOf(scene, copy)))
                    << form.name << ' ' << extension << ' ' << size;
                copy.Write(extension, bytes.left(size) + QByteArray(bytes.size() - size, '\0'));
                EXPECT_TRUE(IsThisRecordings(StateOf(scene, copy)))
                    << form.name << ' ' << extension << " zeros from " << size;
            }
            copy.Write(extension, bytes);
        }
    }
}

TEST(OwnRecord, IsUnfinishedWithoutItsDataAndACutConfiguration)
{
    const Scene scene("Объект=Подстанция", SmallRecording());
    const Copy copy(scene);
    copy.Write("dat", QByteArray());
    const QByteArray bytes = copy.Bytes("cfg");
    for (int size = bytes.size(); size >= 0; --size) {
        copy.Write("cfg", bytes.left(size));
        EXPECT_EQ(StateOf(scene, copy), RecordState::Unfinished) << size;
    }
    copy.Write("cfg", QByteArray(100, '\0'));
    EXPECT_EQ(StateOf(scene, copy), RecordState::Unfinished);
    copy.Write("cfg", "Not to be lost\n");
    EXPECT_EQ(StateOf(scene, copy), RecordState::Foreign);
}

TEST(OwnRecord, IsUnfinishedWithoutAConfiguration)
{
    Segments other = SmallRecording();
    ChannelOf<AnalogChannel>(other[0], 0).samples = {9, 8, 7, 6, 5};
    for (const Form& form : AllForms()) {
        if (form.cff)
            continue;
        const Scene scene(form.lines, SmallRecording());
        const Scene stranger(form.lines, other);
        const Copy copy(scene);
        copy.Remove("cfg");
        EXPECT_EQ(StateOf(scene, copy), RecordState::Unfinished) << form.name;
        EXPECT_EQ(StateOf(stranger, copy), RecordState::Foreign) << form.name;
        copy.Remove("dat");
        EXPECT_EQ(StateOf(scene, copy), form.hasReport ? RecordState::Unfinished : RecordState::Absent)
            << form.name;
    }
}

TEST(OwnRecord, WithDataOfItsOtherFormIsReplaced)
{
    const Scene text("", SmallRecording());
    const Scene binary("Тип Comtrade BIN=1", SmallRecording());
    const Copy copy(text);
    copy.Write("dat", binary.Bytes("dat"));
    EXPECT_EQ(StateOf(text, copy), RecordState::Own);
    EXPECT_EQ(StateOf(binary, copy), RecordState::Own);
}

TEST(OwnRecord, IsNothingThatCannotBeRead)
{
    for (const Form& form : AllForms()) {
        const Scene scene(form.lines, SmallRecording());
        for (const QString& extension : form.cff ? QStringList{"cff"} : QStringList{"cfg", "dat"}) {
            const Copy copy(scene);
            const auto state = [&](const char* what) {
                const verify::Standing standing = scene.Find(copy.Directory());
                EXPECT_EQ(standing.state, RecordState::Foreign)
                    << form.name << ' ' << extension << ' ' << what;
                EXPECT_FALSE(standing.reason.isEmpty());
                EXPECT_FALSE(standing.reason.contains("Unknown")) << standing.reason;
                copy.Remove(extension);
            };
            copy.Remove(extension);
            ASSERT_EQ(mkfifo(QFile::encodeName(copy.Path(extension)).constData(), 0600), 0);
            state("pipe");
            ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), copy.Path(extension)));
            state("device");
            ASSERT_TRUE(QFile::link(copy.Path(extension), copy.Path(extension)));
            state("link to itself");
            ASSERT_TRUE(QDir().mkdir(copy.Path(extension)));
            EXPECT_EQ(StateOf(scene, copy), RecordState::Foreign);
        }
    }
}

TEST(OwnRecord, IsJudgedWithinBoundsHoweverLargeTheFile)
{
    for (const Form& form : AllForms()) {
        const Scene scene(form.lines, SmallRecording());
        const Copy copy(scene);
        const QString extension = form.cff ? "cff" : "dat";
        QFile data(copy.Path(extension));
        ASSERT_TRUE(data.resize(qint64{1} << 40)); // zeros after the record
        const RecordState state = StateOf(scene, copy);
        EXPECT_TRUE(state == RecordState::Own || state == RecordState::Foreign) << form.name;
    }
}
