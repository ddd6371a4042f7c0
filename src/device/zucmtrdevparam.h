// A device: the parameters of one recorder and the working state of its conversion.
#pragma once

#include "device/zucmtrdevparamdefault.h"

#include <QFile>

#include <vector>

class ResorterZuCmtrConv;

// Shared error texts of the ini keys; the key is appended.
extern const QString LoadIniError_NoParam;
extern const QString LoadIniError_ErrParam;

class ZuCmtrDevParam : public ZuCmtrDevParamDefault
{
public:
    ResorterZuCmtrConv* Resorter;     // owned: created by LoadFromIni, deleted by Clear
    std::vector<QString> LogMessages; // message queue, first in, first out
    double SampleRate;                // of the recording under conversion, samples per second
    quint64 TotalTime;                // length of its chain of segments, microseconds
    qint64 TotalSamples;              // samples of all its segments together
    QString TmpNameCfg;               // temporary output names, without a directory
    QString TmpNameDat;
    QString TmpNameHdr;
    QString TmpNameInf;
    QString TmpNameCff;
    QString TmpPathCfg; // the same with the output directory in front
    QString TmpPathDat;
    QString TmpPathHdr;
    QString TmpPathInf;
    QString TmpPathCff;
    QFile FileCfg; // output files, open only while they are written
    QFile FileDat;
    QFile FileHdr;
    QFile FileInf;
    QFile FileCff;
    qint64 DatBytes; // bytes written to a binary DAT file

    ZuCmtrDevParam();

    /// Orders the sorting dictionary; false without a re-sorter.
    bool PreResort();

    /// The oldest message, which leaves the queue; empty if there is none.
    QString PopLogMessages();

    /// Empties the message queue and the last error; every conversion starts with it.
    void ClearLog();

    /// Releases the re-sorter and closes the output files. To be called before the object is deleted.
    void Clear();

    /// Reads the device's section over the defaults and loads the sorting dictionary of the same section.
    /// False: the reason is in the log, and in LastError if the section's own keys are bad.
    bool LoadFromIni(const QString& fileName, const QString& group);
};
