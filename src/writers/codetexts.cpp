// The texts of all 16-bit codes.
#include "writers/codetexts.h"

#include <algorithm>

namespace {

constexpr size_t MostDigits = 5;

// The number's next one, in digits at the end of the text. Returns where they begin now.
size_t CountUp(char (&digits)[MostDigits], size_t begin)
{
    size_t place = MostDigits;
    while (digits[--place] == '9')
        digits[place] = '0';
    ++digits[place];
    return std::min(begin, place);
}

} // namespace

// Every program that converts a recording pays for this once. Counting takes three fifths of the instructions
// that 65536 conversions take.
CodeTexts::CodeTexts() : entries(new uint64_t[65536])
{
    const auto put = [this](int code, const char* sign, const char* begin, const char* end) {
        char text[Longest + 1] = {};
        char* out = std::copy(begin, end, std::copy(sign, sign + std::strlen(sign), text));
        text[Longest] = static_cast<char>(out - text);
        std::memcpy(&entries[static_cast<uint16_t>(code)], text, sizeof text);
    };
    char digits[MostDigits] = {'0', '0', '0', '0', '0'};
    size_t begin = MostDigits - 1;
    put(0, ",", digits + begin, digits + MostDigits);
    for (int code = 1; code <= 32768; ++code) {
        begin = CountUp(digits, begin);
        if (code <= 32767)
            put(code, ",", digits + begin, digits + MostDigits);
        put(-code, ",-", digits + begin, digits + MostDigits);
    }
}

const CodeTexts& CodeTexts::Get()
{
    static const CodeTexts texts;
    return texts;
}
