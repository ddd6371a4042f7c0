// The report's modules and angles for recordings of known phasors.
//
// A phase is sqrt(2) V sin(2 pi i / N + f) at sample i, with N samples a period; its angle in the report is
// f. With code size a (physical units a code) and N samples a period the report may miss the exact value by:
//
// - A sample is off by a / 2 at most, so the RMS of a phase is too, and that of a sum of three phases by
//   3 a / 2. The printed positive and negative sequences are a third of it.
// - A module is printed to two places: 0.005 in the printed unit.
// - A sequence moves phases b and c by whole samples, where a third of N is meant. The larger error of the
// two
//   moves is d degrees (0 for N = 48, 2.45 for 49, 2.4 for 50). It turns a phasor of RMS V by d, that is,
//   moves its tip by 2 V sin(d / 2). A third of that for b and c together is the error of the sequence. The
//   zero sequence moves nothing.
// - An angle comes from the largest sample, which stands half a sample, 180 / N degrees, from the peak at
// most.
//   Two samples x apart in their distance to a peak of amplitude A differ by about A x pi / N. Samples that
//   are off by e each hide which one is larger up to x = 2 e N / (pi A); half of it counts.
// - Moving the tip of a sequence of RMS V by m turns it by asin(m / V).
// - An angle is printed to a degree: 0.5.
#include "support/readyrecording.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include <array>
#include <cmath>
#include <complex>

namespace {

using recorderfile::AnalogChannel;
using recorderfile::Recording;
using Phasor = std::complex<double>; // RMS value and angle
using Phases = std::array<Phasor, 3>;

const double Degree = std::acos(-1.0) / 180;

Phasor Polar(double value, double degrees)
{
    return std::polar(value, degrees * Degree);
}

// A system as its positive, negative and zero sequence, each a part of the nominal value.
struct System
{
    const char* name;
    Phasor positive, negative, zero;

    Phases PhasesOf(double nominal) const
    {
        const Phasor third = Polar(1, 120);
        return {nominal * (positive + negative + zero),
                nominal * (positive * std::conj(third) + negative * third + zero),
                nominal * (positive * third + negative * std::conj(third) + zero)};
    }
};

// A unit of the recording, its size in volts or amperes, and that of the printed numbers.
struct UnitPair
{
    const char* voltage;
    const char* current;
    double size;
    double printed;
};

struct Case
{
    int count; // samples in a period
    UnitPair units;
    System system;
};

void PrintTo(const Case& input, std::ostream* out)
{
    *out << input.count << ' ' << input.units.voltage << ' ' << input.system.name;
}

constexpr double NominalVolts = 63508.5;
constexpr double NominalAmperes = 1250;
constexpr double LargestCode = 14142; // of the nominal value

class HdrPhasors : public testing::TestWithParam<Case>
{
protected:
    static int Count() { return GetParam().count; }

    // 15 periods, of which the first 11 are a balanced system and the others the case's. The fault is at the
    // start of the 14th; the report's windows are then [N, 3N) and [11N, 13N) for the sequences, and the
    // later period of each for the phases, so that their angles are those at sample 0.
    static AnalogChannel Channel(const QString& name, const char* unit, const Phasor& before,
                                 const Phasor& at, double code)
    {
        AnalogChannel channel{name, QString::fromUtf8(unit), {}};
        channel.rate = static_cast<float>(50 * Count());
        channel.primary = static_cast<float>(code);
        for (int i = 0; i < 15 * Count(); ++i) {
            const Phasor& phase = i < 11 * Count() ? before : at;
            const double angle = 360 * Degree * i / Count() + std::arg(phase);
            channel.samples.push_back(
                static_cast<int16_t>(std::lround(std::sqrt(2) * std::abs(phase) * std::sin(angle) / code)));
        }
        return channel;
    }

    // Code of a quantity with this nominal value, in recorded units.
    static double CodeSize(double nominal)
    {
        return static_cast<double>(static_cast<float>(std::sqrt(2) * nominal / Size() / LargestCode));
    }

    static double Size() { return GetParam().units.size; }

    static void AddPhases(Recording& recording, const char* quantity, const char* unit, double nominal)
    {
        const Phases before = Balanced().PhasesOf(nominal / Size());
        const Phases at = GetParam().system.PhasesOf(nominal / Size());
        for (size_t i = 0; i < 3; ++i)
            recording.Add(Channel(QStringLiteral("Q1:") + quantity + QLatin1Char("abc"[i]), unit, before[i],
                                  at[i], CodeSize(nominal)));
    }

    static System Balanced() { return {"before", Polar(1, 40), 0, 0}; }

