// The library's one service object: default parameters, devices, log, conversion and writers.
#pragma once

#include "base/chainnames.h"
#include "base/codecs.h"
#include "base/log.h"
#include "base/numeric.h"
#include "device/zucmtrdevparam.h"

#include <QMutex>
#include <QString>

#include <vector>

class QFile;
class ZuFileFormat;

class ZuCmtrConverter
{
public:
    ZuCmtrDevParamDefault* DefaultParam;      // what all devices start from; owned, null until loaded
    std::vector<ZuCmtrDevParam*> m_DevParams; // owned; a device's number is its index
    QString LastError; // last failure that has no device; also the marker that WriteCff leaves
    QMutex Mutex;      // guards the stores of LastError that conversions and getters may make at once

    // The objects of base under the names of the interface.
    static constexpr auto& LogFilePath = zu::LogFilePath;
    static constexpr auto& codec_CP1251 = zu::CodecCP1251;
    static constexpr auto& codec_UTF8 = zu::CodecUtf8;
    static constexpr auto& codecIni = zu::CodecIni;
    static constexpr auto& codec_CP866 = zu::CodecCP866;
    static constexpr auto& ZuExtensions = zu::ChainExtensions;
    static QString SoftwareRevision; // Source of the INF file

    // Section marks of the CFF file. The first three have one length, SecNameLen characters.
    static const QString SecNameCFG;
    static const QString SecNameINF;
    static const QString SecNameHDR;
    static const QString SecNameDATa; // ASCII data
    static const QString SecNameDATb; // binary data, %1 bytes
    static const qint32 SecNameLen;

    ZuCmtrConverter();

    /// Makes and loads DefaultParam. False on failure, with the text in LastError, and on every call after
    /// the first, with none.
    bool LoadFromIniDefault(const QString& fileName, const QString& group);

    /// Makes one device from the defaults and section group; on success its number goes to *devId. False
    /// leaves *devId and LastError unchanged; the reason is in the log. Also false while there are no
    /// defaults.
    bool LoadFromIni(const QString& fileName, const QString& group, unsigned int* devId);

    /// text = the device's last error. False for a bad number, which leaves its text in LastError.
    bool GetDevLastError(unsigned int devId, QString& text);

    /// text = the device's oldest message, which leaves the queue. False for an empty queue and for a bad
    /// number, which leaves its text in LastError; text then stays as it was.
    bool PopDevMessage(unsigned int devId, QString& text);

    /// Messages in the device's queue; 0 for a bad number, which leaves its text in LastError.
    unsigned int GetDevMsgCount(unsigned int devId);

    /// The device's wait time, milliseconds; 0 for a bad number, which leaves its text in LastError.
    unsigned int GetDevWaitTime(unsigned int devId);

    /// Releases defaults, devices and the ini cache. The object itself is to be deleted next.
    void Clear();

    /// zu::IsFloatEqual.
    static bool IsFloatEqual(float a, float b) { return zu::IsFloatEqual(a, b); }
    static bool IsFloatEqual(double a, double b) { return zu::IsFloatEqual(a, b); }

    /// zu::WriteToLog.
    static void WriteToLog(const QString& text) { zu::WriteToLog(text); }
    static void WriteToLog(std::vector<QString> lines) // NOLINT(performance-unnecessary-value-param)
    {
        zu::WriteToLog(lines);
    }

    /// Converts one recording: loads the chain of segments that starts with fileName, checks it, writes the
    /// record to temporary files in outDir and commits them under their final names. False: the device's
    /// LastError says why (for a bad devId the converter's), and no final file was touched; running out of
    /// memory is such a failure. Lets the std::out_of_range of ZuFileFormat::CompareHeader and
    /// ZuFileFormat::ParseComment pass.
    bool ConvertToComtrade(const QString& fileName, const QString& outDir, unsigned int devId);

    /// Gives the file tmpPath its final name, which is tmpPath without its last 3 characters, replacing an
    /// earlier file of that name. Returns whether that was done.
    static bool RenameTmpFile(const QString& tmpPath);

    /// Removes the file of the final name, if there is one. False only if it is there and stays.
    static bool RemoveOldFile(const QString& tmpPath);

    /// Writes the CFG file from the first segment and the device's totals. Leaves the coefficients on the
    /// analog channels and the lines and stamps on the first segment, for the HDR and INF files.
    bool WriteCfg(std::vector<ZuFileFormat*>* files, ZuCmtrDevParam* dev);

    /// Writes the DAT file: one record per sample over all segments, in the channel order of the CFG file. A
    /// channel that has no sample for a record gets COMTRADE's mark for missing data: 0x8000, or an empty
    /// field. Sums DatBytes of a binary file.
    bool WriteDat(std::vector<ZuFileFormat*>* files, ZuCmtrDevParam* dev);

    /// Writes the fault report. Needs the coefficients and stamps that WriteCfg leaves.
    bool WriteHdr(std::vector<ZuFileFormat*>* files, ZuCmtrDevParam* dev);

    /// Writes the INF file of the first segment through the device's re-sorter.
    bool WriteInf(std::vector<ZuFileFormat*>* files, ZuCmtrDevParam* dev);

    /// Joins the four temporary files in FileCff and removes them. False leaves all files and a marker in
    /// LastError: "-1" if a piece is missing, "0" for every later failure.
    bool WriteCff(ZuCmtrDevParam* dev);

    /// Writes text and a line feed in codec. False only if the device took nothing; a failed write (-1)
    /// counts as success.
    static bool WriteStringToOutFile(QFile& file, const QString& text, QTextCodec* codec);

    /// Copies the whole of from to the current position of to, through buffer of bufferSize bytes.
    static bool fileBinDataCopy(QFile* to, QFile* from, char* buffer, int bufferSize);

private:
    // The device, or null with the bad-number text in LastError (stored under Mutex).
    ZuCmtrDevParam* FindDevice(unsigned int devId);

    // The conversion proper, its arguments checked. Lets std::bad_alloc pass.
    bool Convert(const QString& fileName, const QString& outDir, ZuCmtrDevParam* dev);
};
