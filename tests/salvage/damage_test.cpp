// Recordings with bad bytes in them.
#include "scene.h"

#include "recording/zufileformat.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace recorderfile;

namespace {

AnalogChannel Analog(const QString& name)
{
    AnalogChannel channel{name, QStringLiteral("А"), {}};
    for (int i = 0; i < 200; ++i)
        channel.samples.push_back(static_cast<int16_t>(1 + i * 37 % 500));
    return channel;
}

// Three analog and two discrete channels.
Recording Five()
{
    Recording recording;
    recording.Add(Analog("Q:a")).Add(Analog("Q:b")).Add(Analog("Q:c"));
    recording.Add(DiscreteChannel{"Q:x", 0, {{0, 1}, {7000, 0}}});
    recording.Add(DiscreteChannel{"Q:y", 0, {{0, 1}}});
    return recording;
}

AnalogChannel& AnalogOf(Recording& recording, size_t section)
{
    return std::get<AnalogChannel>(recording.sections.at(section));
}

// Names of the channels that are whole, with blanks between.
QString WholeIn(const QByteArray& file)
{
    const TestDirectory directory;
    const salvage::Examination found = salvage::Examine({directory.Write("rec.ZU", file)});
    if (!found.isDamaged)
        return "all";
    QStringList names;
    if (found.plan) {
        for (const salvage::Section& section : found.plan->segments.front().sections) {
            if (found.plan->choice.Has(section))
                names << section.name;
        }
    }
    return names.join(' ');
}

// What the library loads of a channel.
QMap<QString, QByteArray> Loaded(const QString& path)
{
    ZuFileFormat file;
    EXPECT_TRUE(file.Load(path)) << file.ErrorText;
    QMap<QString, QByteArray> channels;
    for (const AnChannelData* channel : file.AnChannels)
        channels[channel->Name] = QByteArray(reinterpret_cast<const char*>(channel->Samples),
                                             static_cast<int>(channel->m_HeaderAn.points * 2));
    for (const DiChannelData* channel : file.DiChannels)
        channels[channel->Name] = QByteArray(reinterpret_cast<const char*>(channel->m_pData),
                                             static_cast<int>(channel->ChangeCount * 5));
    return channels;
}

} // namespace

TEST(Damage, OfTheLastSectionLeavesTheOthers)
{
    const QByteArray file = Encode(Five());
    const int begin = PlacesIn(file).back().begin;
    EXPECT_EQ(WholeIn(file), "all");
    EXPECT_EQ(WholeIn(file.left(begin) + QByteArray(86, '\xA5')), "Q:a Q:b Q:c Q:x");
    EXPECT_EQ(WholeIn(file.left(begin) + QByteArray(86, '\0')), "Q:a Q:b Q:c Q:x");
    Recording longer = Five();
    std::get<DiscreteChannel>(longer.sections.back()).dataLength = 500;
    EXPECT_EQ(WholeIn(Encode(longer)), "Q:a Q:b Q:c Q:x");
    Recording wrong = Five();
    std::get<DiscreteChannel>(wrong.sections.back()).count = 2;
    EXPECT_EQ(WholeIn(Encode(wrong)), "Q:a Q:b Q:c Q:x");
}

TEST(Damage, OfOneChannelLeavesThoseAfterIt)
{
    for (const size_t bad : {0U, 1U, 2U}) {
        Recording recording = Five();
        AnalogOf(recording, bad).compressed = 1;
        AnalogOf(recording, bad).rawData = QByteArray(100, '\x77');
        QStringList expected = {"Q:a", "Q:b", "Q:c", "Q:x", "Q:y"};
        expected.removeAt(static_cast<int>(bad));
        EXPECT_EQ(WholeIn(Encode(recording)), expected.join(' '));
    }
}

TEST(Damage, OfALengthLosesWhatComesAfter)
{
    Recording recording = Five();
    AnalogOf(recording, 1).dataLength = 399; // the next header is not where this says
    EXPECT_EQ(WholeIn(Encode(recording)), "Q:a");
    EXPECT_EQ(WholeIn(Encode(Five()).left(PlacesIn(Encode(Five()))[3].begin)), "Q:a Q:b Q:c");
    Recording both = Five();
    AnalogOf(both, 1).points = 0; // and the end is missing, so that nothing proves the length right
    const QByteArray file = Encode(both);
    EXPECT_EQ(WholeIn(file), "Q:a Q:c Q:x Q:y");
    EXPECT_EQ(WholeIn(file.left(file.size() - 1)), "Q:a");
}

TEST(Damage, LeavesOutAnalogChannelsThatDifferFromMost)
{
    Recording rate = Five();
    AnalogOf(rate, 0).rate = 1200;
    EXPECT_EQ(WholeIn(Encode(rate)), "Q:b Q:c Q:x Q:y");
    AnalogOf(rate, 0).rate = std::nanf("");
    EXPECT_EQ(WholeIn(Encode(rate)), "Q:b Q:c Q:x Q:y");
    Recording points = Five();
    AnalogOf(points, 2).samples.resize(100);
    EXPECT_EQ(WholeIn(Encode(points)), "Q:a Q:b Q:x Q:y");
}

