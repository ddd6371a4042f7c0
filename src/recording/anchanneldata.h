// An analog channel of one recorder file: its header, its samples as signed 16-bit codes, and what the later
// stages of a conversion attach to it.
#pragma once

#include "recording/zufilelayout.h"

#include <QString>

#include <memory>
#include <vector>

class BayOptionalParam;
class QFile;
class QTextCodec;

namespace zu {
class SampleMemory;
}

class AnChannelData
{
public:
    QString Name;                 // as the recorder writes it
    quint32 descrLength;          // bytes from the start of the section to its data
    quint32 m_DataLength;         // bytes of the data area
    ZuAnChannelHeader m_HeaderAn; // raw
    QString Unit;                 // of the physical value
    QString Remark;
    quint16* m_pData;           // the samples; owned, null until loaded and after Clear
    qint16* Samples;            // the same array as signed codes; Clear leaves it as it is
    QString ErrorText;          // why Load failed
    QString CfgName;            // channel id of the CFG line
    QString CfgCircuit;         // circuit of the CFG line
    QString CfgPhase;           // phase of the CFG line
    QString CfgSignal;          // signal part of the name
    qint32 AddIndexPos;         // where an additional index is inserted into CfgName; -1: nowhere
    BayOptionalParam* BayParam; // bay of the circuit, not owned, may be null
    bool IsVoltage;             // counts as a voltage for the extreme values
    bool IsCurrent;             // counts as a current for the extreme values
    float ExtremeScale;         // factor of the extreme values
    float ExtremeMin;           // smallest RMS found
    float ExtremeMax;           // largest RMS found
    float CoefA;                // CFG multiplier; 0 until the CFG line is written
    float CoefB;                // CFG offset
    float SkewMicroseconds;     // CFG skew

    AnChannelData();

    /// Has Load take the room for many samples from memory, which lasts as long as the channel needs it.
    void ShareMemory(std::shared_ptr<zu::SampleMemory> memory) { shared = std::move(memory); }

    /// Reads the channel and its samples; file is positioned just after the section header and is left
    /// anywhere. False: ErrorText says why, and Clear frees what was allocated. Allocates nothing that the
    /// rest of the file cannot fill.
    bool Load(QFile& file, ZuFileSectionHeader* secHeader, QTextCodec* codec);

    /// Releases the samples. To be called before the object is deleted.
    void Clear();

    /// Expands the compressed data area source (m_DataLength bytes) into m_pData, which has room for
    /// m_HeaderAn.points samples and which Samples points at. False for a bad area and without m_pData.
    bool UnCompressData(unsigned char* source);

    /// The channel's CFG line with number as its first field, without a line end. Stores CoefA, CoefB and
    /// SkewMicroseconds.
    QString DoCfgDescription(unsigned int number);

    /// Finds out whether the channel is a voltage or a current, by signal name and unit. False if it can be
    /// neither or has no samples.
    bool DoExtremeParam();

    /// RMS of the window samples from start, scaled by CoefA and CoefB, into value. sum (of squared codes)
    /// and count (of samples) carry over a window that started at the end of the previous segment. False if
    /// the window is not full: then sum and count hold what there was.
    bool CalcExtremeRMS(unsigned int start, unsigned int window, float& value, double& sum,
                        unsigned int& count);

    /// Smallest and largest RMS of the channel's windows into ExtremeMin and ExtremeMax. False if the first
    /// window is not full; sum and count as in CalcExtremeRMS.
    bool FindExtremeRMS(unsigned int window, double& sum, unsigned int& count);

    /// Widens ExtremeMin and ExtremeMax by those of others. Always true.
    bool FindExtremeRMS(std::vector<AnChannelData*>& others);

private:
    bool ReadHeader(QFile& file, QTextCodec* codec);
    bool LoadSamples(QFile& file);
    bool ReadArea(QFile& file, unsigned char* buffer);
    bool Expand(unsigned char* area);
    bool Fail(const QString& text); // ErrorText = text; returns false
    quint16* NewSamples(size_t count);
    bool CheckMemory(const void* memory);

    std::shared_ptr<zu::SampleMemory> shared;
    quint16* sharedSamples = nullptr; // m_pData if it is part of shared
};
