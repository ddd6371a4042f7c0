// The segments of a recording: loaded, checked and made ready for the writers.
#include "preparation/segmentchain.h"

#include "base/chainnames.h"
#include "base/numeric.h"
#include "device/zucmtrdevparam.h"
#include "recording/zufileformat.h"
#include "resorter/ResorterZuCmtrConv.h"

#include <QFile>

#include <memory>

SegmentChain::SegmentChain(ZuCmtrDevParam& device_) : device(device_) {}

SegmentChain::~SegmentChain()
{
    for (const ZuFileFormat* file : files)
        delete file;
}

// The end of a file name that is too long for a note.
static QString ShortName(const QString& fileName)
{
    constexpr int LongestName = 40;
    if (fileName.length() <= LongestName)
        return fileName;
    return QStringLiteral(" ...") + fileName.right(LongestName - 3);
}

bool SegmentChain::Fail(const QString& text)
{
    device.LastError = text;
    return false;
}

bool SegmentChain::Load(const QString& fileName)
{
    auto first = std::make_unique<ZuFileFormat>();
    if (!first->Load(fileName))
        return Fail(first->ErrorText);
    paths.push_back(fileName);
    files.push_back(first.get());
    first.release(); // the chain owns it from here

    for (int number = 1; number <= zu::MostContinuations; ++number) {
        const QString name = zu::ContinuationName(fileName, number);
        if (!QFile::exists(name) || !LoadContinuation(name, fileName))
            break;
    }
    return true;
}

// Appends the file name to the chain; false, with a note in the queue, if it cannot be loaded.
bool SegmentChain::LoadContinuation(const QString& name, const QString& fileName)
{
    auto next = std::make_unique<ZuFileFormat>();
    if (!next->Load(name)) {
        // Deliberate: the note names the first file, not the one that failed.
        device.LogMessages.push_back(
            QStringLiteral("Ошибка обработки файла %1 [%2], окончание осциллограммы некорректно")
                .arg(ShortName(fileName))
                .arg(next->ErrorText));
        return false;
    }
    paths.push_back(name);
    files.push_back(next.get());
    next.release(); // the chain owns it from here
    return true;
}

void SegmentChain::CutAtDifference()
{
    size_t fitting = 1;
    while (fitting < files.size() && files[fitting]->CompareHeader(files[0]))
        ++fitting;
    if (fitting == files.size())
        return;
    device.LogMessages.push_back(
        QStringLiteral("Параметры файлов [%1] и [%2] различны, окончание осциллограммы некорректно")
            .arg(paths[fitting])
            .arg(paths[0]));
    while (files.size() > fitting) {
        delete files.back();
        files.pop_back();
        paths.pop_back();
    }
}

bool SegmentChain::CheckChannels()
{
    for (size_t i = 0; i < files.size(); ++i) {
        if (!files[i]->IsAnChRatesValid())
            return Fail(QStringLiteral("Разные частоты дискретизации в файле [%1]").arg(paths[i]));
        if (!files[i]->IsAnChPointsValid())
            return Fail(
                QStringLiteral("Разное количество точек в аналоговых каналах в файле [%1]").arg(paths[i]));
    }
    return true;
}

// Samples of a recording without analog channels.
static qint64 SamplesOfTime(quint64 microseconds, double sampleRate)
{
    // Deliberate: the time is narrowed to 32 bits, which long recordings show in the result.
    const auto narrowed = static_cast<float>(microseconds + 1);
    const double samples = static_cast<double>(narrowed) * sampleRate / 1000000.0;
    return zu::ToInteger<qint64>(samples);
}

bool SegmentChain::SumTotals()
{
    ZuFileFormat& first = First();
    device.SampleRate = first.SampleRate;
    device.TotalTime = first.SegmentDuration;
    first.SegmentTimeBase = 0;
    device.TotalSamples = first.GetNumPointsAn();
    if (zu::IsFloatEqual(device.SampleRate, 0.0))
        return Fail(QStringLiteral("Плохое значение rate (==0)"));
    if (device.TotalTime == 0)
        return Fail(QStringLiteral("Плохое значение fullTime (==0)"));

    for (size_t i = 1; i < files.size(); ++i) {
        ZuFileFormat& file = *files[i];
        if (!zu::IsFloatEqual(device.SampleRate, file.SampleRate))
            return Fail(QStringLiteral("Разные частоты дискретизации в разных файлах"));
        file.SegmentTimeBase = static_cast<qint64>(device.TotalTime);
        device.TotalTime += file.SegmentDuration;
        if (device.TotalSamples > 0)
            device.TotalSamples += file.GetNumPointsAn();
    }
    if (device.TotalSamples == 0)
        device.TotalSamples = SamplesOfTime(device.TotalTime, device.SampleRate);
    return true;
}

bool SegmentChain::Check()
{
    CutAtDifference();
    return CheckChannels() && SumTotals();
}

void SegmentChain::Prepare()
{
    ZuFileFormat& first = First();
    first.RenameAllChannelsName(&device);
    first.ParseComment(&device);
    device.Resorter->SortZuFile(&first);
    first.OutName = first.DoOutName(&device);
}

void SegmentChain::RemoveSources() const
{
    for (const QString& path : paths)
        QFile::remove(path);
}
