// Records of other makers, each ugly in one way: what is read, what is found, and that strict reading refuses
// it.
#include "ugly.h"

#include <gtest/gtest.h>

namespace {

using Spoil = void (*)(UglyRecord& record);

struct Change
{
    const char* good;
    const char* read;
};

struct Ugly
{
    const char* name;
    Spoil spoil;
    std::vector<Change> changes; // of what is read
    QStringList findings;
    const char* strict; // error of strict reading without the directory; empty: it reads the same
};

void PrintTo(const Ugly& ugly, std::ostream* out)
{
    *out << ugly.name;
}

class UglyRecords : public testing::TestWithParam<Ugly>
{};

QString Expected(const std::vector<Change>& changes)
{
    QString expected = GoodReading();
    for (const Change& change : changes) {
        EXPECT_TRUE(expected.contains(change.good)) << change.good;
        expected.replace(change.good, change.read);
    }
    return expected;
}

const std::vector<Ugly>& OneFault();
const std::vector<Ugly>& SeveralFaults();

} // namespace

TEST_P(UglyRecords, AreReadWithTheirValuesAndWhatWasForgivenIsReported)
{
    const Ugly& ugly = GetParam();
    UglyRecord record;
    ugly.spoil(record);
    const TestDirectory directory;
    const QString path = record.Write(directory);
    const QString expected = Expected(ugly.changes);
    QString read;
    EXPECT_EQ(ErrorOf([&] { read = ReadAll(path); }), "");
    EXPECT_EQ(read, expected);
    EXPECT_EQ(FindingsOf(path), ugly.findings);
    QString strict;
    EXPECT_EQ(ErrorOf([&] { strict = ReadAll(path, comtrade::Strict()); }).remove(directory.Path() + '/'),
              ugly.strict);
    if (*ugly.strict == '\0') {
        EXPECT_EQ(strict, expected);
    }
}

INSTANTIATE_TEST_SUITE_P(OneFault, UglyRecords, testing::ValuesIn(OneFault()),
                         [](const auto& ugly) { return std::string(ugly.param.name); });
INSTANTIATE_TEST_SUITE_P(SeveralFaults, UglyRecords, testing::ValuesIn(SeveralFaults()),
                         [](const auto& ugly) { return std::string(ugly.param.name); });

