"""Small COMTRADE records: good ones of every form, and FAULTS, each a good one with one edit.

A record is a dictionary of file contents by ending. Lines end with CR LF.
"""
import struct

ROWS = ((1, 0, 10, -20, 0), (2, 1000, 11, -21, 0), (3, 2000, 12, -22, 1), (4, 3000, 13, -23, 1))

CFG = """\
Station,Recorder,{revision}
3,2A,1D
1,IA,A,Line 1,A,0.5,0,0,-32767,32767,1000,5,P
2,UA,A,Line 1,kV,0.01,0,0,-32767,32767,110,0.1,s
1,Trip,,Line 1,0
50
1
1000,4
31/01/2024,12:00:00.000000
31/01/2024,12:00:00.002000
{kind}
1
"""
CLOCK = "+3,+3h30\n0,3\n"

HDR = "What happened:\ta fault\n"

INF = """\
[Public Record_Information]
Source=Recorder
EventNoteCount=0

[Public File_Description]
Station_Name=Station
Recording_Device_ID=Recorder
Revision_Year=2013
Total_Channel_Count=3
Analog_Channel_Count=2
Status_Channel_Count=1
Line_Frequency=50
Sample_Rate_Count=1
Sample_Rate_#1=1000
End_Sample_Rate_#1=4
File_Start_Time=31/01/2024,12:00:00.000000
Trigger_Time=31/01/2024,12:00:00.002000
File_Type={kind}
Time_Multiplier=1.0

[Public Analog_Channel_#1]
Channel_ID=IA
Channel_Multiplier=0.50

[Public Status_Channel_#1]
Channel_ID=Trip
Normal_State=0

; our own
[Maker Settings]
Setting=1
"""


def lines(text):
    return text.replace("\n", "\r\n").encode()


def ascii_data():
    return lines("".join(",".join(map(str, row)) + "\n" for row in ROWS))


def binary_data(kind):
    code = {"BINARY": "h", "BINARY32": "i", "FLOAT32": "f"}[kind]
    return b"".join(struct.pack(f"<II2{code}H", *row) for row in ROWS)


def good(revision, kind="ASCII"):
    """A record of separate files; of revision 2013 with a header and an information file."""
    cfg = CFG.format(revision=revision, kind=kind) + (CLOCK if revision == 2013 else "")
    record = {"cfg": lines(cfg), "dat": ascii_data() if kind == "ASCII" else binary_data(kind)}
    if revision == 2013:
        record.update(hdr=lines(HDR), inf=lines(INF.format(kind=kind)))
    return record


def container(kind="ASCII"):
    """A record of revision 2013 in one file."""
    record = good(2013, kind)
    data = record["dat"]
    mark = "ASCII" if kind == "ASCII" else f"BINARY: {len(data)}"
    return {"cff": b"".join((lines("--- file type: CFG ---\n"), record["cfg"], lines("--- file type: INF ---\n"),
                             record["inf"], lines("--- file type: HDR ---\n"), record["hdr"],
                             lines(f"--- file type: DAT {mark} ---\n"), data))}


GOOD = {
    "1999 ASCII": good(1999), "1999 BINARY": good(1999, "BINARY"),
    "2013 ASCII": good(2013), "2013 BINARY": good(2013, "BINARY"), "2013 BINARY32": good(2013, "BINARY32"),
    "2013 FLOAT32": good(2013, "FLOAT32"),
    "CFF ASCII": container(), "CFF BINARY": container("BINARY"), "CFF BINARY32": container("BINARY32"),
    "CFF FLOAT32": container("FLOAT32"),
}


