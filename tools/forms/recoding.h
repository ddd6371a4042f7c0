// The codes of a record as a COMTRADE form holds them.
#pragma once

#include "forms/export.h"
#include "forms/stream.h"

#include <vector>

namespace forms {

/// What is known of the codes of an analog channel after a pass through them.
struct CodeRange
{
    bool hasAny = false; ///< a value that is not missing
    double least = 0;
    double greatest = 0;
    bool isWhole = true;  ///< all of them are
    bool fitsText = true; ///< all of them have a text of the length that ASCII of 2013 allows
};

/// Adds the codes of a block to the ranges, one for each analog channel.
void Extend(std::vector<CodeRange>& ranges, const comtrade::Block& block);

/// New codes for a channel: source code = scale * new code + offset.
struct NewCodes
{
    bool isNeeded = false; ///< otherwise the codes stay as they are
    double scale = 1;
    double offset = 0;
};

/// The codes of a data type, and of ASCII in a revision.
struct CodeLimits
{
    bool isWhole = true; ///< whole numbers only
    double most = 0;     ///< the greatest one; the least is as far from 0
    double missing = 0;  ///< the code that stands for a missing value; NaN: none of the numbers does
};
CodeLimits LimitsOf(comtrade::DataType type, comtrade::Revision revision);

/// The new codes that channels need so that the form holds them: those whose codes are not whole where the
/// form has whole codes, or, of a source in single precision, beyond its range. They use the whole range of
/// the form, so that the error is half a step at most.
std::vector<NewCodes> NewCodesFor(const comtrade::Configuration& target, comtrade::DataType source,
                                  const std::vector<CodeRange>& ranges);

/// The configuration with the revision, data type and side that are asked for. What revision 1999 has no
/// lines for is added to `lost`. Throws FormError for a channel whose factors do not lead to the side.
comtrade::Configuration TargetOf(const comtrade::Configuration& source, const Request& request,
                                 QStringList& lost);

/// The values of one side: a and b times the ratio of the factors. Throws FormError.
void TakeSide(comtrade::Configuration& config, Side side);

/// Delivers the codes that the target holds, with its configuration.
class Recoding : public Stream
{
public:
    /// The source must outlive it. codes: one for each analog channel, or none if all stay.
    Recoding(Stream& source_, comtrade::Configuration target, std::vector<NewCodes> codes_);

    const comtrade::Configuration& Config() const override { return config; }
    bool Next(comtrade::Block& block) override;

    /// Values of ASCII data that were rounded to single precision.
    qint64 Rounded() const { return rounded; }

private:
    void Renumber(comtrade::Block& block, size_t channel) const;
    void RoundToSingle(comtrade::Block& block);
    static void TakeDigits(comtrade::Block& block);

    Stream& source;
    comtrade::Configuration config;
    const std::vector<NewCodes> codes;
    const bool rounds;      // to single precision
    const bool takesDigits; // real numbers in single precision become texts
    const double forbidden; // the code that would be read as missing
    qint64 rounded = 0;
};

} // namespace forms
