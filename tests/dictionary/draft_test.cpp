// The text of a first dictionary, and what the library makes of it.
#include "dictionary/draft.h"

#include "resorter/ResorterZuCmtrConv.h"
#include "station/station.h"
#include "support/device.h"

#include <gtest/gtest.h>

#include <QMap>

using dictionary::DictionaryLines;
using dictionary::Signal;

namespace {

// Key and value of each entry, without the comments.
QMap<QString, QString> Entries(const QStringList& lines)
{
    QMap<QString, QString> entries;
    for (const QString& line : lines) {
        if (!line.startsWith(QLatin1Char(';')) && line.contains(QLatin1Char('=')))
            entries[line.section('=', 0, 0)] = line.section('=', 1).section(" ; ", 0, 0);
    }
    return entries;
}

// The sample station's own entries, without what nobody can guess.
QMap<QString, QString> StationEntries()
{
    QMap<QString, QString> entries = Entries(station::MakeIni({}).split('\n'));
    for (QString& value : entries)
        value = value.section(" VL_IND=", 0, 0).section(" CIM_ID=", 0, 0);
    return entries;
}

struct Channels
{
    std::vector<Signal> analog;
    std::vector<Signal> discrete;
};

Channels StationChannels()
{
    Channels channels;
    const recorderfile::Recording recording =
        station::MakeRecording({}, station::StartKind::PositiveSequence).front();
    for (const auto& section : recording.sections) {
        if (const auto* analog = std::get_if<recorderfile::AnalogChannel>(&section))
            channels.analog.push_back({analog->name, analog->unit});
        else if (const auto* discrete = std::get_if<recorderfile::DiscreteChannel>(&section))
            channels.discrete.push_back({discrete->name, {}});
    }
    return channels;
}

} // namespace

TEST(DictionaryDraft, GuessesAllSignalsOfTheSampleStation)
{
    const Channels channels = StationChannels();
    const QMap<QString, QString> drafted = Entries(DictionaryLines(channels.analog, channels.discrete));
    const QMap<QString, QString> known = StationEntries();
    int same = 0;
    for (auto entry = known.constBegin(); entry != known.constEnd(); ++entry) {
        if (entry.key().startsWith('A') || entry.key().startsWith('D')) {
            EXPECT_EQ(drafted.value(entry.key()), entry.value()) << entry.key();
            ++same;
        }
    }
    EXPECT_EQ(same, 32 + 64);
}

TEST(DictionaryDraft, MarksEveryGuessAndEveryDoubt)
{
    const QStringList lines =
        DictionaryLines({{"ВЛ-110 А:Ia", "А"}, {"АТ-1:Ia", "А"}, {"Прочее:x", "мм"}}, {});
    EXPECT_EQ(lines,
              QStringList({"nAnMax=3", "A01=ВЛ-110 А:Ia,V_L=110 E_G=L S_G=CT ; guess",
                           "A02=АТ-1:Ia,V_L=110 E_G=AT S_G=CT ; guess: no voltage level in the name",
                           "A03=Прочее:x ; guess: no voltage level in the name; not all groups could be "
                           "guessed: add V_L, E_G and the others",
                           "nDiMax=0", "nBayMax=3",
                           "BAY01=ВЛ-110 А,ВЛ-110 А ; guess: the text to show, and after a comma the circuit "
                           "of its voltages",
                           "BAY02=АТ-1,АТ-1 ; guess: the text to show, and after a comma the circuit of its "
                           "voltages",
                           "BAY03=Прочее,Прочее ; guess: the text to show, and after a comma the circuit of "
                           "its voltages"}));
}

TEST(DictionaryDraft, LeavesOutNamesThatTheIniFileCannotHold)
{
    const QStringList lines = DictionaryLines({{"a,b:Ia", "А"},
                                               {"a;b:Ia", "А"},
                                               {" a:Ia", "А"},
                                               {"", "А"},
                                               {"a\nb=c:Ia", "А"},
                                               {"Q:Ia", "А"},
                                               {"Q:Ia", "А"}},
                                              {});
    EXPECT_EQ(lines.mid(0, 8),
              QStringList({"nAnMax=1", "; [a,b:Ia] cannot be in the dictionary: it holds a comma",
                           "; [a;b:Ia] cannot be in the dictionary: it holds a semicolon",
                           "; [ a:Ia] cannot be in the dictionary: it starts or ends with a blank",
                           "; [] cannot be in the dictionary: it is empty",
                           "; [a?b-c:Ia] cannot be in the dictionary: it holds a control character",
                           "A01=Q:Ia ; guess: no voltage level in the name; not all groups could be guessed: "
                           "add V_L, E_G and the others",
                           "; [Q:Ia] is there already: another channel has the same name"}));
}

TEST(DictionaryDraft, LoadsIntoTheLibraryAsWritten)
{
    const std::vector<Signal> channels = {{"ВЛ-110 [А]=\"б\":Ia", "А"}, {"#x:Ia", "А"}, {"ВЛ-110 Б:%1", "А"}};
    TestStation station(DictionaryLines(channels, {{"ВЛ-110:Пуск", {}}}).join('\n').toUtf8() + '\n');
    const ResorterZuCmtrConv& resorter = *station.Device().Resorter;
    ASSERT_EQ(resorter.AnDictionary.size(), 3U);
    for (size_t i = 0; i < channels.size(); ++i)
        EXPECT_EQ(resorter.AnDictionary[i]->FullName, channels[i].name);
    EXPECT_TRUE(resorter.AnDictionary[0]->HasSortParams);
    EXPECT_FALSE(resorter.AnDictionary[1]->HasSortParams);
    EXPECT_TRUE(resorter.DiDictionary.at(0)->HasSortParams);
}
