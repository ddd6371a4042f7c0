// A recorder file in memory: the parsed binary file and all that the later stages of a conversion add to it.
#pragma once

#include "recording/anchanneldata.h"
#include "recording/dichanneldata.h"
#include "recording/zufilelayout.h"

#include <QDateTime>
#include <QString>

#include <memory>
#include <vector>

class BayOptionalParam;
class QFile;
class QTextCodec;
class ZuCmtrDevParam;

namespace zu {
class SampleMemory;
struct StartComment;
} // namespace zu

class ZuFileFormat
{
public:
    ZuFileHeader Header;             // raw; Load takes negative microseconds out of the seconds in place
    ZuFileSectionHeader m_SecHeader; // section header last read
    std::vector<AnChannelData*> AnChannels; // in file order; owned
    std::vector<DiChannelData*> DiChannels; // in file order; owned
    QString Title;
    QString Comment;                 // start comment
    QString Identity;                // source of the recording
    QDateTime StartTime;             // first sample, whole seconds, with the zone's offset from UTC
    QDateTime TrigTime;              // start of the fault, the same
    qint32 StartMicroseconds;        // 0 to 999999 after Load
    qint32 TrigMicroseconds;         // 0 to 999999 after Load
    qint32 TimeZoneSeconds;          // offset from UTC, never negative after Load
    quint32 SegmentDuration;         // microseconds
    quint16 ChannelCount;            // sections in the file
    double SampleRate;               // samples per second; 2400 until IsAnChRatesValid has run
    qint64 SegmentTimeBase;          // microseconds from the start of the whole oscillogram
    QString ErrorText;               // why Load failed, detail included
    QString ErrorDetail;             // what exactly went wrong
    QString CfgSamples;              // texts of the CFG file, for the INF file: total samples,
    QString CfgStartStamp;           // stamp of the first sample,
    QString CfgTrigStamp;            // stamp of the fault,
    QString CfgDataType;             // "Binary" or "ASCII",
    QString CfgTimeMult;             // "1"
    QString OutName;                 // base name of the output files
    std::vector<QString> CfgAnLines; // analog lines of the CFG file
    std::vector<QString> CfgDiLines; // discrete lines of the CFG file
    QString StartCircuit;            // line or equipment that started the recorder
    QString StartCondition;          // why it started
    QString StartSetting;            // with which setting
    QString StartSignal;             // display text of the bay, shown in place of StartCircuit
    quint32 SamplesPerPeriod;        // samples in 0.02 s
    quint32 ShiftTwoThirds;          // two thirds of a period, samples
    quint32 ShiftOneThird;           // one third of a period, samples

    ZuFileFormat();
    ~ZuFileFormat();
    ZuFileFormat(const ZuFileFormat&) = delete;
    ZuFileFormat& operator=(const ZuFileFormat&) = delete;

    /// Reads the whole file with every channel's data. False: ErrorText says why, and the channels that were
    /// good stay until Clear.
    bool Load(const QString& fileName);

    /// Reads the header alone: texts, times, zone, duration and channel count. False as from Load.
    bool LoadHeader(const QString& fileName);

    /// Releases the channels.
    void Clear();

    /// Whether this file may continue the recording that other starts. Of the channels only the first analog
    /// and the first discrete one are compared. Throws std::out_of_range for files that have analog channels
    /// and no discrete one.
    bool CompareHeader(ZuFileFormat* other);

    /// Whether all analog channels have the same number of points.
    bool IsAnChPointsValid();

    /// Sets SampleRate, SamplesPerPeriod and the shifts from the first analog channel (2400 without one).
    /// Returns whether all analog channels have its rate.
    bool IsAnChRatesValid();

    /// Points of the first analog channel, 0 without one.
    unsigned int GetNumPointsAn();

    /// The analog channel, or null if index is too high.
    AnChannelData* GetAnChannel(unsigned int index);

    /// Sample index one period of 0.02 s before the fault, 0 if that is before the first sample.
    unsigned int GetTrigIndex();

    /// Splits the start comment into StartCircuit, StartCondition, StartSetting and StartSignal. Needs the
    /// renamed channels. Throws std::out_of_range for a comment with two values instead of three.
    void ParseComment(ZuCmtrDevParam* dev);

    /// Base name of the output files: time of the fault, zone, object, source and subject.
    QString DoOutName(ZuCmtrDevParam* dev);

    /// Splits the channel name raw at its first ":" into circuit and signal, and makes the CFG name from them
    /// and the bay's display text. indexPos is where an additional index is inserted into name. bay is set if
    /// the circuit is a known bay. False without a ":": then circuit and name are raw, signal is empty,
    /// indexPos -1.
    bool RenameSignal(const QString& raw, ZuCmtrDevParam* dev, QString& circuit, QString& signal,
                      QString& name, int& indexPos, BayOptionalParam*& bay);

    /// Gives all channels their CFG names, circuits and phases. Returns the result of the last RenameSignal.
    bool RenameAllChannelsName(ZuCmtrDevParam* dev);

    /// The first analog channel of the given circuit and signal; null if there is none.
    AnChannelData* FindAnChannel(const QString& circuit, const QString& signal);

    /// The same for "circuit:signal"; without a colon the first channel of that raw name.
    AnChannelData* FindAnChannel(const QString& spec);

    /// Sets the shifts by a third and two thirds of SamplesPerPeriod.
    void CalcShifts();

    /// RMS (formatted "%3.2f", in kV or kA for the base units) and angle (degrees, "%3.0f") of channel over
    /// the period from sample index. Both become "--" if the period is not wholly inside the samples.
    void CalcRMS(unsigned int index, AnChannelData* channel, QString& module, QString& angle);

    /// Positive, negative and (threefold) zero sequence of the phases channels[0..2] at sample index, into
    /// modules[0..2] and angles[0..2], formatted as by CalcRMS. All become "--" if the two periods that are
    /// needed are not wholly inside the samples of all three.
    void CalcSeq(unsigned int index, AnChannelData** channels, QString* modules, QString* angles);

    /// The report's lines with the largest and smallest RMS of the currents and voltages of circuit. files
    /// are the segments of the recording, this one first.
    void FindExtremeRMS(const QString& circuit, std::vector<ZuFileFormat*>* files, QString& maxI,
                        QString& minI, QString& maxU, QString& minU);

private:
    bool DescribeStart(const zu::StartComment& comment, ZuCmtrDevParam* dev);
    void DescribeDiscrete(const zu::StartComment& comment, ZuCmtrDevParam* dev);
    void DescribeFiveItems(const zu::StartComment& comment);
    void DescribeSetting(const zu::StartComment& comment, const AnChannelData& channel);
    void DescribeHarmonic(const zu::StartComment& comment, const AnChannelData& channel);

    bool Fail(const char* text, const QString& detail); // stores both; returns false
    bool LoadParts(const QString& fileName, bool headerAlone);
    bool ReadFile(QFile& file, bool headerAlone);
    bool ReadTimes();
    bool CheckCounts();
    bool ReadSections(QFile& file, QTextCodec* codec);
    bool ReadSection(QFile& file, QTextCodec* codec);
    template <class Channel>
    bool LoadChannel(QFile& file, QTextCodec* codec, std::vector<Channel*>& channels, const char* failure);

    std::shared_ptr<zu::SampleMemory> samples; // of the large channels
};