class Fault:
    """An edit of a good record, and the one finding about it: ending of the file, line, column, severity, word."""

    def __init__(self, name, form, edits, finding, also=()):
        self.name = name
        self.form = form
        self.edits = edits  # ending, old, new; ending, None, new ending
        self.findings = [finding, *also]  # also: what cannot but follow

    def record(self):
        files = dict(GOOD[self.form])
        for ending, old, new in self.edits:
            if old is None:  # another name
                files[new] = files.pop(ending)
                continue
            old, new = (part if isinstance(part, bytes) else lines(part) for part in (old, new))
            if files[ending].count(old) != 1:
                raise ValueError(f"{self.name}: {old!r} is {files[ending].count(old)} times in the {ending} file")
            files[ending] = files[ending].replace(old, new)
        return files


def fault(name, form, old, new, finding):
    """One edit in the file that the finding is about."""
    return Fault(name, form, [(finding[0], old, new)], finding)


LONG = "x" * 200

FAULTS = [
    # The fields of a configuration.
    fault("station of 65 characters", "1999 ASCII", "Station,", LONG[:65] + ",", ("cfg", 1, 1, "warning", "fieldTooLong")),
    fault("recorder of 65 characters", "1999 ASCII", "Recorder,", LONG[:65] + ",",
          ("cfg", 1, 9, "warning", "fieldTooLong")),
    fault("channel name of 65 characters", "1999 BINARY", "1,IA,", f"1,{LONG[:65]},",
          ("cfg", 3, 3, "warning", "fieldTooLong")),
    Fault("channel name of 129 characters", "2013 BINARY", [("cfg", "1,Trip,", f"1,{LONG[:129]},"),
                                                            ("inf", "Channel_ID=Trip", f"Channel_ID={LONG[:129]}")],
          ("cfg", 5, 3, "warning", "fieldTooLong")),
    fault("phase of 3 characters", "1999 ASCII", "1,IA,A,", "1,IA,ABC,", ("cfg", 3, 6, "warning", "fieldTooLong")),
    fault("circuit of 65 characters", "1999 ASCII", "Trip,,Line 1,", f"Trip,,{LONG[:65]},",
          ("cfg", 5, 9, "warning", "fieldTooLong")),
    fault("unit of 33 characters", "1999 ASCII", ",kV,", f",{LONG[:33]},", ("cfg", 4, 15, "warning", "fieldTooLong")),
    fault("multiplier of 33 characters", "1999 ASCII", ",0.5,", ",0.5" + 30 * "0" + ",",
          ("cfg", 3, 17, "warning", "fieldTooLong")),
    fault("limit of 7 characters", "1999 ASCII", "0,-32767,32767,1000", "0,-032767,32767,1000",
          ("cfg", 3, 25, "warning", "fieldTooLong")),
    fault("no unit", "1999 ASCII", ",kV,", ",,", ("cfg", 4, 15, "warning", "fieldEmpty")),
    Fault("no station in 2013", "2013 ASCII", [("cfg", "Station,", ","), ("inf", "Station_Name=Station", "Station_Name=")],
          ("cfg", 1, 1, "note", "fieldEmpty")),
    Fault("no name of a channel in 2013", "2013 ASCII", [("cfg", "1,Trip,", "1,,"),
                                                         ("inf", "Channel_ID=Trip", "Channel_ID=")],
          ("cfg", 5, 3, "note", "fieldEmpty")),
    # Channels.
    Fault("no channel", "1999 ASCII", [("cfg", CFG[CFG.index("3,2A"):CFG.index("50\n")], "0,0A,0D\n"),
                                       ("dat", ascii_data(), "1,0\n2,1000\n3,2000\n4,3000\n")],
          ("cfg", 2, 1, "warning", "noChannels")),
    fault("number of an analog channel", "1999 ASCII", "2,UA,", "3,UA,", ("cfg", 4, 1, "warning", "channelNumbering")),
    fault("number of a status channel", "1999 ASCII", "1,Trip,", "0,Trip,", ("cfg", 5, 1, "warning", "channelNumbering")),
    fault("multiplier of 0", "1999 ASCII", ",0.01,", ",0,", ("cfg", 4, 18, "warning", "zeroMultiplier")),
    fault("limit beyond BINARY", "1999 BINARY", "-32767,32767,1000", "-32767,32768,1000",
          ("cfg", 3, 32, "note", "limitsBeyondType")),
    fault("limit beyond ASCII of 1999", "1999 ASCII", "-32767,32767,1000", "-32767,100000,1000",
          ("cfg", 3, 32, "note", "limitsBeyondType")),
    fault("primary factor of 0", "1999 ASCII", ",1000,5,P", ",0,5,P", ("cfg", 3, 38, "warning", "ratioZero")),
    fault("secondary factor of 0", "2013 ASCII", ",1000,5,P", ",1000,0,P", ("cfg", 3, 43, "warning", "ratioZero")),
    fault("skew of two samples", "1999 ASCII", ",0.5,0,0,", ",0.5,0,2000,", ("cfg", 3, 23, "note", "skewTooLarge")),
    # Frequency, rates and times.
    fault("frequency of 55 Hz", "1999 ASCII", "50\n", "55\n", ("cfg", 6, 1, "note", "oddFrequency")),
    fault("no rate, with a rate", "1999 ASCII", "\n1\n1000,", "\n0\n1000,", ("cfg", 8, 1, "warning", "rateContradicts")),
    fault("a rate of 0", "1999 ASCII", "1000,4\n", "0,4\n", ("cfg", 8, 1, "warning", "rateContradicts")),
    fault("rate without samples", "1999 ASCII", "1\n1000,4\n", "2\n1000,4\n500,4\n", ("cfg", 9, 5, "warning", "rateOrder")),
    Fault("no samples", "1999 ASCII", [("cfg", "1000,4\n", "1000,0\n"), ("dat", ascii_data(), b"")],
          ("cfg", 8, 6, "warning", "noSamples")),
    Fault("times beyond 32 bits", "1999 BINARY",
          [("cfg", "1000,4\n", "0.0001,4\n"),
           ("dat", binary_data("BINARY"), b"".join(struct.pack("<II2hH", n + 1, 0xFFFFFFFF, 1, 2, 0) for n in range(4)))],
          ("cfg", 8, 8, "warning", "stampsOverflow")),
    Fault("year of 1899", "1999 ASCII", [("cfg", "31/01/2024,12:00:00.000000", "31/12/1899,23:59:59.999000"),
                                         ("cfg", "31/01/2024,12:00:00.002000", "01/01/1900,00:00:00.001000")],
          ("cfg", 9, 1, "warning", "yearOutOfRange")),
    fault("milliseconds", "1999 ASCII", "00.002000", "00.002", ("cfg", 10, 12, "note", "secondDigits")),
    fault("nanoseconds in 1999", "1999 ASCII", "00.002000", "00.002000000", ("cfg", 10, 12, "warning", "timeForm")),
    Fault("nanoseconds in one of two", "2013 ASCII", [("cfg", "00.002000", "00.002000000"),
                                                     ("inf", "00.002000", "00.002000000")],
          ("cfg", 10, 12, "note", "secondDigits")),
    fault("trigger before the start", "1999 ASCII", "12:00:00.002000", "11:00:00.002000",
          ("cfg", 10, None, "warning", "triggerOutside")),
    fault("trigger after the end", "1999 ASCII", "12:00:00.002000", "12:00:01.002000",
          ("cfg", 10, None, "note", "triggerOutside")),
    # Data type and clock.
    Fault("FLOAT32 in 1999", "1999 ASCII", [("cfg", "ASCII", "FLOAT32"), ("dat", ascii_data(), binary_data("FLOAT32"))],
          ("cfg", 11, 1, "warning", "typeNotInRevision")),
    fault("time multiplier of 0", "1999 ASCII", "ASCII\n1\n", "ASCII\n0\n", ("cfg", 12, 1, "error", "numberForm")),
    fault("Cyrillic letter in the time code", "2013 ASCII", "+3,+3h30", "+3,+3ч30", ("cfg", 13, 4, "warning", "badTimeCode")),
    fault("time code beyond 14 hours", "2013 BINARY", "+3,+3h30", "+15,+3h30", ("cfg", 13, 1, "warning", "badTimeCode")),
    fault("time quality C", "2013 ASCII", "\n0,3\n", "\nC,3\n", ("cfg", 14, 1, "warning", "badTimeQuality")),
    fault("leap second 4", "2013 ASCII", "\n0,3\n", "\n0,4\n", ("cfg", 14, 3, "warning", "badLeapSecond")),
    fault("multiplier that is no number", "1999 ASCII", ",0.5,", ",half,", ("cfg", 3, None, "error", "recordUnreadable")),
    # Texts and files.
    fault("letters beyond ASCII in 1999", "1999 ASCII", "1,Trip,", "1,Откл,", ("cfg", 5, 3, "warning", "notAscii")),
    Fault("CP1251 in a configuration of 2013", "2013 ASCII",
          [("cfg", b"1,Trip,", "1,Откл,".encode("cp1251")), ("inf", "Channel_ID=Trip", "Channel_ID=Откл")],
          ("cfg", 5, 3, "warning", "notUtf8")),
    fault("CP1251 in a header", "2013 ASCII", b"fault", "КЗ".encode("cp1251"), ("hdr", 1, 18, "warning", "notUtf8")),
    fault("CP1251 in an information file", "2013 ASCII", b"Setting=1", "Setting=Да".encode("cp1251"),
          ("inf", 31, 9, "warning", "notUtf8")),
    fault("control character in a name", "1999 ASCII", b"1,IA,", b"1,I\x02A,", ("cfg", 3, None, "warning", "controlCharacter")),
    fault("byte order mark in a header", "2013 ASCII", b"What", b"\xef\xbb\xbfWhat", ("hdr", 1, None, "warning", "byteOrderMark")),
    fault("LF in an information file", "2013 ASCII", b"EventNoteCount=0\r\n", b"EventNoteCount=0\n",
          ("inf", 3, None, "note", "lineEnds")),
    fault("LF in a header", "2013 BINARY", b"\r\n", b"\n", ("hdr", 1, None, "note", "lineEnds")),
    fault("bytes in a header", "2013 ASCII", b"\t", b"\x00", ("hdr", 1, None, "note", "headerNotText")),
    Fault("ending in another case", "1999 ASCII", [("dat", None, "DAT")], ("dat", 0, None, "note", "fileName")),
    # The information file.
    fault("entry before the first section", "2013 ASCII", "[Public Record_I", "Key=1\n[Public Record_I",
          ("inf", 1, None, "warning", "lineOutsideSection")),
    fault("stray line", "2013 ASCII", "EventNoteCount=0", "EventNoteCount", ("inf", 3, None, "warning", "strayLine")),
    fault("heading without its end", "2013 ASCII", "[Maker Settings]", "[Maker Settings",
          ("inf", 30, None, "warning", "brokenHeading")),
    fault("section twice", "2013 ASCII", "Setting=1\n", "Setting=1\n[Maker Settings]\n",
          ("inf", 32, None, "warning", "sectionTwice")),
    fault("key twice", "2013 ASCII", "Setting=1\n", "Setting=1\nsetting=2\n", ("inf", 32, None, "warning", "keyTwice")),
    fault("unknown public section", "2013 ASCII", "[Maker Settings]", "[Public Settings]",
          ("inf", 30, None, "warning", "unknownSection")),
    fault("section missing", "2013 ASCII", "[Public Record_Information]", "[Maker Record_Information]",
          ("inf", 0, None, "note", "sectionLacking")),
    fault("number of samples differs", "2013 ASCII", "End_Sample_Rate_#1=4", "End_Sample_Rate_#1=5",
          ("inf", 15, 20, "warning", "informationDiffers")),
    fault("multiplier differs", "2013 ASCII", "Channel_Multiplier=0.50", "Channel_Multiplier=0.51",
          ("inf", 23, 20, "warning", "informationDiffers")),
    fault("section of a channel that is not there", "2013 ASCII", "[Public Status_Channel_#1]", "[Public Status_Channel_#2]",
          ("inf", 25, None, "warning", "informationDiffers")),
    # The one file.
    Fault("one file of 1999", "CFF ASCII", [("cff", "Recorder,2013", "Recorder,1999"), ("cff", CLOCK, ""),
                                           ("cff", "Revision_Year=2013", "Revision_Year=1999")],
          ("cff", 0, None, "warning", "containerRevision")),
    fault("section that there is not", "CFF ASCII", "--- file type: HDR ---", "--- file type: TXT ---\n--- file type: HDR ---",
          ("cff", 48, None, "warning", "unknownSection")),
    fault("header twice", "CFF ASCII", "--- file type: DAT", "--- file type: HDR ---\n--- file type: DAT",
          ("cff", 50, None, "error", "sectionMark")),
    Fault("header before the information", "CFF BINARY",
          [("cff", f"--- file type: HDR ---\n{HDR}", ""), ("cff", "--- file type: INF ---", f"--- file type: HDR ---\n{HDR}"
                                                           "--- file type: INF ---")],
          ("cff", 18, None, "warning", "sectionOrder")),
    fault("mark of ASCII data with a length", "CFF ASCII", "DAT ASCII ---", f"DAT BINARY: {len(ascii_data())} ---",
          ("cff", 50, None, "error", "dataMarkDiffers")),
    # What the reader forgives, as 'info' does.
    fault("revision of 1997", "1999 ASCII", "Recorder,1999", "Recorder,1997", ("cfg", 1, 18, "error", "revisionUnknown")),
    fault("total that is no sum", "1999 ASCII", "3,2A,1D", "4,2A,1D", ("cfg", 2, 1, "error", "countsDiffer")),
    fault("small letters of the counts", "1999 ASCII", "3,2A,1D", "3,2,1D", ("cfg", 2, 3, "error", "wordForm")),
    fault("comma in a name", "1999 ASCII", "1,IA,A,", "1,I,A,A,", ("cfg", 3, 3, "error", "commaInText")),
    fault("quoted name with a comma", "1999 ASCII", "1,IA,A,", '1,"I,A",A,', ("cfg", 3, 3, "error", "quotationMarks")),
    fault("skew that is no number", "1999 ASCII", ",0.5,0,0,", ",0.5,0,none,", ("cfg", 3, 23, "error", "notANumber")),
    fault("exponent with a D", "1999 ASCII", ",0.5,", ",0.5D0,", ("cfg", 3, 17, "error", "numberForm")),
    fault("limits swapped", "1999 ASCII", "-32767,32767,1000", "32767,-32767,1000", ("cfg", 3, 25, "error", "limitsSwapped")),
    fault("status line of four fields", "1999 ASCII", "1,Trip,,Line 1,0", "1,Trip,Line 1,0",
          ("cfg", 5, None, "error", "fieldsLacking")),
    fault("comma at the end of a line", "1999 ASCII", "1000,5,P", "1000,5,P,", ("cfg", 3, 47, "warning", "extraFields")),
    fault("blank line", "1999 ASCII", "50\n", "\n50\n", ("cfg", 6, None, "warning", "blankLine")),
    fault("no time multiplier", "1999 ASCII", "ASCII\n1\n", "ASCII\n", ("cfg", 11, None, "error", "lineLacking")),
    fault("line after the last", "1999 ASCII", "ASCII\n1\n", "ASCII\n1\nmore\n", ("cfg", 13, None, "warning", "linesLeftOver")),
    fault("year of two digits", "1999 ASCII", "31/01/2024,12:00:00.002", "31/01/24,12:00:00.002",
          ("cfg", 10, 1, "error", "dateForm")),
    fault("year before month and day", "1999 ASCII", "31/01/2024,12:00:00.002", "2024/01/31,12:00:00.002",
          ("cfg", 10, 1, "error", "dateOrder")),
    fault("clock that was not set", "1999 ASCII", "31/01/2024,12:00:00.002", "00/00/0000,00:00:00.000",
          ("cfg", 10, 1, "error", "clockNotSet")),
    fault("colon before the decimals", "1999 ASCII", "12:00:00.002000", "12:00:00:002000", ("cfg", 10, 12, "error", "timeForm")),
    fault("mark of the end", "1999 ASCII", b"ASCII\r\n1\r\n", b"ASCII\r\n1\r\n\x1a", ("cfg", 13, None, "note", "endOfFileMark")),
    fault("byte order mark", "2013 ASCII", b"Station,", b"\xef\xbb\xbfStation,", ("cfg", 1, None, "warning", "byteOrderMark")),
    fault("no header", "CFF ASCII", f"--- file type: HDR ---\n{HDR}", "", ("cff", 0, None, "note", "sectionLacking")),
    fault("mark with other blanks", "CFF ASCII", "--- file type: INF ---", "---file type:INF---",
          ("cff", 16, None, "error", "sectionMark")),
    # The data.
    fault("number of a sample", "1999 ASCII", b"\r\n3,2000,", b"\r\n5,2000,", ("dat", 3, None, "warning", "sampleNumbering")),
    Fault("times that go back", "1999 ASCII", [("cfg", "1\n1000,4", "0\n0,4"), ("dat", ",2000,", ",999,")],
          ("dat", 3, None, "warning", "timesBackwards")),
    Fault("no time and no rate", "1999 BINARY", [("cfg", "1\n1000,4", "0\n0,4"),
                                                 ("dat", struct.pack("<II", 3, 2000), struct.pack("<II", 3, 0xFFFFFFFF))],
          ("dat", 3, None, "error", "timesMissing")),
    fault("times that the rate contradicts", "1999 ASCII", ",3000,", ",4000,", ("dat", 4, None, "warning", "timesDisagree")),
    fault("value beyond the limits", "CFF ASCII", ",-23,", ",-32768,", ("cff", 54, None, "warning", "samplesOutsideLimits")),
    fault("fraction in data of 1999", "1999 ASCII", ",-21,", ",-21.5,", ("dat", 2, None, "warning", "codeNotInteger")),
    # What the reader forgives in the data.
    fault("one sample less", "1999 BINARY", binary_data("BINARY")[-14:], b"", ("dat", 3, None, "error", "samplesLacking")),
    fault("one sample more", "1999 ASCII", "4,3000,13,-23,1\n", "4,3000,13,-23,1\n5,4000,14,-24,1\n",
          ("dat", 5, None, "error", "samplesLeftOver")),
    Fault("last sample cut off", "1999 BINARY", [("dat", binary_data("BINARY")[-5:], b"")],
          ("dat", 4, None, "error", "sampleCutOff"), also=[("dat", 3, None, "error", "samplesLacking")]),
    fault("bytes after the last sample", "1999 BINARY", binary_data("BINARY"), binary_data("BINARY") + b"more",
          ("dat", 4, None, "warning", "bytesLeftOver")),
    fault("zeros after the last sample", "1999 BINARY", binary_data("BINARY"), binary_data("BINARY") + bytes(9),
          ("dat", 4, None, "warning", "zerosLeftOver")),
    fault("ASCII data that should be binary", "1999 BINARY", binary_data("BINARY"), ascii_data(),
          ("dat", 0, None, "error", "dataTypeDiffers")),
    fault("semicolons", "1999 ASCII", "1,0,10,-20,0", "1;0;10;-20;0", ("dat", 1, None, "error", "fieldSeparator")),
    fault("a field more", "CFF ASCII", "3,2000,12,-22,1", "3,2000,12,-22,1,1", ("cff", 53, None, "error", "fieldsLeftOver")),
    fault("no data", "1999 ASCII", ascii_data(), "nothing\n", ("dat", 1, None, "error", "dataUnreadable")),
]
