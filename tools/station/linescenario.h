// What is to happen in a recording of the line model: given by options, or drawn from a seed.
#pragma once

#include "station/linefault.h"
#include "station/linemodel.h"
#include "station/linestation.h"
#include "station/station.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace station {

// How the automatic reclosing ends.
enum class Reclosing { None, Success, Fault };

// The protection and the breaker of the recorder's end. Delays in seconds.
struct ProtectionDelays
{
    double start;   // of the protection, after the onset
    double trip;    // of its command, after the start
    double opening; // of the breaker's contacts, after the command
};

// A part of a fault that evolves.
struct PlannedPart
{
    double delay; // s, after the onset
    FaultState fault;
};

struct FaultPlan
{
    std::vector<PlannedPart> parts; // the first with no delay
    double inception; // degrees of the bus voltage of the first kind's reference phase; 0: rising zero
    ProtectionDelays protection;
    double remoteOpening; // s, after the onset: the contacts of the other end separate
    Reclosing reclosing;
    double deadTime;                 // s, from the separation of the contacts to their closing
    double remoteClosing;            // s, after that, of the other end on a healthy line
    ProtectionDelays afterReclosing; // on a line that is still faulted
    bool healthyLineStarts;          // the protection of the healthy line starts too
};

// What happens in a recording without a fault.
enum class QuietCause {
    Noise,
    LineLoad,          // the line's load changes in steps
    HealthyLineLoad,   // the healthy line's
    Switching,         // the line is opened under load, and closed again
    TransformerInrush, // a transformer is switched on
    CapacitorInrush,   // a capacitor bank is switched on
    PowerSwing,
    DistantFault, // the source's voltage dips a little
    Frequency     // the frequency changes
};

struct QuietPlan
{
    QuietCause cause;
    std::vector<double> moments; // s after the first one, which is 0
    std::vector<Complex> loads;  // A, of load steps, one a moment
    std::vector<double> parts;   // of a dip, what is left of each phase's EMF
    double strength;             // inrush: A; swing: turns; frequency: Hz per second
    double rhythm;               // inrush: time constant, s; swing: Hz; frequency: length, s
    bool onLine;                 // inrush behind the line, not behind the healthy line
};

struct LineScenario
{
    QString stem;                                           // of the files' names
    QString identity = QStringLiteral("ПС Узловая, РАС-1"); // as the recorder stores it
    StationLine line;
    LineModel model;
    std::optional<FaultPlan> fault; // either of the two
    std::optional<QuietPlan> quiet;
    double sampleRate;
    double seconds;       // of the whole recording; 0 for as long as anything happens
    double beforeTrigger; // s of the recording
    double triggerDelay;  // s, after the onset; the protection's start if that is the cause
    bool startedByProtection;
    bool saturation;     // of the line's current transformers
    double noise;        // standard deviation, per cent of the rated current's and voltage's peak
    bool bounce;         // a contact bounces
    int16_t zone;        // as the recorder stores it: hours, or minutes
    int64_t startSecond; // of the recording, seconds after that of the station's first one
    uint32_t seed;       // of the noise and of the small delays
    bool compressed;
    recorderfile::CodePage codePage;
    size_t segmentSamples = 0; // of a channel in each of its files; 0 for a single file
};

// What `zucmtr sample` can be told about a fault; the rest is as usual.
struct LineFaultOptions
{
    FaultKind kind = FaultKind::AG;
    double distance = 40;    // per cent of the length
    double resistance = 1;   // ohm
    double inception = 60;   // degrees
    double frequency = 50;   // Hz
    double load = 0.3;       // of the line's rated current; below 0 towards the station
    double noise = 0.05;     // per cent
    bool saturation = false; // of the line's current transformers
    std::optional<FaultKind> evolving;
    Reclosing reclosing = Reclosing::None;
    double length = 60; // km
    double sampleRate = 2400;
    double seconds = 0; // for as long as anything happens
    uint32_t seed = 1;
    bool compressed = true;
    recorderfile::CodePage codePage = recorderfile::CodePage::Cp866;
};

LineScenario ScenarioOf(const LineFaultOptions& options);

// Drawn from the seed alone, on one of the lines; the file's name has the seed.
LineScenario RandomFault(uint32_t seed, const std::vector<StationLine>& lines = CatalogueLines());
LineScenario RandomQuiet(uint32_t seed, const std::vector<StationLine>& lines = CatalogueLines());

// The word for a cause in the truth.
QString WordOf(QuietCause cause);

} // namespace station
