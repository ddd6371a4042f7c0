// Words for programs that say why something failed, ended or deserves a note: they stand in the JSON output
// beside a text in the user's language, and never change. docs/json.md explains each.
#pragma once

#include <QString>

namespace reason {

// About a file, from any command.
inline constexpr char DoesNotExist[] = "doesNotExist";
inline constexpr char NotAFile[] = "notAFile";
inline constexpr char NoPermission[] = "noPermission";
inline constexpr char NameNotUtf8[] = "nameNotUtf8";
inline constexpr char OutOfMemory[] = "outOfMemory";
inline constexpr char Unexpected[] = "unexpected";

// About a recording or a record that is bad.
inline constexpr char RecordingUnreadable[] = "recordingUnreadable";
inline constexpr char RecordingInconsistent[] = "recordingInconsistent";
inline constexpr char RecordUnreadable[] = "recordUnreadable";
inline constexpr char DataUnreadable[] = "dataUnreadable";
inline constexpr char SamplesLacking[] = "samplesLacking";
inline constexpr char SamplesLeftOver[] = "samplesLeftOver";
inline constexpr char PieceMissing[] = "pieceMissing";
inline constexpr char PiecesDiffer[] = "piecesDiffer";
inline constexpr char SampleNumbering[] = "sampleNumbering";
inline constexpr char TimesDisagree[] = "timesDisagree";
inline constexpr char SamplesOutsideLimits[] = "samplesOutsideLimits";

// About a record and its recording.
inline constexpr char OtherRecording[] = "otherRecording";
inline constexpr char SamplesDiffer[] = "samplesDiffer";
inline constexpr char TextsDiffer[] = "textsDiffer";
inline constexpr char BytesDiffer[] = "bytesDiffer";

// About a recording that is not converted, or not put away.
inline constexpr char ContinuationFile[] = "continuationFile";
inline constexpr char NotARecording[] = "notARecording";
inline constexpr char NotConverted[] = "notConverted";
inline constexpr char ConverterException[] = "converterException";
inline constexpr char SourceUnreadable[] = "sourceUnreadable";
inline constexpr char SourceChanged[] = "sourceChanged";
inline constexpr char NoRoom[] = "noRoom";
inline constexpr char RecordNotInPlace[] = "recordNotInPlace";
inline constexpr char OtherRecordPresent[] = "otherRecordPresent";
inline constexpr char LongerRecordPresent[] = "longerRecordPresent";
inline constexpr char RecordWrong[] = "recordWrong";
inline constexpr char PageNotWritten[] = "pageNotWritten";
inline constexpr char EventsNotWritten[] = "eventsNotWritten";
inline constexpr char NotOnDisk[] = "notOnDisk";
inline constexpr char NotPutAway[] = "notPutAway";
inline constexpr char NeverEnded[] = "neverEnded";
inline constexpr char ProcessKilled[] = "processKilled";

// About a watched directory.
inline constexpr char DirectoryGone[] = "directoryGone";

// Trouble of the watch, besides the failures above.
inline constexpr char OutputUnusable[] = "outputUnusable";
inline constexpr char ArchiveUnusable[] = "archiveUnusable";
inline constexpr char JournalNotWritten[] = "journalNotWritten";

// About a command after a record.
inline constexpr char CommandFailed[] = "commandFailed";
inline constexpr char CommandKilled[] = "commandKilled";
inline constexpr char CommandNotStarted[] = "commandNotStarted";
inline constexpr char CommandTimeout[] = "commandTimeout";

// About a recorder of a service with several.
inline constexpr char Crashed[] = "crashed";
inline constexpr char Misconfigured[] = "misconfigured";
inline constexpr char NotStarted[] = "notStarted";

// What 'zucmtr check' finds in the lines of an ini file.
inline constexpr char BlanksInSectionName[] = "blanksInSectionName";
inline constexpr char BrokenHeading[] = "brokenHeading";
inline constexpr char ByteOrderMark[] = "byteOrderMark";
inline constexpr char CommaInText[] = "commaInText";
inline constexpr char KeyTwice[] = "keyTwice";
inline constexpr char LineOutsideSection[] = "lineOutsideSection";
inline constexpr char NotUtf8[] = "notUtf8";
inline constexpr char PercentInText[] = "percentInText";
inline constexpr char QuotationMarks[] = "quotationMarks";
inline constexpr char SectionTwice[] = "sectionTwice";
inline constexpr char StrayLine[] = "strayLine";

// In the parameters of a section.
inline constexpr char CffIgnored[] = "cffIgnored";
inline constexpr char CharactersLeftOut[] = "charactersLeftOut";
inline constexpr char KeyMissing[] = "keyMissing";
inline constexpr char LettersLost[] = "lettersLost";
inline constexpr char NotAskedFor[] = "notAskedFor";
inline constexpr char NumberOutOfRange[] = "numberOutOfRange";
inline constexpr char NumberTooLarge[] = "numberTooLarge";
inline constexpr char RecordingsDeleted[] = "recordingsDeleted";
inline constexpr char TakenFromDefaults[] = "takenFromDefaults";
inline constexpr char UnknownKey[] = "unknownKey";

// In the sorting dictionary and the bays.
inline constexpr char BadNumbering[] = "badNumbering";
inline constexpr char BayTwice[] = "bayTwice";
inline constexpr char BayWithoutText[] = "bayWithoutText";
inline constexpr char BeyondMaximum[] = "beyondMaximum";
inline constexpr char DictionaryInDefaults[] = "dictionaryInDefaults";
inline constexpr char EmptyBay[] = "emptyBay";
inline constexpr char EmptyEntry[] = "emptyEntry";
inline constexpr char EquipmentDiffers[] = "equipmentDiffers";
inline constexpr char ExtraFields[] = "extraFields";
inline constexpr char NoParameters[] = "noParameters";
inline constexpr char NoSignal[] = "noSignal";
inline constexpr char NotEquipmentSignal[] = "notEquipmentSignal";
inline constexpr char ParameterMissing[] = "parameterMissing";
inline constexpr char SignalTwice[] = "signalTwice";
inline constexpr char UnknownCode[] = "unknownCode";
inline constexpr char UnknownParameter[] = "unknownParameter";
inline constexpr char VoltagesAndCurrents[] = "voltagesAndCurrents";

// Between a dictionary and a recording.
inline constexpr char ChannelMissing[] = "channelMissing";
inline constexpr char ChannelsUnknown[] = "channelsUnknown";

// In the data of the lines (lines.ini).
inline constexpr char NotANumber[] = "notANumber";
inline constexpr char BadZone[] = "badZone";
inline constexpr char LineMatched[] = "lineMatched";
inline constexpr char LineNotMatched[] = "lineNotMatched";
inline constexpr char LineMissing[] = "lineMissing";
inline constexpr char UnknownCircuit[] = "unknownCircuit";

// About what is exported.
inline constexpr char FilePresent[] = "filePresent";
inline constexpr char FormCannotHold[] = "formCannotHold";
inline constexpr char NothingThere[] = "nothingThere";

// What readers of COMTRADE records forgive, and what else is wrong with a record.
inline constexpr char BlankLine[] = "blankLine";
inline constexpr char BytesLeftOver[] = "bytesLeftOver";
inline constexpr char ClockNotSet[] = "clockNotSet";
inline constexpr char CountsDiffer[] = "countsDiffer";
inline constexpr char DataTypeDiffers[] = "dataTypeDiffers";
inline constexpr char DateForm[] = "dateForm";
inline constexpr char DateOrder[] = "dateOrder";
inline constexpr char EndOfFileMark[] = "endOfFileMark";
inline constexpr char FieldEmpty[] = "fieldEmpty";
inline constexpr char FieldSeparator[] = "fieldSeparator";
inline constexpr char FieldsLacking[] = "fieldsLacking";
inline constexpr char FieldsLeftOver[] = "fieldsLeftOver";
inline constexpr char FileName[] = "fileName";
inline constexpr char LimitsSwapped[] = "limitsSwapped";
inline constexpr char LineEnds[] = "lineEnds";
inline constexpr char LineLacking[] = "lineLacking";
inline constexpr char LinesLeftOver[] = "linesLeftOver";
inline constexpr char NumberForm[] = "numberForm";
inline constexpr char RevisionUnknown[] = "revisionUnknown";
inline constexpr char SampleCutOff[] = "sampleCutOff";
inline constexpr char SectionLacking[] = "sectionLacking";
inline constexpr char SectionMark[] = "sectionMark";
inline constexpr char TimeForm[] = "timeForm";
inline constexpr char WordForm[] = "wordForm";
inline constexpr char ZerosLeftOver[] = "zerosLeftOver";

// What 'zucmtr validate' finds in a configuration, besides what the reader forgives.
inline constexpr char BadLeapSecond[] = "badLeapSecond";
inline constexpr char BadTimeCode[] = "badTimeCode";
inline constexpr char BadTimeQuality[] = "badTimeQuality";
inline constexpr char ChannelNumbering[] = "channelNumbering";
inline constexpr char ControlCharacter[] = "controlCharacter";
inline constexpr char FieldTooLong[] = "fieldTooLong";
inline constexpr char LimitsBeyondType[] = "limitsBeyondType";
inline constexpr char NoChannels[] = "noChannels";
inline constexpr char NoSamples[] = "noSamples";
inline constexpr char NotAscii[] = "notAscii";
inline constexpr char OddFrequency[] = "oddFrequency";
inline constexpr char RateContradicts[] = "rateContradicts";
inline constexpr char RateOrder[] = "rateOrder";
inline constexpr char RatioZero[] = "ratioZero";
inline constexpr char SecondDigits[] = "secondDigits";
inline constexpr char SkewTooLarge[] = "skewTooLarge";
inline constexpr char StampsOverflow[] = "stampsOverflow";
inline constexpr char TriggerOutside[] = "triggerOutside";
inline constexpr char TypeNotInRevision[] = "typeNotInRevision";
inline constexpr char YearOutOfRange[] = "yearOutOfRange";
inline constexpr char ZeroMultiplier[] = "zeroMultiplier";

// In the data.
inline constexpr char CodeNotInteger[] = "codeNotInteger";
inline constexpr char TimesBackwards[] = "timesBackwards";
inline constexpr char TimesMissing[] = "timesMissing";

// In the marks of a container, the header and the INF text.
inline constexpr char ContainerRevision[] = "containerRevision";
inline constexpr char DataMarkDiffers[] = "dataMarkDiffers";
inline constexpr char HeaderNotText[] = "headerNotText";
inline constexpr char InformationDiffers[] = "informationDiffers";
inline constexpr char SectionOrder[] = "sectionOrder";
inline constexpr char UnknownSection[] = "unknownSection";

// What 'zucmtr archive check' finds.
inline constexpr char ContentChanged[] = "contentChanged";
inline constexpr char DatabaseDamaged[] = "databaseDamaged";
inline constexpr char DirectoryUnreadable[] = "directoryUnreadable";
inline constexpr char EntryInconsistent[] = "entryInconsistent";
inline constexpr char FileAdded[] = "fileAdded";
inline constexpr char FileChanged[] = "fileChanged";
inline constexpr char FileMissing[] = "fileMissing";
inline constexpr char FileUnreadable[] = "fileUnreadable";
inline constexpr char LinkBroken[] = "linkBroken";
inline constexpr char NotCatalogued[] = "notCatalogued";
inline constexpr char NotGone[] = "notGone";

// Why the watch ends.
inline constexpr char Terminated[] = "SIGTERM";
inline constexpr char Interrupted[] = "SIGINT";
inline constexpr char Done[] = "done";
inline constexpr char Trouble[] = "trouble";

// Why a chain of segments ends.
inline constexpr char NoNextFile[] = "noNextFile";
inline constexpr char NextFileUnreadable[] = "nextFileUnreadable";
inline constexpr char NextFileDiffers[] = "nextFileDiffers";
inline constexpr char AllFiles[] = "allFiles";

/// The word for a failure of the library: outOfMemory by its text, else the given one.
inline const char* OfLibrary(const QString& text, const char* otherwise)
{
    return text.contains(QStringLiteral("ошибка выделения памяти")) ? OutOfMemory : otherwise;
}

} // namespace reason
