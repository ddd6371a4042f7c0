// What a power failure leaves of a record: any of its bytes may be zeros in place of what was not written.
#include "scene.h"

#include <gtest/gtest.h>

using namespace recorderfile;
using verify::RecordState;

namespace {

// Positions as hundredths of a file.
struct Hole
{
    int begin;
    int end;
};

// The first ones take the configuration of a container and the mark of its data; the last leaves hardly any.
const std::vector<std::vector<Hole>> AllHoles = {
    {{0, 50}},  {{0, 90}}, {{50, 100}},
    {{25, 75}}, {{1, 60}}, {{2, 33}, {66, 99}},
    {{1, 100}}, {{0, 97}}, {{0, 60}, {65, 70}, {80, 85}},
};

QByteArray With(QByteArray bytes, const std::vector<Hole>& holes)
{
    for (const Hole& hole : holes) {
        const int begin = bytes.size() * hole.begin / 100;
        const int size = bytes.size() * hole.end / 100 - begin;
        bytes.replace(begin, size, QByteArray(size, '\0'));
    }
    return bytes;
}

// Another recording of the same recorder: a code of one channel in each record is another, the rest the same.
Segments Other()
{
    Segments segments = LongRecording();
    for (int16_t& code : ChannelOf<AnalogChannel>(segments[0], 2).samples)
        code = static_cast<int16_t>(code + 1);
    return segments;
}

QStringList Extensions(const Form& form)
{
    return form.cff ? QStringList{"cff"} : QStringList{"cfg", "dat"};
}

QString DataExtension(const Form& form)
{
    return form.cff ? "cff" : "dat";
}

// Where the data begin in their file.
int BeginOfData(const Form& form, const QByteArray& bytes)
{
    return form.cff ? bytes.indexOf('\n', bytes.indexOf("file type: DAT")) + 1 : 0;
}

// Makes zeros of the data but for the bytes from begin to end, counted from the begin of the data.
QByteArray Only(const Form& form, QByteArray bytes, int begin, int end)
{
    const int data = BeginOfData(form, bytes);
    bytes.replace(data, begin, QByteArray(begin, '\0'));
    const int rest = bytes.size() - data - end;
    return bytes.replace(data + end, rest, QByteArray(rest, '\0'));
}

} // namespace

TEST(TornRecord, IsUnfinishedWhereverTheHolesAre)
{
    for (const Form& form : AllForms()) {
        const Scene scene(form.lines, LongRecording());
        const Copy copy(scene);
        for (const std::vector<Hole>& holes : AllHoles) {
            for (const QString& extension : Extensions(form)) {
                const QByteArray bytes = copy.Bytes(extension);
                copy.Write(extension, With(bytes, holes));
                EXPECT_TRUE(IsThisRecordings(StateOf(scene, copy)))
                    << form.name << ' ' << extension << ' ' << holes[0].begin << '-' << holes[0].end;
                copy.Write(extension, bytes);
            }
        }
    }
}

TEST(TornRecord, MayHaveHolesInBothFiles)
{
    for (const Form& form : AllForms()) {
        if (form.cff)
            continue;
        const Scene scene(form.lines, LongRecording());
        for (const std::vector<Hole>& holes : {AllHoles[0], AllHoles[2], AllHoles[3]}) {
            const Copy copy(scene);
            copy.Write("cfg", With(copy.Bytes("cfg"), holes));
            copy.Write("dat", With(copy.Bytes("dat"), holes));
            EXPECT_EQ(StateOf(scene, copy), RecordState::Unfinished) << form.name << ' ' << holes[0].begin;
            copy.Remove("cfg");
            EXPECT_EQ(StateOf(scene, copy), RecordState::Unfinished) << form.name << ' ' << holes[0].begin;
        }
    }
}

