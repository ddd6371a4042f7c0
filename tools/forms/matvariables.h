// The variables of a MAT file: what a record looks like in MATLAB.
#pragma once

#include "comtrade/record.h"
#include "forms/matlibrary.h"

#include <QString>

#include <memory>

namespace forms {

struct CloseMat
{
    void operator()(mat_t* file) const { Matio().Close(file); }
};
using MatFile = std::unique_ptr<mat_t, CloseMat>;

struct FreeMatVariable
{
    void operator()(matvar_t* variable) const { Matio().VarFree(variable); }
};
using MatVariable = std::unique_ptr<matvar_t, FreeMatVariable>;

/// The variables with a row for each sample.
inline constexpr char TimeName[] = "time";       ///< seconds from the trigger, one column
inline constexpr char AnalogName[] = "analog";   ///< values in their units, a column for each channel
inline constexpr char DigitalName[] = "digital"; ///< logical, a column for each channel

/// The other variables: `analog_channels` and `digital_channels`, arrays of structures that describe the
/// columns, and the structure `record`, which describes the record.
std::vector<MatVariable> Descriptions(const comtrade::Configuration& config);

/// Whether two variables have the same type, size and contents.
bool IsSame(const matvar_t& a, const matvar_t& b);

/// A time in a MAT file; NaN for Block::NoTime.
double SecondsOf(qint64 nanoseconds);

/// The reverse. It gives the same nanoseconds for moments within 26 days of the trigger.
qint64 NanosecondsOf(double seconds);

} // namespace forms
