// The decoder of compressed samples alone. The first three bytes are the number of points, little-endian.
#include "support.h"

#include "recording/anchanneldata.h"
#include "recording/deltadecoder.h"

#include <algorithm>
#include <cstring>
#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 3)
        return 0;
    uint32_t points = 0;
    std::memcpy(&points, data, 3);
    points %= 200000;
    // A copy of the exact size lets the sanitizer see a read beyond the area.
    const size_t areaSize = size - 3;
    const std::unique_ptr<unsigned char[]> area(new unsigned char[areaSize]);
    std::copy(data + 3, data + size, area.get());
    const zu::ByteView view{area.get(), areaSize};
    const bool possible = zu::CanExpandTo(view, points);
    AnChannelData channel;
    channel.m_HeaderAn.points = points;
    channel.m_DataLength = static_cast<quint32>(areaSize);
    channel.m_pData = new quint16[points];
    channel.Samples = reinterpret_cast<qint16*>(channel.m_pData);
    const bool expanded = channel.UnCompressData(area.get());
    channel.Clear();
    if (expanded && points > 0 && !possible)
        __builtin_trap(); // refused before, yet it works now
    return 0;
}
