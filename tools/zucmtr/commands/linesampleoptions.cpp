#include "zucmtr/commands/linesampleoptions.h"

#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cstdint>

namespace {

// Of recordings of a line.
constexpr double LowestRate = 600; // samples per second
constexpr double HighestRate = 20000;
constexpr double ShortestRecording = 0.5; // s; the fault comes 0.3 s after the first sample
constexpr double LongestRecording = 30;
constexpr uint32_t MostSeeds = 100000;

// Seeds as "17" or "1-1000".
bool ParseSeeds(const QString& text, uint32_t& first, uint32_t& last)
{
    static const QRegularExpression form(QStringLiteral("\\A(\\d+)(?:-(\\d+))?\\z"));
    const QRegularExpressionMatch match = form.match(text);
    bool isFirst = false;
    bool isLast = true;
    first = match.captured(1).toUInt(&isFirst);
    last = match.captured(2).isEmpty() ? first : match.captured(2).toUInt(&isLast);
    return isFirst && isLast && first <= last && last - first < MostSeeds;
}

CLI::Validator Seeds()
{
    return CLI::Validator(
        [](std::string& text) {
            uint32_t first = 0;
            uint32_t last = 0;
            return ParseSeeds(FromUtf8(text), first, last)
                       ? std::string()
                       : Tr("sample", "'%1' is wrong; give a seed or a range of at most %2, as 17 or 1-1000")
                             .arg(FromUtf8(text), QString::number(MostSeeds))
                             .toStdString();
        },
        "");
}

// Upper case is the form of the kinds; the other words are in lower case.
CLI::Validator KindInAnyCase()
{
    return CLI::Validator(
        [](std::string& text) {
            if (station::FaultKindNamed(FromUtf8(text)))
                text = FromUtf8(text).toUpper().toStdString();
            return std::string();
        },
        "");
}

CLI::Option* AddNumber(CLI::App& command, const char* name, double& value, const std::string& help,
                       double lowest, double highest, const char* type)
{
    return AddValue(command, name, value, type, help)->check(values::Number(lowest, highest));
}

void CheckEvolving(const station::LineFaultOptions& fault)
{
    if (!fault.evolving || station::Evolves(fault.kind, *fault.evolving))
        return;
    QStringList possible;
    for (const station::FaultKind kind : station::AllFaultKinds())
        if (station::Evolves(fault.kind, kind))
            possible << station::NameOf(kind);
    const QString from = station::NameOf(fault.kind);
    const QString into = station::NameOf(*fault.evolving);
    throw ConfigurationError(
        possible.isEmpty()
            ? Tr("sample", "--evolving: a fault %1 cannot turn into another; leave it out").arg(from)
            : Tr("sample", "--evolving: a fault %1 cannot turn into %2; give one of %3")
                  .arg(from, into, possible.join(QStringLiteral(", "))));
}

void CheckSampling(const station::LineFaultOptions& fault)
{
    if (fault.sampleRate < LowestRate || fault.sampleRate > HighestRate)
        throw ConfigurationError(
            Tr("sample", "--rate %1: a simulated fault is sampled at %2 to %3 Hz; give such a rate")
                .arg(QString::number(fault.sampleRate), QString::number(LowestRate),
                     QString::number(HighestRate)));
    if (fault.seconds > 0 && (fault.seconds < ShortestRecording || fault.seconds > LongestRecording))
        throw ConfigurationError(
            Tr("sample", "--seconds %1: a simulated recording lasts %2 to %3 s; give such a length")
                .arg(QString::number(fault.seconds), QString::number(ShortestRecording),
                     QString::number(LongestRecording)));
}

// What a simulated fault is like.
std::vector<CLI::Option*> AddFaultOptions(CLI::App& command, LineSampleOptions& options)
{
    station::LineFaultOptions& fault = options.fault;
    return {AddNumber(command, "--distance", fault.distance,
                      HelpText("sample", "Distance to a simulated fault, in percent of the line (40)"), 1, 99,
                      "PERCENT"),
            AddNumber(command, "--resistance", fault.resistance,
                      HelpText("sample", "Resistance of the fault (1)"), 0, 1000, "OHM"),
            AddNumber(command, "--inception", fault.inception,
                      HelpText("sample", "Angle of the faulted phase's voltage at the onset (60)"), -360, 360,
                      "DEGREES"),
            AddNumber(command, "--frequency", fault.frequency, HelpText("sample", "Frequency, 45 to 55 (50)"),
                      45, 55, "HZ"),
            AddNumber(command, "--load", fault.load,
                      HelpText("sample", "Load current before the fault, in parts of the rated current; "
                                         "negative towards the station (0.3)"),
                      -1, 1, "FRACTION"),
            AddNumber(command, "--noise", fault.noise,
                      HelpText("sample", "Noise, standard deviation in percent of the rated peak (0.05)"), 0,
                      10, "PERCENT"),
            AddNumber(command, "--length", fault.length, HelpText("sample", "Length of the line (60)"), 1,
                      500, "KM"),
            command.add_flag("--saturation", fault.saturation,
                             HelpText("sample", "Let the current transformers of the line saturate")),
            AddValue(command, "--evolving", options.evolving, "KIND",
                     HelpText("sample", "What the fault turns into 35 ms after its onset"))
                ->transform(KindInAnyCase())
                ->check(values::OneOf(LineFaultNames())),
            AddValue(command, "--reclose", options.reclose, "RESULT",
                     HelpText("sample", "Reclose the line: success, or fault (it is still faulted)"))
                ->check(values::OneOf({"success", "fault"}))};
}

CLI::Option* AddSeeds(CLI::App& command, const char* name, std::string& seeds, const std::string& help)
{
    return AddValue(command, name, seeds, "SEEDS", help)->check(Seeds());
}

const char* DrawnBy(const LineSampleOptions& options)
{
    if (options.archive > 0)
        return "--archive";
    if (!options.randomFaults.empty())
        return "--random-fault";
    return options.randomQuiet.empty() ? nullptr : "--random-quiet";
}

// An archive has no seed of its own in its option.
bool IsDrawn(const CLI::Option& option, const LineSampleOptions& options)
{
    return options.archive == 0 || option.get_name() != "--seed";
}

} // namespace

