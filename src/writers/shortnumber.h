// Numbers of the CFG file, with eight significant digits.
#pragma once

#include <QLatin1String>

#include <array>

namespace zu {

/// The digits of a number.
class ShortNumber
{
public:
    /// Takes no more than 24 of them.
    explicit ShortNumber(QLatin1String digits = {});

    /// What this object holds, and as long as it does.
    QLatin1String Text() const { return QLatin1String(text.data(), length); }

private:
    std::array<char, 24> text{};
    int length = 0;
};

/// The digits of value, as QString::setNum gives them for 'g' and 8. The channels of a recorder have few
/// different values, so the last ones are kept, for all threads.
ShortNumber Digits8(float value);

} // namespace zu