TEST(TornRecord, OfAnotherRecordingIsForeign)
{
    for (const Form& form : AllForms()) {
        const Scene scene(form.lines, LongRecording());
        const Copy copy(Scene(form.lines, Other()));
        const QString data = DataExtension(form);
        const QByteArray bytes = copy.Bytes(data);
        for (const std::vector<Hole>& holes : AllHoles) {
            if (holes[0].begin == 1 && holes[0].end == 100)
                continue; // no data are left
            copy.Write(data, With(bytes, holes));
            EXPECT_EQ(StateOf(scene, copy), RecordState::Foreign)
                << form.name << ' ' << holes[0].begin << '-' << holes[0].end;
        }
        if (form.cff)
            continue;
        copy.Write("dat", bytes);
        copy.Write("cfg", With(copy.Bytes("cfg"), AllHoles[0]));
        EXPECT_EQ(StateOf(scene, copy), RecordState::Foreign) << form.name;
    }
}

TEST(TornRecord, MayNotDifferInASingleValue)
{
    for (const char* lines : {"", "Тип Comtrade BIN=1"}) {
        Segments other = LongRecording();
        ChannelOf<AnalogChannel>(other[0], 2).samples[700] += 7000;
        const Scene scene(lines, LongRecording());
        const Copy copy(Scene(lines, other));
        EXPECT_EQ(StateOf(scene, copy), RecordState::Own);
        const QByteArray bytes = copy.Bytes("dat");
        copy.Write("dat", With(bytes, {{10, 20}}));
        EXPECT_EQ(StateOf(scene, copy), RecordState::Foreign);
        copy.Write("dat", With(bytes, {{60, 80}})); // the value is in the hole
        EXPECT_EQ(StateOf(scene, copy), RecordState::Unfinished);
    }
}

// In binary data the zeros at the end of the last record cannot be told from a hole.
TEST(TornRecord, IsKnownByOneWholeRecordAndNotByLess)
{
    for (const Form& form : AllForms()) {
        if (form.cff)
            continue;
        const Scene scene(form.lines, LongRecording());
        const Scene stranger(form.lines, Other());
        const Copy copy(scene);
        copy.Remove("cfg");
        const QByteArray bytes = copy.Bytes("dat");
        constexpr int size = 8 + 4 * 2 + 2;
        const int begin = form.binary ? 500 * size : bytes.indexOf("\n501,");
        const int end = form.binary ? 502 * size : bytes.indexOf("\n502,") + 1;
        copy.Write("dat", Only(form, bytes, begin, end));
        EXPECT_EQ(StateOf(scene, copy), RecordState::Unfinished) << form.name;
        EXPECT_EQ(StateOf(stranger, copy), RecordState::Foreign) << form.name;
        copy.Write("dat", Only(form, bytes, begin + 2, end));
        EXPECT_EQ(StateOf(scene, copy), RecordState::Foreign) << form.name;
    }
}

TEST(TornRecord, OfLongRecordsMayHaveHolesOfAPage)
{
    Recording wide;
    for (int channel = 0; channel < 2100; ++channel) {
        AnalogChannel analog{QStringLiteral("Q1:I%1").arg(channel), QStringLiteral("А"), {}};
        for (int i = 0; i < 8; ++i)
            analog.samples.push_back(static_cast<int16_t>(1 + channel + i));
        wide.Add(analog);
    }
    wide.Add(DiscreteChannel{QStringLiteral("Q1:x"), 0, {}});
    const Scene scene("Тип Comtrade BIN=1", {wide});
    const Copy copy(scene);
    copy.Write("dat", copy.Bytes("dat").replace(8192, 4096, QByteArray(4096, '\0')));
    EXPECT_EQ(StateOf(scene, copy), RecordState::Unfinished);
}

TEST(TornRecord, IsForeignIfAStampThatIsLeftIsAnothers)
{
    Segments later = LongRecording();
    later[0].trigMicroseconds += 1;
    for (const Form& form : AllForms()) {
        if (form.cff)
            continue;
        const Scene scene(form.lines, LongRecording());
        const Copy copy(Scene(form.lines, later));
        copy.Write("cfg", With(copy.Bytes("cfg"), AllHoles[0]));
        for (int i = 0; i < 2; ++i) {
            const verify::Standing standing = scene.Find(copy.Directory());
            EXPECT_EQ(standing.state, RecordState::Foreign) << form.name;
            EXPECT_TRUE(standing.reason.contains("trigger: the record says")) << standing.reason;
            copy.Write("dat", QByteArray());
        }
    }
}

