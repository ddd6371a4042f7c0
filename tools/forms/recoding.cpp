#include "forms/recoding.h"

#include "comtrade/moment.h"
#include "forms/comtradetext.h"
#include "forms/dataencoder.h"
#include "text/texts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

using comtrade::Block;
using comtrade::Configuration;
using comtrade::DataType;
using comtrade::Revision;

namespace forms {

namespace {

void Extend(CodeRange& range, double code)
{
    if (std::isnan(code))
        return;
    range.least = range.hasAny ? std::min(range.least, code) : code;
    range.greatest = range.hasAny ? std::max(range.greatest, code) : code;
    range.hasAny = true;
    range.isWhole = range.isWhole && code == std::floor(code);
    range.fitsText = range.fitsText && FitsText(code);
}

NewCodes Spread(const CodeRange& range, double most)
{
    NewCodes codes;
    codes.isNeeded = true;
    codes.offset = range.least / 2 + range.greatest / 2;
    const double half = range.greatest / 2 - range.least / 2;
    if (half > 0)
        codes.scale = half / most;
    return codes;
}

bool Needs(const CodeRange& range, const CodeLimits& limits, DataType source)
{
    if (!range.hasAny)
        return false;
    if (!limits.isWhole)
        return !range.fitsText;
    const bool isBeyond = range.least < -limits.most || range.greatest > limits.most;
    return !range.isWhole || (isBeyond && source == DataType::Float32);
}

// What stands in the lines that revision 1999 does not have.
QStringList ClockTexts(const Configuration& config)
{
    QStringList texts;
    const std::pair<const QString&, QString> fields[] = {{config.timeCode, Tr("export", "time code")},
                                                         {config.localCode, Tr("export", "local code")},
                                                         {config.timeQuality, Tr("export", "time quality")},
                                                         {config.leapSecond, Tr("export", "leap second")}};
    for (const auto& [value, name] : fields)
        if (!value.isEmpty())
            texts << name + QLatin1Char(' ') + value;
    return texts;
}

// Only revision 2013 has nanoseconds, in the times of start and trigger and as the unit of the time stamps.
void TakeClock(Configuration& target, const Configuration& source)
{
    constexpr int microseconds = 6; // decimals
    for (comtrade::TimeStamp* stamp : {&target.start, &target.trigger}) {
        if (target.revision == Revision::R2013 || stamp->decimals <= microseconds)
            continue;
        if (stamp->nanoseconds % 1000 != 0)
            throw FormError(Tr("export", "the time %1 has nanoseconds, revision 1999 only microseconds; "
                                         "--revision 2013 holds it")
                                .arg(comtrade::ClockText(*stamp)));
        stamp->decimals = microseconds;
    }
    const double unit = target.StampSeconds();
    if (unit != source.StampSeconds())
        target.timeMultiplier *= source.StampSeconds() / unit;
}

void TakeRevision(Configuration& target, Revision revision, QStringList& lost)
{
    const Configuration source = target;
    const bool isOlder = revision == Revision::R1999;
    if (isOlder)
        lost += ClockTexts(target);
    // What stands for a zone, a quality and a leap second that are not known.
    const std::pair<QString&, const char*> fields[] = {
        {target.timeCode, "x"}, {target.localCode, "x"}, {target.timeQuality, "F"}, {target.leapSecond, "3"}};
    for (const auto& [field, unknown] : fields) {
        if (isOlder)
            field.clear();
        else if (field.isEmpty())
            field = QLatin1String(unknown);
    }
    target.revision = revision;
    TakeClock(target, source);
}

} // namespace

CodeLimits LimitsOf(DataType type, Revision revision)
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    switch (type) {
    case DataType::Binary:
        return {true, 32767, none};
    case DataType::Binary32:
        return {true, 2147483647, none};
    case DataType::Float32:
        return {false, std::numeric_limits<float>::max(), none};
    case DataType::Ascii:
        break;
    }
    return revision == Revision::R1999
               ? CodeLimits{true, 99998, 99999}
               : CodeLimits{false, static_cast<double>(std::numeric_limits<float>::max()), 99999};
}

void Extend(std::vector<CodeRange>& ranges, const Block& block)
{
    const double* code = block.analog.data();
    for (size_t i = 0; i < block.count; ++i)
        for (CodeRange& range : ranges)
            Extend(range, *code++);
}

std::vector<NewCodes> NewCodesFor(const Configuration& target, DataType source,
                                  const std::vector<CodeRange>& ranges)
{
    // Codes in place of real numbers in ASCII of 2013: as many as BINARY32 has.
    constexpr double mostReal = 2147483647;
    const CodeLimits limits = LimitsOf(target.dataType, target.revision);
    std::vector<NewCodes> codes(ranges.size());
    for (size_t i = 0; i < ranges.size(); ++i)
        if (target.dataType != DataType::Float32 && Needs(ranges[i], limits, source))
            codes[i] = Spread(ranges[i], limits.isWhole ? limits.most : mostReal);
    return codes;
}

