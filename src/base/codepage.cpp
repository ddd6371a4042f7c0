#include "base/codepage.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr char16_t Upper1251[] =
    u"ЂЃ‚ѓ„…†‡€‰Љ‹ЊЌЋЏђ‘’“”•–—\x98™љ›њќћџ\u00A0ЎўЈ¤Ґ¦§Ё©Є«¬\u00AD®Ї°±Ііґµ¶·ё№є»јЅѕї"
    u"АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдежзийклмнопрстуфхцчшщъыьэюя";
constexpr char16_t Upper866[] = u"АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдежзийклмноп"
                                u"░▒▓│┤╡╢╖╕╣║╗╝╜╛┐└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀рстуфхцчшщъыьэюя"
                                u"ЁёЄєЇїЎў°∙·√№¤■\u00A0";

// ASCII below, the given characters above.
constexpr zu::CodePage::Characters WithUpper(const char16_t (&upper)[129])
{
    zu::CodePage::Characters characters{};
    for (size_t i = 0; i < 128; ++i) {
        characters[i] = static_cast<char16_t>(i);
        characters[i + 128] = upper[i];
    }
    return characters;
}

// Deliberate: three control characters of CP866 change places, as in IBM's table, which ICU has.
constexpr zu::CodePage::Characters Characters866()
{
    zu::CodePage::Characters characters = WithUpper(Upper866);
    characters[0x1A] = 0x1C;
    characters[0x1C] = 0x7F;
    characters[0x7F] = 0x1A;
    return characters;
}

// Characters that leave no trace where an encoding has not got them: ICU's list.
bool IsInvisible(char32_t character)
{
    struct Range
    {
        char32_t first, last;
    };
    constexpr Range ranges[] = {{0xAD, 0xAD},      {0x34F, 0x34F},   {0x61C, 0x61C},     {0x115F, 0x1160},
                                {0x17B4, 0x17B5},  {0x180B, 0x180F}, {0x200B, 0x200F},   {0x202A, 0x202E},
                                {0x2060, 0x206F},  {0x3164, 0x3164}, {0xFE00, 0xFE0F},   {0xFEFF, 0xFEFF},
                                {0xFFA0, 0xFFA0},  {0xFFF0, 0xFFF8}, {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A},
                                {0xE0000, 0xE0FFF}};
    return std::any_of(std::begin(ranges), std::end(ranges), [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

} // namespace

constexpr zu::CodePage::CodePage(const Characters& characters_) : characters(characters_), places{}
{
    // By insertion, as std::sort cannot be run while compiling before C++20.
    for (size_t i = 0; i < places.size(); ++i) {
        size_t at = i;
        for (; at > 0 && places[at - 1].character > characters[i]; --at)
            places[at] = places[at - 1];
        places[at] = {characters[i], static_cast<char>(i)};
    }
}

constexpr zu::CodePage zu::CodePage1251(WithUpper(Upper1251));
constexpr zu::CodePage zu::CodePage866(Characters866());

QString zu::CodePage::Decode(const char* bytes, QByteArray::size_type length) const
{
    QString text(length, Qt::Uninitialized);
    std::transform(bytes, bytes + length, text.begin(),
                   [this](char byte) { return QChar(characters[static_cast<uchar>(byte)]); });
    return text;
}

const zu::CodePage::Place* zu::CodePage::Find(char32_t character) const
{
    const auto* const place =
        std::lower_bound(places.begin(), places.end(), character,
                         [](const Place& one, char32_t wanted) { return one.character < wanted; });
    return place != places.end() && place->character == character ? place : nullptr;
}

zu::CodePage::Encoded zu::CodePage::Encode(const QChar* text, QString::size_type length) const
{
    Encoded encoded;
    encoded.bytes.reserve(length);
    for (QString::size_type i = 0; i < length; ++i) {
        char32_t character = text[i].unicode();
        if (text[i].isHighSurrogate()) {
            if (i + 1 == length) {
                encoded.half = text[i];
                break;
            }
            if (text[i + 1].isLowSurrogate())
                character = QChar::surrogateToUcs4(text[i], text[i + 1]);
        }
        if (character > 0xFFFF)
            ++i;
        if (const Place* place = Find(character)) {
            encoded.bytes += place->byte;
            continue;
        }
        ++encoded.lost;
        if (!IsInvisible(character))
            encoded.bytes += '?';
    }
    return encoded;
}
