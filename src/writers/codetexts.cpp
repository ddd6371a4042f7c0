// The texts of all 16-bit codes.
#include "writers/codetexts.h"

#include <charconv>

CodeTexts::CodeTexts() : entries(new Entry[65536]{})
{
    for (int code = -32768; code <= 32767; ++code) {
        char* text = entries[static_cast<uint16_t>(code)].bytes;
        text[0] = ',';
        const char* end = std::to_chars(text + 1, text + Longest, code).ptr;
        text[Longest] = static_cast<char>(end - text);
    }
}

const CodeTexts& CodeTexts::Get()
{
    static const CodeTexts texts;
    return texts;
}