TEST(Damage, KeepsSectionsThatAreNoChannels)
{
    Recording recording = Five();
    recording.sections.insert(recording.sections.begin() + 1, OtherSection{2, "text", "note"});
    const QByteArray file = Encode(recording);
    const TestDirectory directory;
    const salvage::Examination found =
        salvage::Examine({directory.Write("rec.ZU", file.left(file.size() - 1))});
    EXPECT_EQ(salvage::TextOf(found.plan->loss), "3 of 3 analog, 1 of 2 discrete channels");
    const QString copy =
        salvage::Write(found.plan->segments, found.plan->choice, directory.MakeDirectory("whole"));
    QByteArray expected = file.left(PlacesIn(file).back().begin);
    expected[253] = 5; // sections
    EXPECT_EQ(ReadBytes(copy), expected);
}

TEST(Damage, InTheHeaderLeavesNothing)
{
    QByteArray file = Encode(Five());
    EXPECT_EQ(WholeIn(file.left(262)), "");
    EXPECT_EQ(WholeIn(file.left(263)), "");
    EXPECT_EQ(WholeIn(QByteArray()), "");
    file[0] = '5';
    EXPECT_EQ(WholeIn(file), "");
}

// As after a failure of power, or an interrupted copy that had reserved its room.
TEST(Damage, ByZerosInTheLastChangeLosesTheChannel)
{
    Recording recording = Five();
    std::get<DiscreteChannel>(recording.sections[3]).changes = {{300, 1}, {7000, 1}, {7200, 0}};
    const QByteArray file = Encode(recording);
    const int end = PlacesIn(file)[3].end;
    const auto withZeros = [&](int begin) {
        return file.left(begin) + QByteArray(file.size() - begin, '\0');
    };
    EXPECT_EQ(WholeIn(withZeros(end)), "Q:a Q:b Q:c Q:x");
    EXPECT_EQ(WholeIn(withZeros(end - 2)), "Q:a Q:b Q:c Q:x"); // of the time, 201C0000h
    EXPECT_EQ(WholeIn(withZeros(end - 3)), "Q:a Q:b Q:c");
    EXPECT_EQ(WholeIn(withZeros(end - 5)), "Q:a Q:b Q:c");
}

TEST(Damage, ByZerosToTheEndInventsNothing)
{
    const TestDirectory directory;
    const QByteArray file = StationFiles(false).front();
    const QMap<QString, QByteArray> all = Loaded(directory.Write("all.ZU", file));
    const std::vector<Place> places = PlacesIn(file);
    const auto isInLastSample = [&](int begin) {
        return std::any_of(places.begin(), places.end(),
                           [&](const Place& place) { return place.end == begin + 1; });
    };
    for (int begin = 263; begin < places.back().begin; begin += 41) {
        if (isInLastSample(begin)) // half a sample; nothing shows that it was not zero before
            continue;
        QByteArray torn = file;
        torn.replace(begin, file.size() - begin, QByteArray(file.size() - begin, '\0'));
        const salvage::Examination found = salvage::Examine({directory.Write("rec.ZU", torn)});
        ASSERT_TRUE(found.isDamaged) << begin;
        int lost = 0; // that end before the zeros
        QMap<QString, QByteArray> saved;
        if (found.plan)
            saved = Loaded(
                salvage::Write(found.plan->segments, found.plan->choice, directory.MakeDirectory("whole")));
        for (const Place& place : places)
            lost += place.end <= begin && !saved.contains(place.name) ? 1 : 0;
        EXPECT_LE(lost, 1) << begin;
        for (auto channel = saved.begin(); channel != saved.end(); ++channel)
            EXPECT_EQ(*channel, all[channel.key()]) << begin << ' ' << channel.key().toStdString();
    }
}

TEST(Damage, OfAnyKindLeavesARecordingThatLoads)
{
    const TestDirectory directory;
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): the same in each run
    const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned int>(end)); };
    const QByteArray files[] = {StationFiles(false, 1, 6, 6).front(), StationFiles(true, 1, 6, 6).front()};
    int salvaged = 0;
    for (int round = 0; round < 600; ++round) {
        QByteArray file = files[round % 2];
        for (int i = below(8); i >= 0; --i)
            file[below(file.size())] = static_cast<char>(below(256));
        if (round % 3 == 0)
            file.truncate(below(file.size()));
        const salvage::Examination found = salvage::Examine({directory.Write("rec.ZU", file)});
        if (!found.plan)
            continue;
        ++salvaged;
        const QString copy =
            salvage::Write(found.plan->segments, found.plan->choice, directory.MakeDirectory("whole"));
        ZuFileFormat loaded;
        EXPECT_TRUE(loaded.Load(copy)) << loaded.ErrorText;
        EXPECT_TRUE(loaded.IsAnChRatesValid() && loaded.IsAnChPointsValid());
        EXPECT_EQ(loaded.AnChannels.size(), found.plan->loss.analog);
        EXPECT_EQ(loaded.DiChannels.size(), found.plan->loss.discrete);
    }
    EXPECT_GT(salvaged, 150);
}
