// A second decoder of compressed data areas, for good and for bad ones: it goes bit by bit and item by item,
// with every counter and every test of the format written out, and without regard to speed.
#pragma once

#include "expansion.h"

/// Like Expand. decoded is the number of leading samples that are settled: all that a failed item or control
/// byte has not spoiled.
struct SlowExpansion : Expansion
{
    size_t decoded;
};

SlowExpansion ExpandSlowly(const QByteArray& area, size_t points);
