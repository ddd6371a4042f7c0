// Code pages of one byte a character: CP1251 and CP866, as ICU converts them, to the byte. With Qt 5, which
// has ICU's codecs, only the tests use them.
#pragma once

#include <QByteArray>
#include <QString>

#include <array>

namespace zu {

class CodePage
{
public:
    /// What a text became: the bytes, how many characters had none, and the last code unit if it is the first
    /// half of a pair (null otherwise), which has no byte yet.
    struct Encoded
    {
        QByteArray bytes;
        QString::size_type lost = 0;
        QChar half;
    };

    using Characters = std::array<char16_t, 256>;

    /// The code page in which byte n is characters[n].
    constexpr explicit CodePage(const Characters& characters_);

    /// The characters of the bytes; every byte has one.
    QString Decode(const char* bytes, QByteArray::size_type length) const;

    /// The bytes of the text. A character without one becomes '?', or nothing if it is not to be seen.
    Encoded Encode(const QChar* text, QString::size_type length) const;

private:
    struct Place
    {
        char16_t character;
        char byte;
    };

    const Place* Find(char32_t character) const;

    Characters characters;
    std::array<Place, 256> places; // in the order of the characters
};

extern const CodePage CodePage1251;
extern const CodePage CodePage866;

} // namespace zu
