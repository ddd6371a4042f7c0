// The stages from a record to what a writer is given.
#pragma once

#include "forms/ahead.h"
#include "forms/channelchoice.h"
#include "forms/export.h"
#include "forms/exporting.h"
#include "forms/recoding.h"
#include "forms/timewindow.h"

#include <memory>
#include <optional>
#include <vector>

namespace forms {

/// What passes through the record have shown, and what follows from it.
struct Plan
{
    std::optional<qint64> total;        ///< samples of the source, if they are not what it announces
    std::optional<Extent> extent;       ///< of its samples; none: all
    std::optional<ChannelSet> channels; ///< none: all
    std::vector<NewCodes> codes;        ///< of the analog channels left; empty: none is new
};

/// Whether the request asks for another rate than the record has.
bool IsResampled(const Request& request, const comtrade::Configuration& config);

class Pipeline
{
public:
    /// How far the stages go: to the samples of the source, to those at the rate that is asked for, to those
    /// of the part that is kept, to what the form holds.
    enum class End { Source, Sampled, Kept, Form };

    Pipeline(const Source& source, const Request& request, const Plan& plan, End end);

    Stream& Last() { return stages.empty() ? *ahead : *stages.back(); }
    const RecordStream& Record() const { return *record; }

    /// To be called after the last block, before the findings about the record are looked at.
    void Stop() { ahead->Stop(); }

    /// What has no place in the form.
    const QStringList& Lost() const { return lost; }

    /// See Recoding.
    qint64 Rounded() const { return recoding != nullptr ? recoding->Rounded() : 0; }

private:
    template <class Stage, class... Arguments>
    Stage* Add(Arguments&&... arguments);
    void AddSampling(const Request& request);
    void AddForm(const Request& request, const Plan& plan);

    // In this order: the thread of `ahead` has to end before the record that it reads is gone.
    const std::unique_ptr<RecordStream> record;
    const std::unique_ptr<Ahead> ahead;
    std::vector<std::unique_ptr<Stream>> stages; // that follow
    const Recoding* recoding = nullptr;
    QStringList lost;
};

} // namespace forms
