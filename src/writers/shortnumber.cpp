#include "writers/shortnumber.h"

#include <QString>

#include <array>
#include <cstdint>
#include <cstring>

namespace {

struct Known
{
    uint32_t bits = 0; // of the value
    int length = 0;    // 0: nothing is known yet
    std::array<char, 24> text{};
};

constexpr unsigned PlaceBits = 6;
thread_local std::array<Known, 1U << PlaceBits> values;

} // namespace

QLatin1String zu::Digits8(float value)
{
    uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    Known& known = values[bits * 2654435769U >> (32U - PlaceBits)]; // spread by the golden ratio
    if (known.length == 0 || known.bits != bits) {
        const QByteArray digits = QString().setNum(static_cast<double>(value), 'g', 8).toLatin1();
        known.bits = bits;
        known.length = static_cast<int>(digits.size());
        std::memcpy(known.text.data(), digits.constData(), static_cast<size_t>(digits.size()));
    }
    return QLatin1String(known.text.data(), known.length);
}
