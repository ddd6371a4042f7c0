// The discrete channels that change, one row each, part of the still picture.
#pragma once

#include "picture/drawing/stretch.h"

#include <QPainter>

#include <vector>

namespace picture {

class StateTracks
{
public:
    /// Of the given channels those that change anywhere in the oscillogram, which has to outlive the tracks;
    /// the first of all that change if none of them does.
    StateTracks(const analysis::Oscillogram& oscillogram_, const std::vector<size_t>& own);

    /// Of all rows, pixels.
    int Height() const;

    void Draw(QPainter& painter, const Stretch& stretch, const QRectF& tracks) const;

private:
    const analysis::Oscillogram& oscillogram;
    std::vector<size_t> changing; // by their places in the configuration
};

} // namespace picture