void TakeSide(Configuration& config, Side side)
{
    if (side == Side::AsStored)
        return;
    const bool primary = side == Side::Primary;
    for (size_t i = 0; i < config.analog.size(); ++i) {
        comtrade::AnalogChannel& channel = config.analog[i];
        if (channel.primaryValues == primary)
            continue;
        const double ratio =
            primary ? channel.primary / channel.secondary : channel.secondary / channel.primary;
        if (!std::isfinite(ratio) || ratio <= 0)
            throw FormError(
                Tr("export", "A%1 (%2): its factors, primary %3 and secondary %4, do not lead to %5 values")
                    .arg(i + 1)
                    .arg(channel.name, NumberText(channel.primary), NumberText(channel.secondary),
                         primary ? Tr("export", "primary") : Tr("export", "secondary")));
        channel.a *= ratio;
        channel.b *= ratio;
        channel.primaryValues = primary;
    }
}

Configuration TargetOf(const Configuration& source, const Request& request, QStringList& lost)
{
    Configuration target = source;
    const bool isContainer = request.form == Form::Cff;
    const DataType data = request.comtrade.data.value_or(source.dataType);
    const bool isNew = isContainer || data == DataType::Binary32 || data == DataType::Float32;
    const Revision own = isNew ? Revision::R2013 : std::max(source.revision, Revision::R1999);
    TakeRevision(target, request.comtrade.revision.value_or(own), lost);
    target.dataType = data;
    if (isNew && target.revision == Revision::R1999)
        throw FormError(Tr("export",
                           "revision 1999 has ASCII and BINARY data only, and no CFF file; %1 needs "
                           "revision 2013, or give --data")
                            .arg(comtrade::NameOf(data)));
    TakeSide(target, request.side);
    return target;
}

Recoding::Recoding(Stream& source_, Configuration target, std::vector<NewCodes> codes_)
    : source(source_), config(std::move(target)), codes(std::move(codes_)),
      rounds(config.dataType == DataType::Float32 && source.Config().dataType == DataType::Ascii),
      takesDigits(config.dataType == DataType::Ascii && source.Config().dataType == DataType::Float32),
      forbidden(LimitsOf(config.dataType, config.revision).missing)
{
    const CodeLimits limits = LimitsOf(config.dataType, config.revision);
    for (size_t i = 0; i < codes.size(); ++i) {
        if (!codes[i].isNeeded)
            continue;
        comtrade::AnalogChannel& channel = config.analog[i];
        channel.b += channel.a * codes[i].offset;
        channel.a *= codes[i].scale;
        channel.max = limits.isWhole ? limits.most : 2147483647;
        channel.min = -channel.max;
    }
}

void Recoding::Renumber(Block& block, size_t channel) const
{
    const NewCodes& own = codes[channel];
    const double most = config.analog[channel].max;
    for (size_t i = 0; i < block.count; ++i) {
        double& code = block.analog[i * config.analog.size() + channel];
        if (std::isnan(code))
            continue;
        const double exact = (code - own.offset) / own.scale;
        code = std::clamp(std::round(exact), -most, most);
        // Deliberate: this code would be read as a missing value; ASCII of 2013 has real numbers beside it.
        if (code == forbidden)
            code += exact < code ? -0.5 : 0.5;
    }
}

void Recoding::RoundToSingle(Block& block)
{
    for (size_t i = 0; i < block.count * config.analog.size(); ++i) {
        double& code = block.analog[i];
        // A whole code that does not fit is an error of the encoder.
        if (std::isnan(code) || code == std::floor(code) ||
            std::fabs(code) > static_cast<double>(std::numeric_limits<float>::max()))
            continue;
        const auto single = static_cast<double>(static_cast<float>(code));
        rounded += single != code ? 1 : 0;
        code = single;
    }
}

// A number in single precision is written with the digits that it has there, and read in double precision: as
// the number of those digits. All the digits of its double would be noise, and too many for the field.
void Recoding::TakeDigits(Block& block)
{
    std::array<char, 32> text{};
    for (double& code : block.analog) {
        if (std::isnan(code) || code == std::floor(code))
            continue;
        const char* const end = std::to_chars(text.begin(), text.end(), static_cast<float>(code)).ptr;
        std::from_chars(text.begin(), end, code);
    }
}

bool Recoding::Next(Block& block)
{
    if (!source.Next(block))
        return false;
    for (size_t channel = 0; channel < codes.size(); ++channel)
        if (codes[channel].isNeeded)
            Renumber(block, channel);
    if (rounds)
        RoundToSingle(block);
    if (takesDigits)
        TakeDigits(block);
    return true;
}

} // namespace forms
