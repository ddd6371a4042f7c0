// The texts of all 16-bit codes, for ASCII records.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>

class CodeTexts
{
public:
    /// The one table, 512 KB, built at its first use.
    static const CodeTexts& Get();

    /// Longest text: "," and "-32768". Append may write up to this and one more byte beyond its end.
    static constexpr size_t Longest = 7;

    /// Writes "," and the code in decimal for each of count codes to out, which has room for 8 bytes each.
    /// Returns the end of the texts.
    char* Append(const int16_t* codes, size_t count, char* out) const
    {
        const uint64_t* const texts = entries.get(); // a local one, which no write of characters can change
        for (size_t i = 0; i < count; ++i) {
            const uint64_t text = texts[static_cast<uint16_t>(codes[i])];
            std::memcpy(out, &text, sizeof text);
            out += text >> LengthShift;
        }
        return out;
    }

    /// The same for one code.
    char* Append(int16_t code, char* out) const { return Append(&code, 1, out); }

private:
    static constexpr unsigned LengthShift = 56;

    CodeTexts();

    // The bytes of each text in the order of memory, and its length in the last byte, which is the highest
    // one of the number.
    std::unique_ptr<uint64_t[]> entries;
};