    static QStringList Report()
    {
        Recording recording;
        recording.comment = "Пуск ДП (a,b) Q1:x";
        recording.startMicroseconds = 0;
        recording.trigTime = recording.startTime;
        recording.trigMicroseconds = 260000;
        AddPhases(recording, "U", GetParam().units.voltage, NominalVolts);
        AddPhases(recording, "I", GetParam().units.current, NominalAmperes);
        TestStation station("Кодировка Comtrade UTF8=1\n"
                            "nAnMax=1\nA01=Q1:Ia,V_L=110 E_G=L S_G=CT\n");
        if (!station.Convert(recorderfile::Encode(recording)))
            qFatal("the recording is not converted");
        return QString::fromUtf8(station.Output("hdr")).split('\n');
    }

    // How far a shift by whole samples moves the tip of a positive or negative sequence, in volts or amperes.
    static double Moved(const Phases& phases)
    {
        const int third = (Count() + 1) / 3;
        const double one = 360.0 * third / Count() - 120;
        const double two = 360.0 * (Count() - third) / Count() - 240;
        const double off = std::max(std::abs(one), std::abs(two)) * Degree;
        return (std::abs(phases[1]) + std::abs(phases[2])) / 3 * 2 * std::sin(off / 2);
    }

    // Checks a row against a phasor in volts or amperes: its samples may be off, and its tip be moved.
    static void ExpectRow(const QString& row, const Phasor& expected, double off, double moved)
    {
        static const QRegularExpression form(
            QStringLiteral("^\\S+ +модуль = ([0-9.]+) к[ВА], *угол = +([0-9]+) град\\.$"));
        const QRegularExpressionMatch match = form.match(row);
        ASSERT_TRUE(match.hasMatch()) << row;
        const double printed = GetParam().units.printed;
        const double value = std::abs(expected);
        EXPECT_NEAR(match.captured(1).toDouble() * printed, value, off + moved + 0.005 * printed + 1e-3)
            << row;
        EXPECT_GT(match.captured(2).toInt(), 0) << row;
        EXPECT_LE(match.captured(2).toInt(), 360) << row;
        if (value < 4 * (off + moved))
            return; // as good as none, so that its angle says nothing
        const double hidden = off * Count() / (std::acos(-1.0) * std::sqrt(2) * value) / Degree;
        const double turned = std::asin(moved / value) / Degree;
        const double difference = match.captured(2).toDouble() - std::arg(expected) / Degree;
        EXPECT_LE(std::abs(std::remainder(difference, 360.0)), 180.0 / Count() + hidden + turned + 0.5)
            << row;
    }

    // Checks three phase rows and three sequence rows.
    static void ExpectSystem(const QStringList& report, int phaseRow, int sequenceRow, const System& system,
                             double nominal)
    {
        const Phases phases = system.PhasesOf(nominal);
        const double code = CodeSize(nominal) * Size();
        for (int i = 0; i < 3; ++i)
            ExpectRow(report[phaseRow + i], phases[static_cast<size_t>(i)], 0.5 * code, 0);
        ExpectRow(report[sequenceRow], nominal * system.positive, 0.5 * code, Moved(phases));
        ExpectRow(report[sequenceRow + 1], nominal * system.negative, 0.5 * code, Moved(phases));
        ExpectRow(report[sequenceRow + 2], 3 * nominal * system.zero, 1.5 * code, 0);
    }
};

// Volts and amperes in Cyrillic letters are printed in thousands, all other units as they are.
const UnitPair UnitPairs[] = {
    {"В", "А", 1, 1000}, {"V", "A", 1, 1}, {"кВ", "кА", 1000, 1000}, {"kV", "kA", 1000, 1000}};

const System Systems[] = {{"Balanced", Polar(1, -75), 0, 0},
                          {"Reversed", 0, Polar(0.9, 10), 0},
                          {"ZeroSequence", 0, 0, Polar(0.7, 200)},
                          {"EarthFault", Polar(0.6, 15), Polar(0.3, 170), Polar(0.35, -100)},
                          {"TwoPhaseFault", Polar(0.5, 90), Polar(0.5, -30), 0},
                          {"SlightUnbalance", Polar(0.95, 181), Polar(0.05, 60), Polar(0.03, 300)}};

std::vector<Case> AllCases()
{
    std::vector<Case> cases;
    for (const int count : {48, 49, 50})
        for (const UnitPair& units : UnitPairs)
            for (const System& system : Systems)
                cases.push_back({count, units, system});
    return cases;
}

} // namespace

TEST_P(HdrPhasors, AreReported)
{
    const QStringList report = Report();
    ExpectSystem(report, 16, 25, Balanced(), NominalVolts);
    ExpectSystem(report, 20, 28, Balanced(), NominalAmperes);
    ExpectSystem(report, 32, 41, GetParam().system, NominalVolts);
    ExpectSystem(report, 36, 44, GetParam().system, NominalAmperes);
}

INSTANTIATE_TEST_SUITE_P(OfSystems, HdrPhasors, testing::ValuesIn(AllCases()));
