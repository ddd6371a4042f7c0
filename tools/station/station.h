// A sample station: recordings that look like those of a recorder in a 220/110 kV substation, and the ini
// file that describes it.
//
// The quantities follow from a simple model of the network (network.h) and not from chance: balanced voltages
// and load currents before the trigger, a fault on the line of the first bay, its trip, the dead time and the
// automatic reclosing. The same options give the same bytes on every platform.
//
//     StationOptions options;
//     options.segments = 3;
//     WriteFile(iniPath, MakeIni(options).toUtf8());
//     for (const NamedFile& file : MakeFiles(options, StartKind::PositiveSequence))
//         WriteFile(directory.filePath(file.name), file.bytes);
#pragma once

#include "recorderfile/recorderfile.h"

#include <QMap>
#include <QString>

#include <cstdint>
#include <vector>

namespace station {

// Short circuit on the line of the first bay: phase A to earth, phases B and C, or all three.
enum class Fault { None, SinglePhase, TwoPhase, ThreePhase };

// What started the recorder, as its start comment says. A frequency, harmonic or external start comes without
// a short circuit, whatever the options say; the first two show the dip and the harmonic that started them.
enum class StartKind {
    PositiveSequence, // "ПП" on the currents of the first bay
    NegativeSequence, // "ОП"
    ZeroSequence,     // "НП"
    Channel,          // "ДЗ" on one channel
    Discrete,         // "ДП": the protection start of the first bay
    Frequency,        // "Ч"
    Harmonic,         // "Г"
    External          // from outside, with no channel
};

struct StationOptions
{
    int analogChannels = 32;   // the first 8 are the first bay's, the 9th is the frequency
    int discreteChannels = 64; // at least 1 is made where a chain of segments has analog channels
    double sampleRate = 2400;  // samples per second, below 10000000
    double seconds = 2;        // length of one segment, below 268
    int segments = 1;          // 1 to 16
    bool compressed = true;
    uint16_t blockSamples = 32;
    recorderfile::CodePage codePage = recorderfile::CodePage::Cp866;
    Fault fault = Fault::SinglePhase;
    uint32_t seed = 1;                 // of the measuring noise and the protection's operating time
    QMap<QString, QString> deviceKeys; // further keys of the device's section, in place of its own
};

// Names of the two sections of the ini file.
QString DefaultsSection();
QString DeviceSection();

// The kinds of start that the channels of the station allow, in the order of the enumeration.
std::vector<StartKind> PossibleStarts(const StationOptions& options);

// One recording as the chain of its segments. They have the same identity, channels and sample counts; time
// runs on from one to the next, and the discrete records of each start at 0 with the state at that moment.
std::vector<recorderfile::Recording> MakeRecording(const StationOptions& options, StartKind start);

// The recording's files: Vostochnaya_000123.ZU and its continuations; the number shows the kind of start.
std::vector<recorderfile::NamedFile> MakeFiles(const StationOptions& options, StartKind start);

// Text of the ini file: the defaults, the device, and the sorting dictionary of all its channels and bays.
QString MakeIni(const StationOptions& options);

} // namespace station
