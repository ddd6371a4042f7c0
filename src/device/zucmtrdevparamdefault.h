// The parameter set of a device, as the ini file gives it.
#pragma once

#include <QString>

class ZuCmtrDevParamDefault
{
public:
    QString PowerSystem;     // territorial power system
    QString Subject;         // subject of the electric power industry
    QString Object;          // object of the electric power industry; station name of the CFG file
    QString Source;          // source of the record; device id of the CFG file
    QString SoftwareVersion; // of the recorder
    QString HardwareVersion; // of the recorder
    QString Model;           // of the recorder
    quint32 ZuVersion;       // version of the recorder file, 1 or 2; stored and logged only
    quint32 WaitTime;        // milliseconds, for the host
    bool DeleteSource;       // delete the recorder files after a successful conversion
    QString TimeCode;        // offset from UTC as COMTRADE text; no ini key changes it
    bool ComtradeBin;        // binary DAT instead of ASCII
    bool ComtradeCff;        // one CFF file instead of separate files
    bool ComtradeUtf8;       // text output in UTF-8 instead of CP1251
    bool RenameSignals;      // word order of renamed signals: signal first, or circuit first
    QString CimId;           // CIM identifier of the device
    QString CabinetNumber;
    QString SerialNumber;
    bool AdditionalIndexes; // append the dictionary's additional indexes to signal names
    QString LastError;      // text of the last failure of this object
    bool Comtrade1999;      // revision 1999, only cfg and dat, instead of 2013

    /// The built-in parameter values.
    ZuCmtrDevParamDefault();

    /// Copies every parameter of defaults to this object, but not its LastError.
    void SetDefaultParam(ZuCmtrDevParamDefault* defaults);

    /// Reads section group of the ini file. With useDefaults an absent key keeps the field as it is and its
    /// log line carries a tag; without, an obligatory key must be there. One log line for each key in force.
    /// False at the first bad key: text in LastError and in the log, earlier fields stay as read.
    bool LoadFromIniDef(const QString& fileName, const QString& group, bool useDefaults);
};
