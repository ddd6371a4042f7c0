// Recordings on the road of a conversion, for tests of its single steps.
#pragma once

#include "recorderfile/recorderfile.h"
#include "recording/zufileformat.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "support/device.h"

#include <memory>
#include <vector>

/// The segments of a recording, loaded and made ready for the writers of the station's device: channels
/// renamed, start comment taken apart, channels ordered, output named and totals summed, as a conversion does
/// it but without its checks. The device's output files are named "cfg", "dat", "hdr", "inf" and "cff" in the
/// station's directory. What the steps throw passes.
class ReadyRecording
{
public:
    ReadyRecording(TestStation& station_, const std::vector<recorderfile::Recording>& segments)
        : station(station_)
    {
        for (const recorderfile::Recording& segment : segments)
            Load(segment);
        SumTotals();
        NameFiles();
        ZuCmtrDevParam& device = station.Device();
        First().RenameAllChannelsName(&device);
        First().ParseComment(&device);
        device.Resorter->SortZuFile(&First());
        First().OutName = First().DoOutName(&device);
    }

    ReadyRecording(TestStation& station_, const recorderfile::Recording& recording)
        : ReadyRecording(station_, std::vector<recorderfile::Recording>{recording})
    {}

    ZuFileFormat& First() const { return *files.front(); }
    std::vector<ZuFileFormat*>* Files() { return &files; }

    // The bytes that a writer makes; the test program ends if it reports a failure.
    QByteArray Cfg() { return Bytes(&ZuCmtrConverter::WriteCfg, "cfg"); }
    QByteArray Dat() { return Bytes(&ZuCmtrConverter::WriteDat, "dat"); }
    QByteArray Hdr() { return Bytes(&ZuCmtrConverter::WriteHdr, "hdr"); }

private:
    using Writer = bool (ZuCmtrConverter::*)(std::vector<ZuFileFormat*>*, ZuCmtrDevParam*);

    void Load(const recorderfile::Recording& segment)
    {
        auto file = std::make_unique<ZuFileFormat>();
        const QString path =
            station.Directory().Write(QStringLiteral("segment"), recorderfile::Encode(segment));
        if (!file->Load(path))
            qFatal("the segment does not load: %s", qPrintable(file->ErrorText));
        file->IsAnChRatesValid();
        files.push_back(file.get());
        owned.push_back(std::move(file));
    }

    void SumTotals()
    {
        ZuCmtrDevParam& device = station.Device();
        device.SampleRate = First().SampleRate;
        device.TotalTime = 0;
        device.TotalSamples = 0;
        for (ZuFileFormat* file : files) {
            file->SegmentTimeBase = static_cast<qint64>(device.TotalTime);
            device.TotalTime += file->SegmentDuration;
            device.TotalSamples += file->GetNumPointsAn();
        }
    }

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
        if (!(station.Converter().*writer)(&files, &station.Device()))
            qFatal("the %s file is not written", name);
        return ReadBytes(station.Directory().Path(QLatin1String(name)));
    }

    TestStation& station;
    std::vector<std::unique_ptr<ZuFileFormat>> owned;
    std::vector<ZuFileFormat*> files;
};
