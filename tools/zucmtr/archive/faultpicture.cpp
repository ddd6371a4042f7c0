#include "zucmtr/archive/faultpicture.h"

#include "analysis/channelrole.h"
#include "analysis/linematch.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace archive {

namespace {

using catalogue::PictureColumns;

constexpr double PeriodsAround = 2; // of the fault
constexpr double LeastPeriods = 8;
constexpr double MostPeriods = 12;
constexpr int GreatestLevel = 31; // of a letter, up and down
constexpr int MissingLetter = 63;

using Wave =
    std::vector<double>; // a value for each column; NaN for a missing one; empty: there is no channel

struct Span
{
    double from; // s from the trigger
    double to;
};

Span SpanOf(const analysis::Oscillogram& oscillogram, const analysis::Fault& fault)
{
    const double period = 1 / analysis::MainsFrequency(oscillogram.config);
    const qint64 last = oscillogram.first + std::max<qint64>(oscillogram.Count() - 1, 0);
    const double end = oscillogram.axis.TimeOf(last);
    const double from =
        std::max(fault.Onset() - PeriodsAround * period, oscillogram.axis.TimeOf(oscillogram.first));
    const double wanted = fault.Clearing().value_or(end) + PeriodsAround * period;
    return {from,
            std::min(std::clamp(wanted, from + LeastPeriods * period, from + MostPeriods * period), end)};
}

// Of the samples in one column the value that is farthest from zero, so that no peak is lost.
double Farthest(const analysis::Codes& codes, const comtrade::AnalogChannel& channel, size_t begin,
                size_t end)
{
    double farthest = std::numeric_limits<double>::quiet_NaN();
    for (size_t sample = begin; sample < end; ++sample) {
        const double value = channel.a * codes.At(sample) + channel.b;
        if (std::isfinite(value) && !(std::abs(value) <= std::abs(farthest)))
            farthest = value;
    }
    return farthest;
}

// The first sample of each column, and the one after the last.
using Columns = std::array<size_t, PictureColumns + 1>;

Columns ColumnsOf(const analysis::Oscillogram& oscillogram, const Span& span)
{
    const qint64 beyond = oscillogram.first + oscillogram.Count();
    Columns columns{};
    for (int column = 0; column <= PictureColumns; ++column) {
        const double time = span.from + (span.to - span.from) * column / PictureColumns;
        columns[static_cast<size_t>(column)] = static_cast<size_t>(
            std::max<qint64>(oscillogram.axis.SampleAt(time, beyond) - oscillogram.first, 0));
    }
    return columns;
}

Wave WaveOf(const analysis::Oscillogram& oscillogram, int place, const Columns& columns)
{
    if (place == analysis::NoChannel)
        return {};
    const auto index = static_cast<size_t>(place);
    const comtrade::AnalogChannel& channel = oscillogram.config.analog[index];
    const double factor = analysis::PrimaryFactor(channel) * analysis::BaseFactor(channel.unit);
    Wave wave;
    wave.reserve(PictureColumns);
    for (size_t column = 0; column + 1 < columns.size(); ++column) {
        const size_t begin = columns[column];
        wave.push_back(factor * Farthest(oscillogram.analog[index], channel, begin,
                                         std::max(columns[column + 1], begin + 1)));
    }
    return wave;
}

std::optional<double> GreatestOf(const std::vector<Wave>& waves, size_t first)
{
    std::optional<double> greatest;
    for (size_t i = first; i < first + analysis::Phases; ++i) {
        for (const double value : waves[i]) {
            if (std::isfinite(value))
                greatest = std::max(greatest.value_or(0), std::abs(value));
        }
    }
    return greatest;
}

QString LettersOf(const Wave& wave, double greatest)
{
    QString text;
    for (const double value : wave) {
        const double level = greatest > 0 ? value / greatest * GreatestLevel : 0;
        const int letter =
            std::isfinite(value) ? GreatestLevel + static_cast<int>(std::lround(level)) : MissingLetter;
        text += QLatin1Char(catalogue::PictureLetters[letter]);
    }
    return text;
}

} // namespace

std::optional<catalogue::PictureFacts> PictureOf(const analysis::Oscillogram& oscillogram,
                                                 const analysis::Summary& summary)
{
    if (!summary.findings.fault)
        return std::nullopt;
    const analysis::Circuit& circuit = *summary.FaultedCircuit();
    const analysis::Circuit* other =
        analysis::VoltagesOf(circuit, summary.circuits, analysis::LineOf(circuit.name, summary.lines));
    const analysis::Circuit& voltages = other == nullptr ? circuit : *other;
    const Span span = SpanOf(oscillogram, *summary.findings.fault);
    const Columns columns = ColumnsOf(oscillogram, span);
    std::vector<Wave> waves;
    waves.reserve(2 * analysis::Phases);
    for (size_t phase = 0; phase < analysis::Phases; ++phase)
        waves.push_back(WaveOf(oscillogram, circuit.currents[phase], columns));
    for (size_t phase = 0; phase < analysis::Phases; ++phase)
        waves.push_back(WaveOf(oscillogram, voltages.voltages[phase], columns));
    catalogue::PictureFacts picture;
    picture.from = span.from;
    picture.to = span.to;
    picture.current = GreatestOf(waves, 0);
    picture.voltage = GreatestOf(waves, analysis::Phases);
    if (!picture.current && !picture.voltage)
        return std::nullopt;
    QStringList texts;
    for (size_t i = 0; i < waves.size(); ++i)
        texts << LettersOf(waves[i], (i < analysis::Phases ? picture.current : picture.voltage).value_or(0));
    picture.waves = texts.join(QLatin1Char(' '));
    return picture;
}

} // namespace archive
