// Recordings between the steps of a conversion, for tests of single steps.
#pragma once

#include "base/chainnames.h"
#include "preparation/segmentchain.h"
#include "recorderfile/recorderfile.h"
#include "recording/zufileformat.h"
#include "support/device.h"

#include <vector>

/// A recording made ready for the writers of the station's device as a conversion does it, but regardless of
/// the checks. Its files are segment.ZU and so on in the station's directory, the device's output files
/// "cfg", "dat", "hdr", "inf" and "cff". What the steps throw is passed on.
class ReadyRecording
{
public:
    ReadyRecording(TestStation& station_, const std::vector<recorderfile::Recording>& segments)
        : station(station_), chain(station_.Device())
    {
        const QString first = QStringLiteral("segment.ZU");
        for (size_t i = 0; i < segments.size(); ++i)
            station.Directory().Write(zu::ContinuationName(first, static_cast<int>(i)),
                                      recorderfile::Encode(segments[i]));
        if (!chain.Load(station.Directory().Path(first)) || chain.Files()->size() != segments.size())
            qFatal("the segments do not load: %s", qPrintable(station.Device().LastError));
        chain.CheckChannels();
        chain.SumTotals();
        NameFiles();
        chain.Prepare();
    }

    ReadyRecording(TestStation& station_, const recorderfile::Recording& recording)
        : ReadyRecording(station_, std::vector<recorderfile::Recording>{recording})
    {}

    ZuFileFormat& First() const { return chain.First(); }
    std::vector<ZuFileFormat*>* Files() { return chain.Files(); }

    // The bytes that a writer makes; the test program ends if it reports a failure.
    QByteArray Cfg() { return Bytes(&ZuCmtrConverter::WriteCfg, "cfg"); }
    QByteArray Dat() { return Bytes(&ZuCmtrConverter::WriteDat, "dat"); }
    QByteArray Hdr() { return Bytes(&ZuCmtrConverter::WriteHdr, "hdr"); }

private:
    using Writer = bool (ZuCmtrConverter::*)(std::vector<ZuFileFormat*>*, ZuCmtrDevParam*);

    void NameFiles() const
    {
        const TestDirectory& directory = station.Directory();
        ZuCmtrDevParam& device = station.Device();
        device.FileCfg.setFileName(directory.Path(QStringLiteral("cfg")));
        device.FileDat.setFileName(directory.Path(QStringLiteral("dat")));
        device.FileHdr.setFileName(directory.Path(QStringLiteral("hdr")));
        device.FileInf.setFileName(directory.Path(QStringLiteral("inf")));
        device.FileCff.setFileName(directory.Path(QStringLiteral("cff")));
    }

    QByteArray Bytes(Writer writer, const char* name)
    {
        if (!(station.Converter().*writer)(Files(), &station.Device()))
            qFatal("the %s file is not written", name);
        return ReadBytes(station.Directory().Path(QLatin1String(name)));
    }

    TestStation& station;
    SegmentChain chain;
};
