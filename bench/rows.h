// The measurements, each of which adds its lines to the report. All throw std::runtime_error if a conversion
// fails; being slow is never a failure.
#pragma once

#include "report.h"

#include <QString>

namespace bench {

struct Settings
{
    QString directory; // on the file system to measure
    int rounds = 9;    // of both sides in turn; the shortest time of each counts
    bool quick = false;
};

// Whole conversions against reading the inputs and `cp` of the outputs.
void MeasureLargePlain(const Settings& settings, Report& report);
void MeasureLargeCompressed(const Settings& settings, Report& report);
void MeasureLargeAscii(const Settings& settings, Report& report);
void MeasureLargeCff(const Settings& settings, Report& report);
void MeasureStates(const Settings& settings, Report& report);

/// The decoder at each width code against memcpy of the samples.
void MeasureDecoding(const Settings& settings, Report& report);

/// The same with the instruction sets cut down to those of older processors.
void MeasureDecodingBySets(const Settings& settings, Report& report);

/// Columns of codes turned into rows against memcpy, likewise.
void MeasureTurning(const Settings& settings, Report& report);

/// Many small recordings through one device against the same traffic in plain C.
void MeasureTypical(const Settings& settings, Report& report);

/// Channels matched with a large dictionary against ones with a tenth of it.
void MeasureMatching(const Settings& settings, Report& report);

/// The time for each segment of chains of different lengths.
void MeasureSegments(const Settings& settings, Report& report);

/// The time of conversions by channels and length.
void MeasureGrowth(const Settings& settings, Report& report);

/// The start of the program, alone and with one recording to convert.
void MeasureStart(const Settings& settings, Report& report);

/// Peak resident memory against the size of the samples.
void MeasureMemory(const Settings& settings, Report& report);

/// ASCII records against fprintf, one value per call.
void MeasureAsciiRecords(const Settings& settings, Report& report);

/// Records read against reading their bytes.
void MeasureReading(const Settings& settings, Report& report);

/// Records in another form, read back and compared, against reading them and `cp` of the new ones.
void MeasureExport(const Settings& settings, Report& report);

} // namespace bench
