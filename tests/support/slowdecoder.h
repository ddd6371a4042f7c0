// A simple decoder of compressed data areas: it unpacks bit by bit, without regard to speed.
#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <vector>

// The samples of a data area, exactly `points` of them. Nothing if the area ends early, if bytes are left
// over, or if its total is not the size of the samples.
std::optional<std::vector<int16_t>> DecodeSlowly(const QByteArray& area, uint32_t points);
