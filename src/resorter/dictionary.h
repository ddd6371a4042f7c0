// The records of the sorting dictionary and of the INF file's Russian part.
#pragma once

#include <QString>

/// One ini entry: a signal, with its place in the order if its parameters are good.
struct DictionaryZuCmtr
{
    quint32 Number;         // N of the key, from 1
    QString FullName;       // as the recorder writes the channel's name
    quint32 VoltageLevel;   // row of gst_vl; 999999 until read
    quint32 EquipmentGroup; // row of gst_eg; 999999 until read
    QString EquipmentName;  // left of the first ":" of FullName
    QString SignalName;     // right of it
    quint32 Ordinal;        // running number among the entries of its kind, from 0
    bool HasSortParams;     // only such entries are sorted
    QString VlInd;          // additional index of the signal, may be empty
    QString CimChannelId;   // may be empty
};

struct DictionaryZuCmtrAn : DictionaryZuCmtr
{
    quint32 SignalGroup; // row of gst_sg; 999999 until read
};

struct DictionaryZuCmtrDi : DictionaryZuCmtr
{
    quint32 DeviceGroup; // row of gst_dg; 999999 until read
    quint32 StatusType;  // row of gst_st; 999999 until read
};

/// One piece of equipment for the INF file.
struct RCE_AnalogChannelEquipmentZuCmtr
{
    quint32 EquipmentGroup; // row of gst_eg
    QString EquipmentName;
    quint32 VoltageLevel;   // row of gst_vl
    quint32 SignalGroup;    // row of gst_sg
    QString ChannelNumbers; // output channel numbers, joined by ","
    QString CimChannelIds;  // of its channels, joined by ","
};

struct RCE_PowerObjectParamZuCmtr
{
    QString Territory;
    QString CompanyName;
    QString StationName;
};
