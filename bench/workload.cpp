#include "workload.h"
#include "base/chainnames.h"

#include <QDir>

#include <stdexcept>

namespace {

QMap<QString, QString> KeysOf(bench::Form form)
{
    const auto flag = [](bool on) { return on ? QStringLiteral("1") : QStringLiteral("0"); };
    const bool revision1999 = form == bench::Form::Binary1999 || form == bench::Form::Ascii1999;
    const bool binary = form == bench::Form::Binary1999 || form == bench::Form::BinaryCff2013;
    return {{QStringLiteral("Тип Comtrade 1999"), flag(revision1999)},
            {QStringLiteral("Тип Comtrade BIN"), flag(binary)},
            {QStringLiteral("Тип Comtrade CFF"), flag(form == bench::Form::BinaryCff2013)}};
}

QString IniOf(station::StationOptions options, bench::Form form)
{
    options.deviceKeys = KeysOf(form);
    return station::MakeIni(options);
}

} // namespace

namespace bench {

Scratch::Scratch(const QString& parent) : directory(parent + QStringLiteral("/zucmtr-bench-XXXXXX"))
{
    if (!directory.isValid())
        throw std::runtime_error("cannot make a directory in " + parent.toStdString());
}

QString Scratch::EmptyDirectory(const QString& name) const
{
    QDir subdirectory(Path(name));
    subdirectory.removeRecursively();
    if (!QDir().mkpath(subdirectory.path()))
        throw std::runtime_error("cannot make the directory " + subdirectory.path().toStdString());
    return subdirectory.path();
}

QStringList Scratch::Files(const QString& name) const
{
    const QDir subdirectory(Path(name));
    QStringList paths;
    for (const QString& file : subdirectory.entryList(QDir::Files, QDir::Name))
        paths.append(subdirectory.filePath(file));
    return paths;
}

station::StationOptions LargeStation(bool quick)
{
    station::StationOptions options;
    options.analogChannels = 64;
    options.discreteChannels = 128;
    options.sampleRate = 4800;
    options.seconds = quick ? 5 : 50;
    options.segments = 4;
    options.compressed = false;
    return options;
}

station::StationOptions TypicalStation()
{
    station::StationOptions options;
    options.analogChannels = 32;
    options.discreteChannels = 64;
    options.sampleRate = 2400;
    options.seconds = 2;
    return options;
}

QStringList WriteRecording(const std::vector<recorderfile::Recording>& segments, const QString& directory)
{
    const QString firstName = QStringLiteral("rec.ZU");
    QStringList paths;
    for (const recorderfile::Recording& segment : segments) {
        const QString name = zu::ContinuationName(firstName, static_cast<int>(paths.size()));
        paths.append(directory + QLatin1Char('/') + name);
        if (!recorderfile::WriteFile(paths.last(), recorderfile::Encode(segment)))
            throw std::runtime_error("cannot write " + paths.last().toStdString());
    }
    return paths;
}

QStringList WriteRecording(const station::StationOptions& options, const QString& directory)
{
    return WriteRecording(station::MakeRecording(options, station::StartKind::Discrete), directory);
}

Device::Device(station::StationOptions options, Form form, const Scratch& scratch)
{
    Load(IniOf(std::move(options), form), scratch);
}

Device::Device(const QString& ini, const Scratch& scratch)
{
    Load(ini, scratch);
}

Device::~Device()
{
    converter.Clear();
}

void Device::Load(const QString& ini, const Scratch& scratch)
{
    const QString path = scratch.Path(QStringLiteral("ZuDrv.ini"));
    ZuCmtrConverter::LogFilePath = scratch.Path(QStringLiteral("log.txt"));
    unsigned int number = 0;
    if (!recorderfile::WriteFile(path, ini.toUtf8()) ||
        !converter.LoadFromIniDefault(path, station::DefaultsSection()) ||
        !converter.LoadFromIni(path, station::DeviceSection(), &number))
        throw std::runtime_error("the device does not load");
}

void Device::Convert(const QString& firstFile, const QString& outDir)
{
    if (!converter.ConvertToComtrade(firstFile, outDir, 0))
        throw std::runtime_error("the conversion failed: " + Parameters().LastError.toStdString());
}

} // namespace bench
