// Whether a record is whole and agrees with itself, judged without its recording.
#pragma once

#include "comtrade/finding.h"

#include <QString>

namespace verify {

/// What a record was found to be.
struct Wholeness
{
    qint64 samples = 0; ///< by its configuration
    size_t analog = 0;  ///< channels
    size_t states = 0;
    bool isConverters = false; ///< it has the fault report or the INF file of this converter
    comtrade::Findings wrong;  ///< nothing if the record is good
};

/// Reads the record to its end. Found out are: pieces and sections that are missing or have another size than
/// the record says, samples that are missing or left over, sample numbers with gaps, times that are not those
/// of the rates, values beyond the limits of their channels; and of a record of this converter, whether its
/// configuration, its report and its INF file say the same. A record that cannot be read has one finding.
Wholeness WholenessOf(const QString& path);

} // namespace verify