std::vector<std::string> LineFaultNames()
{
    std::vector<std::string> names;
    for (const station::FaultKind kind : station::AllFaultKinds())
        names.push_back(station::NameOf(kind).toStdString());
    return names;
}

void AddLineSampleOptions(CLI::App& command, LineSampleOptions& options)
{
    for (const char* name : {"--analog", "--discrete", "--segments"})
        options.ofStation.push_back(command.get_option(name));
    command.get_option("--fault")->transform(KindInAnyCase());
    const std::vector<CLI::Option*> ofLine = AddFaultOptions(command, options);
    options.ofLine.assign(ofLine.begin(), ofLine.end());
    for (const CLI::Option* option : command.get_options())
        if (option->get_name() != "--out" && option->get_name() != "--help")
            options.notDrawn.push_back(option);

    CLI::Option* faults = AddSeeds(
        command, "--random-fault", options.randomFaults,
        HelpText("sample",
                 "Simulate a fault drawn from a seed (17), or one for each seed of a range (1-1000)"));
    CLI::Option* quiet =
        AddSeeds(command, "--random-quiet", options.randomQuiet,
                 HelpText("sample", "Likewise without a fault: load steps, switching, inrush, swings"));
    quiet->excludes(faults);
    AddValue(command, "--archive", options.archive, "N",
             HelpText("sample", "Simulate an archive of N recordings, 10 to 100000: a year of the recorders "
                                "of four substations"))
        ->transform(values::WholeNumber(station::FewestArchived, station::MostArchived))
        ->excludes(faults)
        ->excludes(quiet);
}

bool IsLineSample(const LineSampleOptions& options, const std::string& fault)
{
    if (const char* drawn = DrawnBy(options)) {
        for (const CLI::Option* option : options.notDrawn)
            if (option->count() > 0 && IsDrawn(*option, options))
                throw ConfigurationError(
                    Tr("sample", "%1 draws everything and goes without %2; leave one out")
                        .arg(QLatin1String(drawn), FromUtf8(option->get_name())));
        return true;
    }
    const bool isLineFault = station::FaultKindNamed(FromUtf8(fault)).has_value();
    for (const CLI::Option* option : isLineFault ? options.ofStation : options.ofLine)
        if (option->count() > 0)
            throw ConfigurationError(isLineFault
                                         ? Tr("sample", "%1 and --fault %2 exclude each other; leave one out")
                                               .arg(FromUtf8(option->get_name()), FromUtf8(fault))
                                         : Tr("sample", "%1 needs a simulated fault; give --fault %2, too")
                                               .arg(FromUtf8(option->get_name()),
                                                    FromUtf8(CLI::detail::join(LineFaultNames(), "|"))));
    return isLineFault;
}

LineSample CheckedLineSample(const LineSampleOptions& options, const std::string& fault)
{
    LineSample sample;
    sample.fault = options.fault;
    if (options.archive > 0) {
        sample.kind = LineSample::Kind::Archive;
        sample.archive = {options.archive, options.fault.seed};
        return sample;
    }
    if (!options.randomFaults.empty() || !options.randomQuiet.empty()) {
        const bool faults = !options.randomFaults.empty();
        sample.kind = faults ? LineSample::Kind::RandomFaults : LineSample::Kind::RandomQuiet;
        ParseSeeds(FromUtf8(faults ? options.randomFaults : options.randomQuiet), sample.firstSeed,
                   sample.lastSeed);
        return sample;
    }
    if (const auto kind = station::FaultKindNamed(FromUtf8(fault)))
        sample.fault.kind = *kind;
    sample.fault.evolving = station::FaultKindNamed(FromUtf8(options.evolving));
    if (!options.reclose.empty())
        sample.fault.reclosing =
            options.reclose == "success" ? station::Reclosing::Success : station::Reclosing::Fault;
    CheckEvolving(sample.fault);
    CheckSampling(sample.fault);
    return sample;
}
