// Tables of the encodings that have one byte for each character.
//
// A codec opens a converter for each text, which for the short names of channels takes longer than all else.
#pragma once

#include <QString>

#include <array>

class QTextCodec;

namespace zu {

class CodeTable
{
public:
    /// The tables of one of the recorder's two code pages, made by the codec at their first use. Null for
    /// other codecs.
    static const CodeTable* Of(const QTextCodec* codec);

    /// The same text as from the codec.
    QString Decoded(const char* bytes, int size) const;

    /// The byte of a character; 0 if only the codec knows.
    char Encoded(ushort character) const
    {
        return character < encoded.size() ? static_cast<char>(encoded[character]) : '\0';
    }

private:
    explicit CodeTable(const QTextCodec* codec);

    static constexpr int Characters = 256;
    bool usable = false;
    QString empty; // the text of no bytes
    std::array<QChar, Characters> decoded{};
    std::array<uchar, 0x500> encoded{}; // up to the last Cyrillic letter
};

/// The text of bytes, as from the codec.
QString TextOf(const char* bytes, int size, const QTextCodec* codec);

} // namespace zu
