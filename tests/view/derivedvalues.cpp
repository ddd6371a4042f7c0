// Prints what the library computes of a record at single samples, to compare the page with it:
//
//     derivedvalues RECORD LINES < SAMPLES
//
// LINES is a lines.ini, or "-". Samples are those of the page, one a line: a value at a sample is of the
// period before it, so the last sample of its window is the one before. Angles are those of the library, of a
// cosine at that last sample. What has no value is null.
//
// An array with an object for each sample; the members are those that At() gives.
#include "analysis/channelrole.h"
#include "analysis/frequency.h"
#include "analysis/harmonics.h"
#include "analysis/i2t.h"
#include "analysis/impedance.h"
#include "analysis/linematch.h"
#include "analysis/power.h"
#include "analysis/rms.h"
#include "analysis/summary.h"
#include "analysis/unbalance.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <iostream>

namespace {

using namespace analysis;

constexpr double None = std::numeric_limits<double>::quiet_NaN();
constexpr Phasor NoPhasor = {None, None};

QJsonValue Json(double number)
{
    return std::isfinite(number) ? QJsonValue(number) : QJsonValue();
}

QJsonValue Json(Phasor phasor)
{
    const bool isThere = std::isfinite(phasor.real()) && std::isfinite(phasor.imag());
    return isThere ? QJsonValue(QJsonArray{phasor.real(), phasor.imag()}) : QJsonValue();
}

// Samples of one rate, and the filters for it. Of a record with several rates each is looked at on its own,
// as the page does; of one with stamps, the common grid on which the library puts them.
struct Stretch
{
    Stretch(qint64 begin_, double rate_, double nominal)
        : begin(begin_), rate(rate_), perPeriod(rate / nominal), phasor(perPeriod), direct(perPeriod),
          rms(perPeriod), peak(perPeriod), harmonics(perPeriod)
    {}

    qint64 begin;
    double rate;
    double perPeriod;
    Fourier phasor;
    Direct direct;
    Rms rms;
    Peak peak;
    Harmonics harmonics;
    std::vector<Wave> waves;                 // of each channel
    std::vector<FrequencyTrack> frequencies; // of each circuit; empty without voltages
};

class Record
{
public:
    Record(const QString& path, const QString& lineFile)
        : oscillogram(Read(path, {})), signals(oscillogram),
          summary(Summarise(oscillogram, lineFile == QStringLiteral("-") ? Lines() : ReadLines(lineFile),
                            lineFile))
    {
        const auto& pieces = oscillogram.axis.Pieces();
        if (pieces.size() < 2)
            stretches.emplace_back(0, signals.Rate(), signals.Nominal());
        else
            for (const TimeAxis::Piece& piece : pieces)
                stretches.emplace_back(piece.from, piece.hertz, signals.Nominal());
        for (size_t i = 0; i < stretches.size(); ++i)
            Fill(stretches[i], i + 1 < stretches.size() ? stretches[i + 1].begin : oscillogram.Count());
    }

    QJsonObject At(qint64 sample) const
    {
        const Stretch& stretch = StretchOf(sample);
        QJsonArray channels;
        for (const Wave& wave : stretch.waves)
            channels.append(ChannelJson(stretch, wave, sample - stretch.begin));
        QJsonArray circuits;
        for (size_t i = 0; i < summary.circuits.size(); ++i)
            circuits.append(CircuitJson(stretch, i, sample - stretch.begin));
        return {{QStringLiteral("perPeriod"), stretch.perPeriod},
                {QStringLiteral("channels"), channels},
                {QStringLiteral("circuits"), circuits}};
    }

private:
    const Stretch& StretchOf(qint64 sample) const
    {
        size_t found = 0;
        for (size_t i = 0; i < stretches.size(); ++i)
            found = stretches[i].begin <= sample ? i : found;
        return stretches[found];
    }

    void Fill(Stretch& stretch, qint64 end) const
    {
        for (size_t channel = 0; channel < oscillogram.analog.size(); ++channel)
            stretch.waves.push_back(stretches.size() == 1 ? signals.Of(channel)
                                                          : Cut(channel, stretch.begin, end));
        for (const Circuit& circuit : summary.circuits) {
            FrequencySource source;
            for (size_t phase = PhaseA; phase < Phases; ++phase)
                if (VoltagesOf(circuit).HasVoltages())
                    source.push_back(
                        &stretch.waves[static_cast<size_t>(VoltagesOf(circuit).voltages[phase])]);
            stretch.frequencies.push_back(
                source.empty() ? FrequencyTrack{} : FrequencyOf(source, stretch.rate, signals.Nominal()));
        }
    }

    Wave Cut(size_t channel, qint64 begin, qint64 end) const
    {
        const comtrade::AnalogChannel& known = oscillogram.config.analog[channel];
        const double factor = PrimaryFactor(known) * BaseFactor(known.unit);
        Wave wave;
        for (qint64 i = begin; i < end; ++i)
            wave.push_back((known.a * oscillogram.analog[channel].At(static_cast<size_t>(i)) + known.b) *
                           factor);
        return wave;
    }

