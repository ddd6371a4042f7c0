// The texts of all 16-bit codes.
#include "writers/codetexts.h"

#include <charconv>

CodeTexts::CodeTexts() : entries(new uint64_t[65536])
{
    for (int code = -32768; code <= 32767; ++code) {
        char text[Longest + 1] = ",";
        const char* end = std::to_chars(text + 1, text + Longest, code).ptr;
        text[Longest] = static_cast<char>(end - text);
        std::memcpy(&entries[static_cast<uint16_t>(code)], text, sizeof text);
    }
}

const CodeTexts& CodeTexts::Get()
{
    static const CodeTexts texts;
    return texts;
}
