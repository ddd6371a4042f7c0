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

    /// Writes "," and the code in decimal to out, which has room for 8 bytes. Returns the end of the text.
    char* Append(int16_t code, char* out) const
    {
        const Entry& entry = entries[static_cast<uint16_t>(code)];
        std::memcpy(out, entry.bytes, sizeof entry.bytes);
        return out + static_cast<unsigned char>(entry.bytes[Longest]);
    }

private:
    struct Entry
    {
        char bytes[Longest + 1]; // the text, and its length in the last byte
    };

    CodeTexts();

    std::unique_ptr<Entry[]> entries;
};
