#include "base/encodedtext.h"

#include "base/codetable.h"

#include <QTextCodec>

#include <algorithm>
#include <charconv>
#include <cstring>

namespace zu {

static constexpr int Utf8Number = 106; // in IANA's list of encodings

EncodedText::EncodedText(const QTextCodec* codec_, int room)
    : codec(codec_), isUtf8(codec_ != nullptr && codec_->mibEnum() == Utf8Number),
      table(CodeTable::Of(codec_)), buffer(room, Qt::Uninitialized)
{}

char* EncodedText::Room(int length)
{
    if (buffer.size() - size < length)
        buffer.resize(std::max(2 * static_cast<int>(buffer.size()), size + length));
    return buffer.data() + size;
}

bool EncodedText::Add(QStringView text)
{
    if (isUtf8 ? AddUtf8(text) : AddByTable(text))
        return true;
    const QByteArray bytes = codec->fromUnicode(text.data(), static_cast<int>(text.size()));
    AddBytes(bytes.constData(), static_cast<int>(bytes.size()));
    return text.isEmpty() || !bytes.isEmpty();
}

void EncodedText::AddBytes(const char* text, int length)
{
    std::memcpy(Room(length), text, static_cast<size_t>(length));
    size += length;
}

void EncodedText::AddNumber(quint64 number)
{
    constexpr int Longest = 20;
    char* const out = Room(Longest);
    size += static_cast<int>(std::to_chars(out, out + Longest, number).ptr - out);
}

// False, with nothing added, for a text with a character of two units, which is left to the codec.
bool EncodedText::AddUtf8(QStringView text)
{
    char* const start = Room(3 * static_cast<int>(text.size()));
    char* out = start;
    const auto put = [&](unsigned byte) { *out++ = static_cast<char>(byte); };
    for (const QChar character : text) {
        const unsigned code = character.unicode();
        if (code < 0x80) {
            put(code);
        } else if (code < 0x800) {
            put(0xC0U | code >> 6U);
            put(0x80U | (code & 0x3FU));
        } else if (!character.isSurrogate()) {
            put(0xE0U | code >> 12U);
            put(0x80U | (code >> 6U & 0x3FU));
            put(0x80U | (code & 0x3FU));
        } else {
            return false;
        }
    }
    size += static_cast<int>(out - start);
    return true;
}

// False, with nothing added, for a text with a character that is left to the codec.
bool EncodedText::AddByTable(QStringView text)
{
    if (table == nullptr)
        return false;
    char* const start = Room(static_cast<int>(text.size()));
    char* out = start;
    for (const QChar character : text) {
        *out = table->Encoded(character.unicode());
        if (*out++ == '\0')
            return false;
    }
    size += static_cast<int>(out - start);
    return true;
}

} // namespace zu
