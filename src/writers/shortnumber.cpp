#include "writers/shortnumber.h"

#include <QByteArray>
#include <QString>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <mutex>

namespace {

struct Known
{
    uint32_t bits = 0; // of the value
    bool isThere = false;
    zu::ShortNumber digits;
};

constexpr unsigned PlaceBits = 6;

zu::ShortNumber Made(float value)
{
    const QByteArray digits = QString().setNum(static_cast<double>(value), 'g', 8).toLatin1();
    return zu::ShortNumber(QLatin1String(digits.constData(), static_cast<int>(digits.size())));
}

} // namespace

zu::ShortNumber::ShortNumber(QLatin1String digits)
    : length(std::min(static_cast<int>(digits.size()), static_cast<int>(text.size())))
{
    std::copy_n(digits.data(), length, text.begin());
}

zu::ShortNumber zu::Digits8(float value)
{
    // Not one for each thread: a library with memory of that kind has the loader as a library of its own.
    static std::mutex mutex;
    static std::array<Known, 1U << PlaceBits> values;

    uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    const std::unique_lock<std::mutex> lock(mutex, std::try_to_lock);
    if (!lock.owns_lock())
        return Made(value);
    Known& known = values[bits * 2654435769U >> (32U - PlaceBits)]; // spread by the golden ratio
    if (!known.isThere || known.bits != bits)
        known = {bits, true, Made(value)};
    return known.digits;
}
