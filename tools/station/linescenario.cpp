#include "station/linescenario.h"

#include "station/waveform.h"

#include <cmath>

namespace station {

namespace {

constexpr double EvolvingDelay = 0.035; // s

// A network of medium strength on both sides.
LineModel UsualNetwork(const LineFaultOptions& options)
{
    LineModel model = {};
    model.line = UsualLine().data;
    model.line.length = options.length;
    model.infeed = {{1.2, 9.5}, {1.0, 7.0}};
    model.healthy = {{6.0, 31.0}, {12.0, 70.0}};
    model.remote = {{3.0, 19.0}, {4.0, 26.0}};
    model.voltage = 115000 / std::sqrt(3.0);
    const double current = options.load * BaysAround(UsualLine()).line.ratedCurrent;
    model.lineLoad = {0.95 * current, -0.312 * std::fabs(current)};
    model.healthyLoad = {180, -50};
    model.frequency = options.frequency;
    model.fraction = options.distance / 100.0;
    return model;
}

} // namespace

LineScenario ScenarioOf(const LineFaultOptions& options)
{
    FaultPlan plan = {};
    plan.parts.push_back({0.0, {options.kind, options.resistance}});
    if (options.evolving)
        plan.parts.push_back({EvolvingDelay, {*options.evolving, options.resistance}});
    plan.inception = options.inception;
    plan.protection = {0.012, options.evolving ? 0.055 : 0.025, 0.040};
    plan.remoteOpening = options.evolving ? 0.115 : 0.085;
    plan.reclosing = options.reclosing;
    plan.deadTime = 0.450;
    plan.remoteClosing = 0.060;
    plan.afterReclosing = {0.010, 0.020, 0.040};

    LineScenario scenario = {};
    scenario.stem = QStringLiteral("Vostochnaya_fault");
    scenario.line = UsualLine();
    scenario.line.data.length = options.length;
    scenario.model = UsualNetwork(options);
    scenario.fault = plan;
    scenario.sampleRate = options.sampleRate;
    scenario.seconds = options.seconds;
    scenario.beforeTrigger = 0.3;
    scenario.triggerDelay = plan.protection.start;
    scenario.startedByProtection = true;
    scenario.saturation = options.saturation;
    scenario.noise = options.noise;
    scenario.zone = 3;
    scenario.seed = options.seed;
    scenario.compressed = options.compressed;
    scenario.codePage = options.codePage;
    return scenario;
}

QString WordOf(QuietCause cause)
{
    static const char* const words[] = {"noise",      "lineLoad",          "healthyLineLoad",
                                        "switching",  "transformerInrush", "capacitorInrush",
                                        "powerSwing", "distantFault",      "frequency"};
    return QString::fromLatin1(words[static_cast<size_t>(cause)]);
}

} // namespace station
