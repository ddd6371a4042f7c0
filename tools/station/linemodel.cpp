#include "station/linemodel.h"

namespace station {

namespace {

constexpr double Pi = 3.14159265358979323846;

// The matrix of three coupled phases with the same self and mutual value.
Eigen::Matrix3d Coupled(double positive, double zero)
{
    Eigen::Matrix3d matrix = Eigen::Matrix3d::Constant((zero - positive) / 3.0);
    matrix.diagonal().setConstant((zero + 2.0 * positive) / 3.0);
    return matrix;
}

} // namespace

Complex Quotient(Complex dividend, Complex divisor)
{
    const double square = divisor.real() * divisor.real() + divisor.imag() * divisor.imag();
    const Complex product = dividend * std::conj(divisor);
    return {product.real() / square, product.imag() / square};
}

SequenceImpedance LineImpedance(const LineData& line, double part)
{
    const double length = line.length * part;
    return {Complex(line.r1, line.x1) * length, Complex(line.r0, line.x0) * length};
}

SequenceImpedance InSeries(const SequenceImpedance& one, const SequenceImpedance& other)
{
    return {one.positive + other.positive, one.zero + other.zero};
}

SequenceImpedance AtFrequency(const SequenceImpedance& impedance, double frequency)
{
    const double ratio = frequency / RatedFrequency;
    return {{impedance.positive.real(), impedance.positive.imag() * ratio},
            {impedance.zero.real(), impedance.zero.imag() * ratio}};
}

SourceVoltages SourceVoltagesOf(const LineModel& model)
{
    const auto positive = [&](const SequenceImpedance& impedance) {
        return AtFrequency(impedance, model.frequency).positive;
    };
    const Complex bus = model.voltage;
    const Complex throughLine = positive(InSeries(LineImpedance(model.line, 1.0), model.remote));
    return {bus + positive(model.infeed) * (model.lineLoad + model.healthyLoad),
            bus - positive(model.healthy) * model.healthyLoad, bus - throughLine * model.lineLoad};
}

PhaseImpedance InPhases(const SequenceImpedance& impedance)
{
    const double radians = 2.0 * Pi * RatedFrequency; // per second
    return {Coupled(impedance.positive.real(), impedance.zero.real()),
            Coupled(impedance.positive.imag() / radians, impedance.zero.imag() / radians)};
}

} // namespace station
