// Words by which entries are found: both databases find the same.
#include "catalogue/words.h"

#include "anycatalogue.h"

namespace {

const char* const Names[] = {"ВЛ-110 кВ Восточная – Ёлкино II",
                             "АТ-1 330/110",
                             "3U0 ОВ",
                             "Откл. Q1",
                             "QS-2.ШР",
                             "КЗ на землю (ф.А)",
                             "it's \"quoted\" & !|:*",
                             "ТН №5; -1e5 10.5",
                             "Майская й ё",
                             "UROV_ABC",
                             "e\xCC\x81tude",
                             "Straße ΣΑΣ",
                             "a/b/c.d@e.f",
                             "I²t 3U₀",
                             "Ф\xD0\xB8\xCC\x86"};

// What is searched for, and the names that are found, by number.
const std::pair<const char*, const char*> Searches[] = {
    {"ВЛ-110", "0"}, {"вл 110", "0"},    {"110", "0 1"},     {"11", "0 1"},   {"10", "7"},
    {"елк", "0"},    {"ЁЛКИНО", "0"},    {"ii", "0"},        {"3U0", "2"},    {"3u", "2 13"},
    {"u0", ""},      {"q1", "3"},        {"Q", "3 4 6"},     {"qs-2", "4"},   {"кз ф.а", "5"},
    {"на КЗ", "5"},  {"quoted it", "6"}, {"'", ""},          {"\"", ""},      {"!|:*&", ""},
    {"№5", "7"},     {"-1e5", "7"},      {"10.5", "7"},      {"май", "8"},    {"маи", ""},
    {"е", "0 8"},    {"urov", "9"},      {"abc", "9"},       {"étude", "10"}, {"straße", "11"},
    {"σας", "11"},   {"b c.d", "12"},    {"a/b", "12"},      {"", ""},        {"и кз", ""},
    {"AND", ""},     {"фй", "14"},       {"NEAR(кз на)", ""}};

class WordsTest : public AnyCatalogue
{
protected:
    QString Found(const QString& text) const
    {
        const QString value = catalogue::SearchFor(text, GetParam());
        if (value.isEmpty())
            return QString();
        const char* command =
            IsServer() ? "SELECT entry - 1 FROM search WHERE words @@ CAST(? AS TSQUERY) ORDER BY entry"
                       : "SELECT rowid - 1 FROM search WHERE search MATCH ? ORDER BY rowid";
        return Rows(command, {value}).join(' ');
    }
};

} // namespace

TEST(Words, AreRunsOfLettersAndDigits)
{
    const auto words = [](const char* text) { return catalogue::WordsIn(QString::fromUtf8(text)).join(' '); };
    EXPECT_EQ(words("ВЛ-110 кВ, 3U0/Q1_x (вл)"), QString::fromUtf8("вл 110 кв 3u0 q1 x"));
    EXPECT_EQ(words("Ёж ёЖ"), QString::fromUtf8("еж"));
    EXPECT_EQ(words("\xD0\xB8\xCC\x86 за\xCC\x81мок"),
              QString::fromUtf8("й замок")); // a letter of two characters, a stress
    EXPECT_EQ(words(" -- "), "");
}

TEST_P(WordsTest, SameIsFoundInBoth)
{
    catalogue::Catalogue one(address);
    for (size_t i = 0; i < std::size(Names); ++i) {
        catalogue::Entry entry = RecordingAt(Path(QStringLiteral("zz%1.ZU").arg(i)),
                                             QByteArray::number(static_cast<int>(i)), static_cast<int>(i));
        entry.station = entry.recorder = entry.circuit = QString();
        entry.digital = {{"", QString::fromUtf8(Names[i]), "", 1, 0.0}};
        entry.events.clear();
        one.Put({entry}); // one after another, so that the numbers follow
    }
    for (const auto& [text, expected] : Searches)
        EXPECT_EQ(Found(QString::fromUtf8(text)), expected) << text;
}

TEST_P(WordsTest, FollowTheEntry)
{
    catalogue::Catalogue one(address);
    catalogue::Entry entry = RecordingAt(Path("a.ZU"), "x");
    one.Put({entry});
    EXPECT_EQ(Found(QString::fromUtf8("южная")), "0");
    entry.circuit = QString::fromUtf8("Северная");
    entry.digital.clear();
    entry.events.clear();
    entry.analog.clear();
    one.Put({entry});
    EXPECT_EQ(Found(QString::fromUtf8("южная")), "");
    EXPECT_EQ(Found(QString::fromUtf8("северная")), "0");
}

TEST_P(WordsTest, AreFoundByHand)
{
    catalogue::Catalogue one(address);
    one.Put({RecordingAt(Path("a.ZU"), "x")});
    const char* command =
        IsServer() ? "SELECT e.path FROM entries e JOIN search s ON s.entry = e.id WHERE words @@ "
                     "to_tsquery('simple', 'южная & 110')"
                   : "SELECT e.path FROM entries e JOIN search s ON s.rowid = e.id WHERE search MATCH "
                     "'Южная 110'";
    EXPECT_EQ(Rows(QString::fromUtf8(command)), QStringList{Stored("a.ZU")});
}

FOR_BOTH(WordsTest);
