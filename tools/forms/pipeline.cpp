#include "forms/pipeline.h"

#include "forms/everynth.h"
#include "forms/resampling.h"
#include "forms/values.h"

#include <utility>

namespace forms {

namespace {

bool HoldsCodes(Form form)
{
    return form == Form::Cfg || form == Form::Cff;
}

// The values of one side for forms that have no codes.
class Sided : public Stream
{
public:
    Sided(Stream& source_, Side side) : source(source_), config(source.Config()) { TakeSide(config, side); }

    const comtrade::Configuration& Config() const override { return config; }
    bool Next(comtrade::Block& block) override { return source.Next(block); }

private:
    Stream& source;
    comtrade::Configuration config;
};

} // namespace

bool IsResampled(const Request& request, const comtrade::Configuration& config)
{
    return request.rate > 0 && !(HasOneRate(config) && config.rates.front().hertz == request.rate);
}

// Adds a stage after the last one.
template <class Stage, class... Arguments>
Stage* Pipeline::Add(Arguments&&... arguments)
{
    auto stage = std::make_unique<Stage>(Last(), std::forward<Arguments>(arguments)...);
    Stage* const added = stage.get();
    stages.push_back(std::move(stage));
    return added;
}

Pipeline::Pipeline(const Source& source, const Request& request, const Plan& plan, End end)
    : record(std::make_unique<RecordStream>(source.path, source.reading)),
      ahead(std::make_unique<Ahead>(*record))
{
    if (plan.total)
        Add<TimeWindow>(Extent{0, *plan.total});
    if (end == End::Source)
        return;
    if (plan.channels)
        Add<ChannelChoice>(*plan.channels);
    // Before a part is cut out: its first and last values depend on the samples beyond.
    AddSampling(request);
    if (end == End::Sampled)
        return;
    if (plan.extent)
        Add<TimeWindow>(*plan.extent);
    if (end == End::Form)
        AddForm(request, plan);
}

void Pipeline::AddSampling(const Request& request)
{
    if (IsResampled(request, Last().Config()))
        Add<Resampling>(request.rate);
    else if (request.every > 1)
        Add<EveryNth>(request.every);
}

void Pipeline::AddForm(const Request& request, const Plan& plan)
{
    if (HoldsCodes(request.form)) {
        const comtrade::Configuration target = TargetOf(Last().Config(), request, lost);
        recoding = Add<Recoding>(target, plan.codes);
        return;
    }
    if (request.side != Side::AsStored)
        Add<Sided>(request.side);
    Add<Values>();
}

} // namespace forms
