#include "salvage/plan.h"

#include "base/numeric.h"

#include <algorithm>
#include <map>

namespace salvage {

namespace {

bool At(const std::vector<bool>& numbers, size_t number)
{
    return number < numbers.size() && numbers[number];
}

size_t CountOf(const std::vector<bool>& numbers)
{
    return static_cast<size_t>(std::count(numbers.begin(), numbers.end(), true));
}

std::vector<bool>& NumbersOf(Choice& choice, Kind kind)
{
    return kind == Kind::Analog ? choice.analog : choice.discrete;
}

size_t Count(const Segment& segment, Kind kind)
{
    return static_cast<size_t>(
        std::count_if(segment.sections.begin(), segment.sections.end(),
                      [kind](const Section& section) { return section.kind == kind; }));
}

// The analog channels that are whole have one rate.
std::optional<float> RateOf(const Segment& segment)
{
    for (const Section& section : segment.sections) {
        if (section.kind == Kind::Analog && section.isWhole)
            return section.rate;
    }
    return std::nullopt;
}

// Whether a file can continue the recording that first starts, as far as both can be read.
bool Fits(const Segment& first, const Segment& other)
{
    if (!other.hasHeader || first.identity != other.identity || first.zone != other.zone)
        return false;
    for (const Kind kind : {Kind::Analog, Kind::Discrete}) {
        if (first.KnowsAll() && other.KnowsAll() && Count(first, kind) != Count(other, kind))
            return false;
    }
    const std::optional<float> rate = RateOf(first);
    const std::optional<float> others = RateOf(other);
    return !rate || !others || zu::IsFloatEqual(*rate, *others);
}

Choice WholeOf(const Segment& segment)
{
    Choice choice;
    for (const Section& section : segment.sections) {
        if (section.IsChannel())
            NumbersOf(choice, section.kind).push_back(section.CanBeTaken());
    }
    return choice;
}

// Takes out of the choice what is not whole in the segment, or has another name there.
void Narrow(Choice& choice, const Segment& first, const Segment& segment)
{
    std::map<std::pair<Kind, size_t>, const Section*> there;
    for (const Section& section : segment.sections) {
        if (section.CanBeTaken())
            there[{section.kind, section.number}] = &section;
    }
    for (const Section& section : first.sections) {
        if (!choice.Has(section))
            continue;
        const auto same = there.find({section.kind, section.number});
        if (same == there.end() || same->second->name != section.name)
            NumbersOf(choice, section.kind)[section.number] = false;
    }
}

// The chain's files that may be in one record: up to the first that cannot be used at all.
std::vector<Segment> FittingFiles(const QStringList& files, bool& isDamaged)
{
    std::vector<Segment> segments;
    for (const QString& file : files) {
        Segment segment = ReadSegment(file);
        isDamaged = isDamaged || !segment.IsWhole();
        if (!segment.hasHeader || (!segments.empty() && !Fits(segments.front(), segment)))
            break;
        segments.push_back(std::move(segment));
    }
    return segments;
}

struct Best
{
    size_t files = 0;
    Choice choice;
    quint64 value = 0; // channels times microseconds
};

Best BestOf(const std::vector<Segment>& segments)
{
    Best best;
    if (segments.empty())
        return best;
    Choice choice = WholeOf(segments.front());
    quint64 duration = 0;
    for (size_t files = 1; files <= segments.size(); ++files) {
        Narrow(choice, segments.front(), segments[files - 1]);
        duration += segments[files - 1].duration;
        const bool canBeOne = files == 1 || choice.CanBeJoined();
        const quint64 value = choice.Channels() * duration;
        if (canBeOne && choice.Channels() > 0 && value >= best.value)
            best = {files, choice, value};
    }
    return best;
}

// Adds what is known of the channels of the whole recording: each file may know other headers.
void AddChannels(Loss& loss, const std::vector<Segment>& segments, const Choice& choice)
{
    std::map<std::pair<Kind, size_t>, const Section*> known;
    for (const Segment& segment : segments) {
        for (const Section& section : segment.sections)
            known.insert({{section.kind, section.number}, &section}); // keeps the first
        if (segment.KnowsAll() && !loss.allAnalog) {
            loss.allAnalog = Count(segment, Kind::Analog);
            loss.allDiscrete = Count(segment, Kind::Discrete);
        }
    }
    size_t channels = 0;
    size_t others = 0;
    for (const auto& [place, section] : known) {
        ++(section->IsChannel() ? channels : others);
        if (section->IsChannel() && !choice.Has(*section))
            loss.lost << section->name;
    }
    const size_t count = segments.front().count;
    loss.channels = loss.allAnalog && loss.allDiscrete ? *loss.allAnalog + *loss.allDiscrete
                                                       : std::max(channels, count - std::min(count, others));
    loss.nameless = loss.channels - std::min(loss.channels, channels);
}

} // namespace

bool Choice::Has(const Section& section) const
{
    return section.kind == Kind::Analog ? At(analog, section.number)
                                        : section.IsChannel() && At(discrete, section.number);
}

size_t Choice::Analog() const
{
    return CountOf(analog);
}

size_t Choice::Discrete() const
{
    return CountOf(discrete);
}

Examination Examine(const QStringList& files)
{
    Examination found;
    std::vector<Segment> segments = FittingFiles(files, found.isDamaged);
    const Best best = BestOf(segments);
    if (!found.isDamaged || best.files == 0)
        return found;
    Plan plan;
    plan.choice = best.choice;
    plan.loss.analog = best.choice.Analog();
    plan.loss.discrete = best.choice.Discrete();
    plan.loss.files = static_cast<int>(best.files);
    plan.loss.lostFiles = files.mid(plan.loss.files);
    AddChannels(plan.loss, segments, best.choice);
    segments.resize(best.files);
    plan.segments = std::move(segments);
    found.plan = std::move(plan);
    return found;
}

} // namespace salvage
