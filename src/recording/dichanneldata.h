// A discrete channel of one recorder file: the list of the moments at which its signal changed.
#pragma once

#include "recording/zufilelayout.h"

#include <QString>

class BayOptionalParam;
class QFile;
class QTextCodec;

class DiChannelData
{
public:
    QString Name;         // as the recorder writes it
    quint32 descrLength;  // from the section header
    quint32 m_DataLength; // bytes of change records
    ZuDiChannelHeader m_HeaderDi;
    quint32 ChangeCount;
    bool Inverted;
    unsigned char* m_pData;     // change records, 5 bytes each, rising times; owned, null if there are none
    QString ErrorText;          // why Load failed
    QString CfgName;            // channel id of the CFG line
    QString CfgCircuit;         // circuit of the CFG line
    qint32 AddIndexPos;         // where an additional index is inserted into CfgName; -1: nowhere
    BayOptionalParam* BayParam; // bay of the circuit, not owned, may be null
    quint8 CurrentValue;        // state last found, inversion applied
    quint32 CurrentIndex;       // the cursor: record last found

    DiChannelData();

    /// Reads the channel; file is positioned just after the section header and is left anywhere. False:
    /// ErrorText says why, and Clear frees what was allocated.
    bool Load(QFile& file, ZuFileSectionHeader* secHeader, QTextCodec* codec);

    /// Releases the records. To be called before the object is deleted.
    void Clear();

    /// State of the signal at time, microseconds from the start of the file. Before its first record the
    /// signal has the first record's state; without records it is off. Moves the cursor: rising times cost
    /// one visit a record.
    bool GetVal(unsigned int time);

    /// After GetVal(time): the earliest later time, microseconds, at which GetVal can give another state;
    /// NoChange if there is none.
    quint64 NextChange(unsigned int time) const;
    static constexpr quint64 NoChange = ~quint64(0);

    /// The channel's CFG line with number as its first field, without a line end.
    QString DoCfgDescription(unsigned int number);

private:
    bool Fail(const QString& text);      // ErrorText = text; returns false
    bool LoadRecords(QFile& file);       // file is positioned after the channel header
    bool StateOf(quint32 index) const;   // inversion applied
    quint32 TimeOf(quint32 index) const; // microseconds
};