namespace {

const std::vector<Ugly>& OneFault()
{
    static const std::vector<Ugly> records{
        {"Good", [](UglyRecord&) {}, {}, {}, ""},
        {"Revision1991",
         [](UglyRecord& r) {
             r.Line(1, "Station,Recorder");
             r.Line(3, "1,Ia,A,Q1,A,0.5,-1,2.5,-32767,32767");
             r.Line(4, "2,Ub,B,Q2,kV,0.001,0,0,-99999,99998");
             r.Line(5, "1,Trip,1");
             r.Line(9, "01/31/24,11:59:59.750000");
             r.Line(10, "01/31/24,12:00:00.250000");
             r.Remove(12);
         },
         {{"1999", "1991"}, {"1000|5|P", "1|1|P"}, {"1|1|S", "1|1|P"}, {"Trip||Q1", "Trip||"}},
         {},
         ""},
        {"YearOfAnotherEdition",
         [](UglyRecord& r) { r.Line(1, "Station,Recorder,2001"); },
         {},
         {"rec.cfg:1:18 error revisionUnknown"},
         "rec.cfg, line 1: revision '2001' is none of 1991, 1999 and 2013"},
        {"EmptyYear",
         [](UglyRecord& r) { r.Line(1, "Station,Recorder,"); },
         {},
         {"rec.cfg:1:18 error revisionUnknown"},
         "rec.cfg, line 1: the first line has no revision year, which stands for 1991"},
        {"NoYear",
         [](UglyRecord& r) { r.Line(1, "Station,Recorder"); },
         {},
         {"rec.cfg:1:0 error revisionUnknown"},
         "rec.cfg, line 1: the first line has no revision year, which stands for 1991"},
        {"CommaInTheStation",
         [](UglyRecord& r) { r.Line(1, "Station, north,Recorder,1999"); },
         {{"Station|", "Station, north|"}},
         {"rec.cfg:1:1 error commaInText"},
         "rec.cfg, line 1: a text holds a comma, which separates fields"},
        {"CommaAtTheEndOfLines",
         [](UglyRecord& r) {
             r.Line(2, "3,2A,1D,");
             r.Line(8, "2400,4,,");
         },
         {},
         {"rec.cfg:2:9 warning extraFields", "rec.cfg:8:8 warning extraFields"},
         "rec.cfg, line 2: the line ends with a comma"},
        {"CountsInTheOtherOrder",
         [](UglyRecord& r) { r.Line(2, "3,1D,2A"); },
         {},
         {"rec.cfg:2:3 error wordForm"},
         "rec.cfg, line 2: the count of status channels comes before that of analog channels"},
        {"CountsWithBlanksAndSmallLetters", [](UglyRecord& r) { r.Line(2, " 3 , 2 a, 1d "); }, {}, {}, ""},
        {"TotalThatIsNotTheSum",
         [](UglyRecord& r) { r.Line(2, "9,2A,1D"); },
         {},
         {"rec.cfg:2:1 error countsDiffer"},
         "rec.cfg, line 2: 9 channels in all are not 2 and 1"},
        {"CyrillicLettersOfCountsAndSides",
         [](UglyRecord& r) {
             r.Line(2, "3,2А,1D");
             r.Line(3, "1,Ia,A,Q1,A,0.5,-1,2.5,-32767,32767,1000,5,Р");
         },
         {},
         {"rec.cfg:2:3 error wordForm", "rec.cfg:3:44 error wordForm"},
         "rec.cfg, line 2: the letter of '2А' is not the Latin A"},
        {"CommaInTheNameOfAChannel",
         [](UglyRecord& r) { r.Line(3, "1,Ia, feeder 1,A,Q1,A,0.5,-1,2.5,-32767,32767,1000,5,P"); },
         {{"|Ia|", "|Ia, feeder 1|"}},
         {"rec.cfg:3:3 error commaInText"},
         "rec.cfg, line 3: a text holds a comma, which separates fields"},
        {"CommaInTheCircuit",
         [](UglyRecord& r) { r.Line(3, "1,Ia,A,Feeder 1,left,A,0.5,-1,2.5,-32767,32767,1000,5,P"); },
         {{"|A|Q1|A|", "|A|Feeder 1,left|A|"}},
         {"rec.cfg:3:8 error commaInText"},
         "rec.cfg, line 3: a text holds a comma, which separates fields"},
        {"QuotationMarksAroundAComma",
         [](UglyRecord& r) { r.Line(3, "1,\"Ia, feeder\",A,Q1,A,0.5,-1,2.5,-32767,32767,1000,5,P"); },
         {{"|Ia|", "|Ia, feeder|"}},
         {"rec.cfg:3:3 error quotationMarks"},
         "rec.cfg, line 3: quotation marks do not keep a comma inside of a field"},
        {"EmptyTextsOfAChannel",
         [](UglyRecord& r) { r.Line(3, "1,Ia,,,,0.5,-1,2.5,-32767,32767,1000,5,P"); },
         {{"|Ia|A|Q1|A|", "|Ia||||"}},
         {},
         ""},
        {"EmptyNumbersOfAChannel",
         [](UglyRecord& r) { r.Line(4, ",Ub,B,Q2,kV,,,,,,,,"); },
         {{"0.001|0|0|-99999|99998|1|1|S", "1|0|0|-99998|99998|1|1|P"}},
         {"rec.cfg:4:1 error fieldEmpty", "rec.cfg:4:13 error fieldEmpty", "rec.cfg:4:14 error fieldEmpty",
          "rec.cfg:4:16 error fieldEmpty", "rec.cfg:4:17 error fieldEmpty", "rec.cfg:4:18 error fieldEmpty",
          "rec.cfg:4:19 error fieldEmpty", "rec.cfg:4:20 error fieldEmpty"},
         "rec.cfg, line 4: channel number is empty"},
        {"TenFieldsInANewRecord",
         [](UglyRecord& r) { r.Line(4, "2,Ub,B,Q2,kV,0.001,0,0,-99999,99998"); },
         {{"1|1|S", "1|1|P"}},
         {"rec.cfg:4:0 error fieldsLacking"},
         "rec.cfg, line 4: an analog channel needs 13 fields, there are 10"},
        {"TwelveFieldsWithoutTheSide",
         [](UglyRecord& r) { r.Line(3, "1,Ia,A,Q1,A,0.5,-1,2.5,-32767,32767,1000,5"); },
         {},
         {"rec.cfg:3:0 error fieldsLacking"},
         "rec.cfg, line 3: an analog channel needs 13 fields, there are 12"},
        {"ExponentsSignsAndBlanks",
         [](UglyRecord& r) {
             r.Line(3, "1 , Ia ,A,Q1,A, +5.0E-01,-1.0E+00, 2.5, -3.2767e4,+32767,1E3,5.,p");
         },
         {},
         {},
         ""},
        {"ExponentsOfFortran",
         [](UglyRecord& r) { r.Line(3, "1,Ia,A,Q1,A,0.5D+00,-1,2.5,-32767,32767,1000,5,P"); },
         {},
         {"rec.cfg:3:13 error numberForm"},
         "rec.cfg, line 3: multiplier a is '0.5D+00', which is no plain number"},
        {"LimitsSwapped",
         [](UglyRecord& r) { r.Line(4, "2,Ub,B,Q2,kV,0.001,0,0,99998,-99999,1,1,S"); },
         {{"-99999|99998", "99998|-99999"}},
         {"rec.cfg:4:24 error limitsSwapped"},
         ""},
        {"StatusLineOfThreeFields",
         [](UglyRecord& r) { r.Line(5, "1,Trip,1"); },
         {{"Trip||Q1", "Trip||"}},
         {"rec.cfg:5:0 error fieldsLacking"},
         "rec.cfg, line 5: a status channel needs 5 fields, there are 3"},
        {"StatusLineOfFourFields",
         [](UglyRecord& r) { r.Line(5, "1,Trip,,1"); },
         {{"Trip||Q1", "Trip||"}},
         {"rec.cfg:5:0 error fieldsLacking"},
         "rec.cfg, line 5: a status channel needs 5 fields, there are 4"},
        {"StatusLineWithoutItsState",
         [](UglyRecord& r) { r.Line(5, "1,Trip,,Q1,"); },
         {{"Trip||Q1|1", "Trip||Q1|0"}},
         {"rec.cfg:5:12 error fieldEmpty"},
         "rec.cfg, line 5: normal state is empty"},
        {"FrequencyWithItsUnit",
         [](UglyRecord& r) { r.Line(6, "50 Hz"); },
         {},
         {"rec.cfg:6:1 error numberForm"},
         "rec.cfg, line 6: line frequency is '50 Hz', which is no plain number"},
        {"EmptyFrequency", [](UglyRecord& r) { r.Line(6, ""); }, {{"50 Hz", "0 Hz"}}, {}, ""},
        {"NoLineWithTheFrequency",
         [](UglyRecord& r) { r.Remove(6); },
         {{"50 Hz", "0 Hz"}},
         {"rec.cfg:6:0 error lineLacking"},
         "rec.cfg, line 6: the line with line frequency is missing"},
        {"SeveralRates",
         [](UglyRecord& r) { r.Line(7, "2\r\n2400,2"); },
         {{"2400/4", "2400/2 2400/4"}},
         {},
         ""},
        {"MoreRatesThanAnnounced",
         [](UglyRecord& r) { r.Insert(8, "1200,2"); },
         {{"2400/4", "1200/2 2400/4"}},
         {"rec.cfg:7:1 error countsDiffer"},
         "rec.cfg, line 7: 1 sampling rates are announced, there are 2"},
        {"NoRateButTheNumberOfSamples",
         [](UglyRecord& r) {
             r.Line(7, "0");
             r.Line(8, "0,4");
         },
         {{"2400/4", "0/4"}},
         {},
         ""},
        {"NoRateAtAll",
         [](UglyRecord& r) {
             r.Line(7, "0");
             r.Remove(8);
         },
         {{"2400/4", "0/4"}},
         {"rec.cfg:7:1 error lineLacking"},
         "rec.cfg, line 7: 0 sampling rates are announced, there are 0"},
        {"NumberOfSamplesZero",
         [](UglyRecord& r) { r.Line(8, "2400,0"); },
         {},
         {"rec.cfg:8:6 error countsDiffer"},
         ""},
        {"MonthBeforeDay",
         [](UglyRecord& r) {
             r.Line(9, "01/31/2024,11:59:59.750000");
             r.Line(10, "02/01/2024,12:00:00.250000");
         },
         {{"2024-01-31T12", "2024-02-01T12"}},
         {"rec.cfg:9:1 error dateOrder", "rec.cfg:10:1 error dateOrder"},
         "rec.cfg, line 9: '01/31/2024,11:59:59.750000' is no date and time"},
        {"YearOfTwoDigits",
         [](UglyRecord& r) {
             r.Line(9, "31/01/98,11:59:59.750000");
             r.Line(10, "31/01/98,12:00:00.250000");
         },
         {{"2024-01-31T11", "1998-01-31T11"}, {"2024-01-31T12", "1998-01-31T12"}},
         {"rec.cfg:9:1 error dateForm", "rec.cfg:10:1 error dateForm"},
         "rec.cfg, line 9: the year in '31/01/98' should have 4 digits"},
        {"DatesWithPointsAndDashes",
         [](UglyRecord& r) {
             r.Line(9, "31.01.2024,11:59:59.750000");
             r.Line(10, "2024-01-31,12:00:00.250000");
         },
         {},
         {"rec.cfg:9:1 error dateForm", "rec.cfg:10:1 error dateForm", "rec.cfg:10:1 error dateOrder"},
         "rec.cfg, line 9: '31.01.2024' separates day, month and year otherwise than with strokes"},
        {"BlankBetweenDateAndTime",
         [](UglyRecord& r) { r.Line(9, "31/01/2024 11:59:59.750000"); },
         {},
         {"rec.cfg:9:1 error dateForm"},
         "rec.cfg, line 9: no comma separates date and time in '31/01/2024 11:59:59.750000'"},
        {"DecimalCommaOfTheSeconds",
         [](UglyRecord& r) { r.Line(9, "31/01/2024,11:59:59,750000"); },
         {},
         {"rec.cfg:9:21 error timeForm"},
         "rec.cfg, line 9: a comma separates the decimals of the seconds"},
        {"SixtySeconds",
         [](UglyRecord& r) { r.Line(10, "31/01/2024,23:59:60.250000"); },
         {{"2024-01-31T12:00:00", "2024-02-01T00:00:00"}},
         {"rec.cfg:10:12 warning timeForm"},
         ""},
        {"TwentyFourHours",
         [](UglyRecord& r) { r.Line(10, "31/01/2024,24:00:00.250000"); },
         {{"2024-01-31T12:00:00", "2024-02-01T00:00:00"}},
         {"rec.cfg:10:12 error timeForm"},
         "rec.cfg, line 10: '24:00:00.250000' has 24 hours"},
        {"SevenDecimals",
         [](UglyRecord& r) { r.Line(9, "31/01/2024,11:59:59.7500000"); },
         {{"59.750000", "59.7500000"}},
         {"rec.cfg:9:12 warning timeForm"},
         ""},
        {"NoDecimals",
         [](UglyRecord& r) { r.Line(10, "31/01/2024,12:00:00"); },
         {{"12:00:00.250000", "12:00:00"}},
         {},
         ""},
        {"ClockThatWasNotSet",
         [](UglyRecord& r) { r.Line(10, "00/00/0000,00:00:00.000000"); },
         {{"2024-01-31T12:00:00.250000", "2024-01-31T11:59:59.750000"}},
         {"rec.cfg:10:1 error clockNotSet"},
         "rec.cfg, line 10: trigger time is '00/00/0000', which is no date"},
        {"TypeByAnotherName",
         [](UglyRecord& r) { r.Line(11, "asc"); },
         {},
         {"rec.cfg:11:1 error wordForm"},
         "rec.cfg, line 11: data file type 'asc' is none of ASCII, BINARY, BINARY32 and FLOAT32"},
        {"TypeInSmallLettersAndBlanks", [](UglyRecord& r) { r.Line(11, "  ascii "); }, {}, {}, ""},
        {"NoTimeMultiplier",
         [](UglyRecord& r) { r.Remove(12); },
         {},
         {"rec.cfg:11:0 error lineLacking"},
         "rec.cfg, line 11: the line with time multiplier is missing"},
        {"LinesOfRevision2013",
         [](UglyRecord& r) { r.Insert(13, "+3h00,+3h00\r\n0,3"); },
         {{"ASCII x1", "ASCII x1\n+3h00|+3h00|0|3"}},
         {"rec.cfg:13:0 warning linesLeftOver"},
         "rec.cfg, line 13: lines with time codes are of revision 2013"},
        {"OneLineOfRevision2013",
         [](UglyRecord& r) {
             r.Line(1, "Station,Recorder,2013");
             r.Insert(13, "-5h30,-5h30");
         },
         {{"|1999", "|2013"}, {"ASCII x1", "ASCII x1\n-5h30|-5h30||"}},
         {"rec.cfg:13:0 error lineLacking"},
         "rec.cfg, line 13: the line with time quality is missing"},
        {"BlankLinesBetween",
         [](UglyRecord& r) {
             r.Insert(6, "");
             r.Insert(2, " ");
         },
         {},
         {"rec.cfg:2:0 warning blankLine", "rec.cfg:7:0 warning blankLine"},
         "rec.cfg, line 2: a blank line"},
        {"BlankLinesAtTheEnd",
         [](UglyRecord& r) { r.after = "\r\n \r\n"; },
         {},
         {"rec.cfg:13:0 note blankLine", "rec.cfg:14:0 note blankLine"},
         ""},
        {"TextAtTheEnd",
         [](UglyRecord& r) { r.after = "made by a recorder\r\n"; },
         {},
         {"rec.cfg:13:0 warning linesLeftOver"},
         ""},
        {"EndMarkOfDos",
         [](UglyRecord& r) { r.after = "\x1A"; },
         {},
         {"rec.cfg:13:0 note endOfFileMark"},
         "rec.cfg, line 13: the text ends with the byte 1A"},
        {"BytesZeroAtTheEnd",
         [](UglyRecord& r) { r.after = QByteArray(3, '\0'); },
         {},
         {"rec.cfg:13:0 warning endOfFileMark"},
         "rec.cfg, line 13: the text ends with bytes 0"},
        {"LineFeedsAlone", [](UglyRecord& r) { r.lineEnd = "\n"; }, {}, {"rec.cfg:1:0 note lineEnds"}, ""},
        {"CarriageReturnsAlone",
         [](UglyRecord& r) { r.lineEnd = "\r"; },
         {},
         {"rec.cfg:1:0 warning lineEnds"},
         "rec.cfg, line 1: lines should end with CR LF, this one ends with CR"},
        {"CarriageReturnsTwice",
         [](UglyRecord& r) { r.lineEnd = "\r\r\n"; },
         {},
         {"rec.cfg:1:0 warning lineEnds"},
         "rec.cfg, line 1: lines should end with CR LF, this one ends with CR CR LF"},
        {"ByteOrderMark",
         [](UglyRecord& r) { r.before = "\xEF\xBB\xBF"; },
         {},
         {"rec.cfg:1:0 warning byteOrderMark"},
         "rec.cfg, line 1: a byte order mark precedes the text"},
        {"Utf16",
         [](UglyRecord& r) { r.encoding = "UTF-16LE"; },
         {},
         {"rec.cfg:1:0 error notUtf8"},
         "rec.cfg, line 1: the text is UTF-16"},
        {"NamesInOtherCases",
         [](UglyRecord& r) {
             r.configurationName = "Rec.cFG";
             r.dataName = "rEC.dAT";
         },
         {},
         {"rEC.dAT:0:0 note fileName"},
         "Rec.cFG: there is no .dat file beside it"},
    };
    return records;
}

const std::vector<Ugly>& SeveralFaults()
{
    static const std::vector<Ugly> records{
        {"OldRecorderWithNewFields",
         [](UglyRecord& r) {
             r.Line(1, "Station,Recorder,1997");
             r.Line(5, "1,Trip,1");
             r.Line(9, "01/31/24,11:59:60");
             r.Line(10, "01/31/24,12:00:00.250000");
             r.Remove(12);
             r.lineEnd = "\n";
             r.after = "\x1A";
         },
         {{"Trip||Q1", "Trip||"}, {"11:59:59.750000", "12:00:00"}},
         {"rec.cfg:12:0 note endOfFileMark", "rec.cfg:1:0 note lineEnds",
          "rec.cfg:1:18 error revisionUnknown", "rec.cfg:5:0 error fieldsLacking",
          "rec.cfg:9:1 error dateForm", "rec.cfg:9:1 error dateOrder", "rec.cfg:9:10 warning timeForm",
          "rec.cfg:10:1 error dateForm", "rec.cfg:10:1 error dateOrder", "rec.cfg:11:0 error lineLacking"},
         "rec.cfg, line 12: the text ends with the byte 1A"},
    };
    return records;
}

} // namespace
