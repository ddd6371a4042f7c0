// Records that are ugly in several ways.
#include "ugly.h"

const std::vector<Ugly>& UglyInSeveralWays()
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
        {"RecorderOf1991WithLongYears",
         [](UglyRecord& r) {
             r.Line(1, "Station,Recorder");
             r.Line(3, "1,Ia,A,Q1,A,0.5,-1,2.5,-32767,32767");
             r.Line(4, "2,Ub,B,Q2,kV,0.001,0,,-99999,99998,");
             r.Line(5, "1,Trip,,Q1,1");
             r.Line(9, "1/31/2024, 11:59:59.750000");
             r.Line(10, "1/31/124, 12:00: 0.250000");
             r.Remove(12);
             r.encoding = "IBM866";
         },
         {{"1999", "1991"}, {"1000|5|P", "1|1|P"}, {"1|1|S", "1|1|P"}},
         {"rec.cfg:4:36 warning extraFields", "rec.cfg:5:9 warning extraFields",
          "rec.cfg:9:1 warning dateForm", "rec.cfg:10:1 error dateForm"},
         "rec.cfg, line 4: the line ends with a comma"},
        {"TextEditedByHand",
         [](UglyRecord& r) {
             r.before = "\xEF\xBB\xBF";
             r.lineEnd = "\n";
             r.Line(1, "\"Station, north\",Recorder,1999,");
             r.Insert(3, "");
             r.Line(13, "");
             r.after = "1\n\n";
         },
         {{"Station|", "Station, north|"}},
         {"rec.cfg:1:0 warning byteOrderMark", "rec.cfg:1:0 note lineEnds",
          "rec.cfg:1:32 warning extraFields", "rec.cfg:1:1 error quotationMarks",
          "rec.cfg:3:0 warning blankLine", "rec.cfg:13:0 warning blankLine", "rec.cfg:15:0 note blankLine"},
         "rec.cfg, line 1: a byte order mark precedes the text"},
        {"WindowsWriterInUtf16",
         [](UglyRecord& r) {
             r.encoding = "UTF-16LE";
             r.Line(1, "ПС Восточная,Регистратор,2005");
             r.Line(3, "1,Ток,A,Q1,A,0.5,-1,,-32767,32767,1000,5,П");
             r.Line(10, "31/01/2024,12:00:00,250000");
             r.Line(11, "ASCII,");
         },
         {{"Station|Recorder", "ПС Восточная|Регистратор"}, {"|Ia|", "|Ток|"}, {"2.5", "0"}},
         {"rec.cfg:1:0 error notUtf8", "rec.cfg:1:26 error revisionUnknown", "rec.cfg:3:42 error wordForm",
          "rec.cfg:10:21 error timeForm", "rec.cfg:11:7 warning extraFields"},
         "rec.cfg, line 1: the text is UTF-16"},
        {"CountsAndRatesThatAreWrong",
         [](UglyRecord& r) {
             r.Line(2, "4,2,1d");
             r.Line(6, "50.0Гц");
             r.Line(7, "2");
             r.Line(8, "2400.0,4.0");
             r.Line(12, "0");
         },
         {},
         {"rec.cfg:2:3 error wordForm", "rec.cfg:2:1 error countsDiffer", "rec.cfg:6:1 error numberForm",
          "rec.cfg:7:1 error countsDiffer", "rec.cfg:8:8 error numberForm", "rec.cfg:12:1 error numberForm"},
         "rec.cfg, line 2: '2' should be a number and A"},
        {"OnlyOneTimeAndNoMore",
         [](UglyRecord& r) {
             r.Remove(12);
             r.Remove(10);
             r.Line(9, "2024-01-31T11:59:59.750000");
             r.Line(5, "1,Trip");
             r.lineEnd = "\r";
         },
         {{"2024-01-31T12:00:00.250000", "2024-01-31T11:59:59.750000"}, {"Trip||Q1|1", "Trip|||0"}},
         {"rec.cfg:1:0 warning lineEnds", "rec.cfg:5:0 error fieldsLacking", "rec.cfg:9:1 error dateForm",
          "rec.cfg:9:1 error dateForm", "rec.cfg:10:0 error lineLacking", "rec.cfg:9:1 error dateOrder",
          "rec.cfg:10:0 error lineLacking"},
         "rec.cfg, line 1: lines should end with CR LF, this one ends with CR"},
        {"ContainerWithOtherMarks",
         [](UglyRecord& r) {
             r.container = "made by hand\n--file type:cfg--\n" + r.ConfigurationText().replace("\r\n", "\n") +
                           "----- FILE TYPE : HDR -----\nreport\n---  File Type: dat ascii ---\n" +
                           r.DataText();
         },
         {},
         {"rec.cff:1:0 error sectionMark", "rec.cff:2:0 error sectionMark", "rec.cff:15:0 error sectionMark",
          "rec.cff:17:0 note sectionMark", "rec.cff:0:0 note sectionLacking", "rec.cff:3:0 note lineEnds"},
         "rec.cff, line 1: the file does not start with a section mark"},
        {"ContainerWithAMark",
         [](UglyRecord& r) {
             r.Line(1, "Station,Recorder,2010");
             r.container = "\xEF\xBB\xBF--- file type: INF ---\r\n--- file type: HDR ---\r\n"
                           "--- file type: DAT ASCII ---\r\n" +
                           r.DataText() + "--- file type: CFG ---\r\n" + r.ConfigurationText();
         },
         {},
         {"rec.cff:1:0 warning byteOrderMark", "rec.cff:9:18 error revisionUnknown"},
         "rec.cff, line 1: a byte order mark precedes the text"},
        {"ContainerWhoseByteCountIsWrong",
         [](UglyRecord& r) {
             r.Line(11, "BINARY");
             r.Line(8, "2400,1");
             const QByteArray sample("\1\0\0\0\0\0\0\0\xFB\xFF\xFF\x7F\1\0", 14);
             r.container = "--- file type: CFG ---\r\n" + r.ConfigurationText() +
                           "--- file type: DAT BINARY: 9 ---\r\n" + sample + "\r\n--- file type: INF ---\r\n";
         },
         {{"2400/4", "2400/1"},
          {"ASCII", "BINARY"},
          {"2 417 6 7 0\n3 833 - 8 1\n4 1250 1 2 0", ""},
          {"767 1\n", "767 1"}},
         {"rec.cff:0:0 note sectionLacking", "rec.cff:14:0 error sectionMark"},
         "rec.cff, record 1: is cut off: 9 of 14 bytes"},
        {"YearOf1997WithShortLinesAndALateSecond",
         [](UglyRecord& r) {
             r.Line(1, "Station,Recorder,1997");
             r.Line(5, "1,Trip,,1");
             r.Line(9, "31/01/2024,11:59:60.000000");
             r.Line(11, "ascii ");
             r.Remove(12);
         },
         {{"Trip||Q1|1", "Trip|||1"}, {"2024-01-31T11:59:59.750000", "2024-01-31T12:00:00.000000"}},
         {"rec.cfg:1:18 error revisionUnknown", "rec.cfg:5:0 error fieldsLacking",
          "rec.cfg:9:12 warning timeForm", "rec.cfg:11:0 error lineLacking"},
         "rec.cfg, line 1: revision '1997' is none of 1991, 1999 and 2013"},
        {"SemicolonsAndAClockOfTwelveHours",
         [](UglyRecord& r) {
             r.Line(9, "31/01/2024,11:59:59.750000 PM");
             r.Line(10, "31/01/2024,12:00:00.25 am");
             r.container = "--- file type: CFG ---\r\n" + r.ConfigurationText().replace(',', ';') +
                           "--- file type: DAT ASCII ---\r\n" + r.DataText();
         },
         {{"2024-01-31T11:59:59.750000", "2024-01-31T23:59:59.750000"},
          {"2024-01-31T12:00:00.250000", "2024-01-31T00:00:00.25"}},
         {"rec.cff:0:0 note sectionLacking", "rec.cff:0:0 note sectionLacking",
          "rec.cff:2:0 error fieldSeparator", "rec.cff:10:12 error timeForm", "rec.cff:11:12 error timeForm"},
         "rec.cff, line 2: semicolons separate the fields, not commas"},
    };
    return records;
}
