// A record written in another form, read back and compared.
#pragma once

#include "forms/comtradewriter.h"
#include "forms/export.h"
#include "text/error.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace forms {

/// What was written is not what was to be written. The message names the place.
class Different : public text::Error
{
public:
    using text::Error::Error;
};

/// The caller wanted no more.
class Stopped : public text::Error
{
public:
    Stopped() : text::Error(QString()) {}
};

/// A channel whose codes are others than in the source.
struct NewScale
{
    size_t channel = 0;  ///< place in the written record
    double halfStep = 0; ///< the greatest error of its values, in its unit
};

struct Exported
{
    QStringList files;              ///< the endings of what was written, the configuration first
    comtrade::Configuration config; ///< of the written record
    comtrade::DataType sourceType = comtrade::DataType::Ascii;
    qint64 samples = 0;              ///< written
    qint64 announced = 0;            ///< samples of the source by its configuration
    qint64 total = 0;                ///< samples of the source; the same unless the two contradict each other
    size_t statesLeftOut = 0;        ///< because they never change
    std::vector<NewScale> newScales; ///< of channels that needed other codes
    qint64 rounded = 0;              ///< real numbers of ASCII data rounded to single precision
    QString resampling;              ///< what was done to the samples; empty: nothing
    bool equipmentLeftOut = false;   ///< sections of the INF text that count channels in ways of their own
    QStringList lost;                ///< what has no place in the form: names and values
    comtrade::Findings forgiven;     ///< about the source
};

struct Source
{
    QString path; ///< the .cfg or .cff
    comtrade::ReadingOptions reading;
    std::function<bool()> isStopped; ///< asked now and then; may be empty
};

/// Writes base + ending for each file of the form, reads them back and compares every value, state and time
/// and the texts. Throws FormError for what the form cannot hold, NoSuchChannel, FileError, Different,
/// Stopped, or comtrade::Error for a bad source; files that were written so far are left to the caller.
Exported Export(const Source& source, const Request& request, const QString& base);

} // namespace forms