    const Circuit& VoltagesOf(const Circuit& circuit) const
    {
        const Circuit* voltages =
            analysis::VoltagesOf(circuit, summary.circuits, LineOf(circuit.name, summary.lines));
        return voltages == nullptr ? circuit : *voltages;
    }

    static Phasor PhasorOf(const Stretch& stretch, const Wave& wave, qint64 sample)
    {
        const auto window = static_cast<qint64>(stretch.phasor.Window());
        const bool isInside = sample >= window && sample <= static_cast<qint64>(wave.size());
        return isInside ? stretch.phasor.Of(&wave[static_cast<size_t>(sample - window)]) : NoPhasor;
    }

    static QJsonValue ChannelJson(const Stretch& stretch, const Wave& wave, qint64 sample)
    {
        const Phasor phasor = PhasorOf(stretch, wave, sample);
        if (std::isnan(phasor.real()))
            return {};
        const double* first = &wave[static_cast<size_t>(sample) - stretch.phasor.Window()];
        const Spectrum spectrum = stretch.harmonics.Of(first);
        QJsonArray harmonics;
        for (const Phasor& harmonic : spectrum.harmonics)
            harmonics.append(Json(harmonic));
        const Wave before(wave.begin(),
                          wave.begin() +
                              std::min<std::ptrdiff_t>(sample + 1, static_cast<std::ptrdiff_t>(wave.size())));
        return QJsonObject{{QStringLiteral("phasor"), Json(phasor)},
                           {QStringLiteral("direct"), Json(stretch.direct.Of(first))},
                           {QStringLiteral("rms"), Json(stretch.rms.Of(first))},
                           {QStringLiteral("peak"), Json(stretch.peak.Of(first))},
                           {QStringLiteral("harmonics"), harmonics},
                           {QStringLiteral("thd"), Json(spectrum.Thd())},
                           {QStringLiteral("joule"), Json(JouleIntegral(before, stretch.rate, 0).back())}};
    }

    static QJsonObject SequencesJson(const PhasePhasors& phasors)
    {
        const Components components = ComponentsOf(phasors);
        const Unbalance unbalance = UnbalanceOf(components);
        return {{QStringLiteral("positive"), Json(components.positive)},
                {QStringLiteral("negative"), Json(components.negative)},
                {QStringLiteral("zero"), Json(components.zero)},
                {QStringLiteral("unbalance"), QJsonArray{Json(unbalance.negative), Json(unbalance.zero)}}};
    }

    PhasePhasors PhasesAt(const Stretch& stretch, const Circuit::Channels& channels, qint64 sample) const
    {
        PhasePhasors phasors = {NoPhasor, NoPhasor, NoPhasor};
        for (size_t phase = PhaseA; phase < Phases; ++phase)
            if (channels[phase] != NoChannel)
                phasors[phase] =
                    PhasorOf(stretch, stretch.waves[static_cast<size_t>(channels[phase])], sample);
        return phasors;
    }

    QJsonObject CircuitJson(const Stretch& stretch, size_t place, qint64 sample) const
    {
        const Circuit& circuit = summary.circuits[place];
        const PhasePhasors voltages = PhasesAt(stretch, VoltagesOf(circuit).voltages, sample);
        const PhasePhasors currents = PhasesAt(stretch, circuit.currents, sample);
        const Line* line = LineOf(circuit.name, summary.lines);
        const Power power = PowerOf(voltages, currents);
        QJsonArray loops;
        for (const Phasor& loop :
             ImpedancesOf(voltages, currents, line == nullptr ? Phasor(0) : ResidualFactor(*line)))
            loops.append(Json(loop));
        const FrequencyTrack& frequency = stretch.frequencies[place];
        const auto last = static_cast<size_t>(sample - 1);
        const bool hasFrequency = sample > 0 && last < frequency.hertz.size();
        return {{QStringLiteral("U"), SequencesJson(voltages)},
                {QStringLiteral("I"), SequencesJson(currents)},
                {QStringLiteral("power"), QJsonArray{Json(power.active), Json(power.reactive),
                                                     Json(power.Apparent()), Json(power.Factor())}},
                {QStringLiteral("impedance"), loops},
                {QStringLiteral("f"), hasFrequency ? Json(frequency.hertz[last]) : QJsonValue()},
                {QStringLiteral("dfdt"), hasFrequency ? Json(frequency.change[last]) : QJsonValue()}};
    }

    Oscillogram oscillogram;
    Signals signals;
    Summary summary;
    std::vector<Stretch> stretches;
};

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::cerr << "usage: derivedvalues RECORD LINES < SAMPLES\n";
        return 2;
    }
    const Record record(arguments[1], arguments[2]);
    QJsonArray values;
    qint64 sample = 0;
    while (std::cin >> sample)
        values.append(record.At(sample));
    std::cout << QJsonDocument(values).toJson(QJsonDocument::Compact).toStdString();
    return 0;
}
