// Recordings on disk, and the device that converts them the way a host does.
#pragma once

#include "service/zucmtrconverter.h"
#include "station/station.h"

#include <QStringList>
#include <QTemporaryDir>

#include <vector>

namespace bench {

/// The forms of output that the workloads use.
enum class Form { Binary1999, Ascii1999, Ascii2013, BinaryCff2013 };

/// A directory for one workload, inside another one; removed with the object.
class Scratch
{
public:
    /// Throws std::runtime_error if it cannot be made.
    explicit Scratch(const QString& parent);

    /// Path of name inside it.
    QString Path(const QString& name) const { return directory.filePath(name); }

    /// Makes the subdirectory name, without its earlier content, and returns its path.
    QString EmptyDirectory(const QString& name) const;

    /// Paths of the files in the subdirectory name, sorted.
    QStringList Files(const QString& name) const;

private:
    QTemporaryDir directory;
};

/// The large recording: 64 analog and 128 discrete channels, 4800 Hz, 4 segments of 50 s; a tenth of the
/// length if quick.
station::StationOptions LargeStation(bool quick);

/// The typical recording: 32 analog and 64 discrete channels, 2400 Hz, 2 s, compressed.
station::StationOptions TypicalStation();

/// Writes the segments of a recording into directory as rec.ZU with its continuations. Returns their paths,
/// the first file first. Throws std::runtime_error if one cannot be written.
QStringList WriteRecording(const std::vector<recorderfile::Recording>& segments, const QString& directory);

/// The same for the recording that the station makes, started by the first bay's protection.
QStringList WriteRecording(const station::StationOptions& options, const QString& directory);

/// A converter with one device that has a dictionary.
class Device
{
public:
    /// For a station, with the sorting dictionary of all its channels; its ini file goes into scratch. Throws
    /// std::runtime_error if it does not load.
    Device(station::StationOptions options, Form form, const Scratch& scratch);

    /// For the ini text, which must have the station's sections.
    Device(const QString& ini, const Scratch& scratch);

    ~Device();
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    ZuCmtrConverter& Converter() { return converter; }
    ZuCmtrDevParam& Parameters() { return *converter.m_DevParams.at(0); }

    /// Throws std::runtime_error with the reason if the recording cannot be converted.
    void Convert(const QString& firstFile, const QString& outDir);

private:
    void Load(const QString& ini, const Scratch& scratch);

    ZuCmtrConverter converter;
};

} // namespace bench
