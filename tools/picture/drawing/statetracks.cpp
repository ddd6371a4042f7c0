#include "picture/drawing/statetracks.h"

#include "picture/drawing/pens.h"

#include <algorithm>
#include <numeric>

namespace picture {

namespace {

constexpr int RowHeight = 22; // pixels
constexpr size_t MostStates = 14;

std::vector<size_t> ChangingStates(const analysis::Oscillogram& oscillogram, const std::vector<size_t>& among)
{
    std::vector<size_t> changing;
    for (const size_t channel : among)
        if (oscillogram.states[channel].Changes() > 0 && changing.size() < MostStates)
            changing.push_back(channel);
    return changing;
}

std::vector<size_t> ChangingStates(const analysis::Oscillogram& oscillogram)
{
    std::vector<size_t> all(oscillogram.states.size());
    std::iota(all.begin(), all.end(), size_t{0});
    return ChangingStates(oscillogram, all);
}

void DrawOne(QPainter& painter, const Stretch& stretch, const QRectF& track, const analysis::States& channel)
{
    painter.setPen(Rule);
    painter.drawLine(track.bottomLeft(), track.bottomRight());
    QColor fill = StateColor;
    fill.setAlpha(90);
    const size_t end = stretch.End();
    for (size_t sample = stretch.Begin(); sample < end; ++sample) {
        if (!channel.At(sample))
            continue;
        const size_t from = sample;
        while (sample < end && channel.At(sample))
            ++sample;
        const double left = stretch.XOf(track, stretch.TimeOf(from));
        const double right = sample < end ? stretch.XOf(track, stretch.TimeOf(sample)) : track.right();
        painter.fillRect(QRectF(left, track.top(), std::max(right - left, 1.0), track.height()), fill);
    }
}

} // namespace

StateTracks::StateTracks(const analysis::Oscillogram& oscillogram_, const std::vector<size_t>& own)
    : oscillogram(oscillogram_), changing(ChangingStates(oscillogram_, own))
{
    if (changing.empty())
        changing = ChangingStates(oscillogram);
}

int StateTracks::Height() const
{
    return RowHeight * static_cast<int>(changing.size());
}

void StateTracks::Draw(QPainter& painter, const Stretch& stretch, const QRectF& tracks) const
{
    SetFont(painter, 12);
    for (size_t row = 0; row < changing.size(); ++row) {
        const QRectF track(tracks.left(), tracks.top() + RowHeight * static_cast<double>(row), tracks.width(),
                           RowHeight - 5);
        DrawOne(painter, stretch, track, oscillogram.states[changing[row]]);
        painter.setPen(Ink);
        painter.drawText(track.adjusted(6, 0, 0, 0), Qt::AlignVCenter,
                         oscillogram.config.states[changing[row]].name);
    }
}

} // namespace picture