TEST(TornRecord, WithoutDataIsKnownByItsBeginOrItsStamps)
{
    const Scene scene("", LongRecording());
    const Copy copy(scene);
    copy.Write("dat", QByteArray());
    const QByteArray bytes = copy.Bytes("cfg");
    const auto state = [&](const QByteArray& text) {
        copy.Write("cfg", text);
        return StateOf(scene, copy);
    };
    EXPECT_EQ(state(With(bytes, {{0, 50}})), RecordState::Unfinished);
    EXPECT_EQ(state(With(bytes, {{25, 100}})), RecordState::Unfinished);
    EXPECT_EQ(state(With(bytes, {{0, 100}})), RecordState::Unfinished);
    EXPECT_EQ(state(With(bytes, {{0, 98}})), RecordState::Foreign); // nothing that tells whose it is
    EXPECT_EQ(state(QByteArray(100, '\0') + "Not to be lost\n"), RecordState::Foreign);
    EXPECT_EQ(state("Not to be lost\n" + QByteArray(100, '\0')), RecordState::Foreign);
}

TEST(TornRecord, WhoseMarkOfDataIsInAHoleIsKnownByItsData)
{
    for (const Form& form : AllForms()) {
        if (!form.cff)
            continue;
        const Scene scene(form.lines, LongRecording());
        const auto withoutMark = [&](const Copy& copy) {
            QByteArray bytes = copy.Bytes("cff");
            const int mark = bytes.indexOf("--- file type: DAT");
            const int begin = bytes.indexOf("\n2,"); // the stamps are in the hole, too
            copy.Write("cff", bytes.replace(begin, mark + 25 - begin, QByteArray(mark + 25 - begin, '\0')));
        };
        const Copy copy(scene);
        withoutMark(copy);
        EXPECT_TRUE(IsThisRecordings(StateOf(scene, copy))) << form.name;
        const Copy other(Scene(form.lines, Other()));
        withoutMark(other);
        EXPECT_EQ(StateOf(scene, other), RecordState::Foreign) << form.name;
        other.Write("cff",
                    other.Bytes("cff").left(400) + QByteArray(5000, '\0') + "another's, in another form");
        EXPECT_EQ(StateOf(scene, other), RecordState::Foreign) << form.name;
    }
}

TEST(TornRecord, OfAContainerWithoutDataIsKnownByItsStamps)
{
    Segments later = LongRecording();
    later[0].trigMicroseconds += 1;
    for (const Form& form : AllForms()) {
        if (!form.cff)
            continue;
        const Scene scene(form.lines, LongRecording());
        const Scene stranger(form.lines, later);
        const Copy copy(scene);
        QByteArray bytes = copy.Bytes("cff");
        const int data = BeginOfData(form, bytes);
        bytes.replace(data, bytes.size() - data, QByteArray(bytes.size() - data, '\0'));
        for (const int hole : {15, 100}) { // of the mark of the configuration, and more
            copy.Write("cff", bytes.replace(10, hole, QByteArray(hole, '\0')));
            EXPECT_EQ(StateOf(scene, copy), RecordState::Unfinished) << form.name << ' ' << hole;
            EXPECT_EQ(StateOf(stranger, copy), RecordState::Foreign) << form.name << ' ' << hole;
        }
    }
}

// Each line that is left is the recording's; but to look at any number of holes would take any time.
TEST(TornRecord, WithMoreHolesThanAFailureLeavesIsForeign)
{
    const Scene scene("", LongRecording());
    const Copy copy(scene);
    copy.Remove("cfg");
    QByteArray bytes = copy.Bytes("dat");
    int line = 0;
    for (int i = 0; i < 700; ++i, line = bytes.indexOf('\n', line) + 1) {
        if (i == 400) {
            copy.Write("dat", bytes);
            EXPECT_EQ(StateOf(scene, copy), RecordState::Unfinished);
        }
        bytes[line] = '\0';
        bytes[line + 4] = '\0';
    }
    copy.Write("dat", bytes);
    EXPECT_EQ(StateOf(scene, copy), RecordState::Foreign);
}
