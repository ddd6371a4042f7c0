#include "view/answer.h"

#include "analysis/impedance.h"
#include "analysis/linematch.h"
#include "text/language.h"

#include <QJsonArray>

#include <cmath>

namespace view {

namespace {

constexpr double DegreesOfRadian = 180 / 3.14159265358979323846;

QJsonObject SentencesJson(const analysis::Summary& summary)
{
    const auto in = [&](text::Language language) {
        const text::InLanguage scope(language);
        return QJsonArray::fromStringList(analysis::SentencesOf(summary));
    };
    return {{QStringLiteral("en"), in(text::Language::English)},
            {QStringLiteral("ru"), in(text::Language::Russian)}};
}

QJsonArray ChannelsJson(const analysis::Circuit::Channels& channels)
{
    QJsonArray array;
    for (const int channel : channels)
        array.append(channel == analysis::NoChannel ? QJsonValue() : QJsonValue(channel));
    return array;
}

QJsonArray ZonesJson(const std::vector<analysis::Zone>& zones)
{
    QJsonArray array;
    for (const analysis::Zone& zone : zones) {
        QJsonArray corners;
        for (const analysis::Impedance& corner : zone.corners)
            corners.append(QJsonArray{corner.r, corner.x});
        array.append(QJsonObject{{QStringLiteral("number"), zone.number},
                                 {QStringLiteral("radius"), zone.radius},
                                 {QStringLiteral("corners"), corners}});
    }
    return array;
}

QJsonValue LineJson(const analysis::Line* line)
{
    if (line == nullptr)
        return {};
    const analysis::Phasor factor = analysis::ResidualFactor(*line);
    return QJsonObject{{QStringLiteral("length"), line->length},
                       {QStringLiteral("r1"), line->r1},
                       {QStringLiteral("x1"), line->x1},
                       {QStringLiteral("r0"), line->r0},
                       {QStringLiteral("x0"), line->x0},
                       {QStringLiteral("k0"), QJsonArray{factor.real(), factor.imag()}},
                       {QStringLiteral("zones"), ZonesJson(line->zones)}};
}

QJsonObject CircuitJson(const analysis::Circuit& circuit, const analysis::Summary& summary)
{
    const analysis::Line* line = analysis::LineOf(circuit.name, summary.lines);
    const analysis::Circuit* voltages = analysis::VoltagesOf(circuit, summary.circuits, line);
    QJsonArray states;
    for (const size_t state : circuit.states)
        states.append(static_cast<int>(state));
    return {{QStringLiteral("name"), circuit.name},
            {QStringLiteral("voltages"), ChannelsJson((voltages == nullptr ? circuit : *voltages).voltages)},
            {QStringLiteral("currents"), ChannelsJson(circuit.currents)},
            {QStringLiteral("states"), states},
            {QStringLiteral("line"), LineJson(line)}};
}

QJsonValue PhasorJson(const analysis::Phasor& phasor)
{
    if (!std::isfinite(phasor.real()) || !std::isfinite(phasor.imag()))
        return {};
    return QJsonArray{std::abs(phasor), std::arg(phasor) * DegreesOfRadian};
}

QJsonArray PhasorsJson(const analysis::Findings& findings)
{
    QJsonArray array;
    for (const analysis::ChannelPhasors& one : findings.fault ? findings.fault->phasors : findings.phasors)
        array.append(QJsonObject{{QStringLiteral("channel"), static_cast<int>(one.channel)},
                                 {QStringLiteral("before"), PhasorJson(one.before)},
                                 {QStringLiteral("during"), PhasorJson(one.during)},
                                 {QStringLiteral("after"), PhasorJson(one.after)}});
    return array;
}

} // namespace

QJsonObject AnswerJson(const analysis::Summary& summary, qint64 first)
{
    QJsonObject object = analysis::JsonOf(summary);
    object.remove(QStringLiteral("text"));
    object.remove(QStringLiteral("phasors"));
    QJsonArray circuits;
    for (const analysis::Circuit& circuit : summary.circuits)
        circuits.append(CircuitJson(circuit, summary));
    QJsonArray changes;
    for (const analysis::Event& event : summary.events.events)
        changes.append(
            QJsonArray{static_cast<double>(event.sample - first), static_cast<int>(event.channel)});
    const auto& fault = summary.findings.fault;
    return {{QStringLiteral("summary"), object},
            {QStringLiteral("sentences"), SentencesJson(summary)},
            {QStringLiteral("faulted"), fault ? QJsonValue(static_cast<int>(fault->circuit)) : QJsonValue()},
            {QStringLiteral("circuits"), circuits},
            {QStringLiteral("phasors"), PhasorsJson(summary.findings)},
            {QStringLiteral("changes"), changes}};
}

} // namespace view
