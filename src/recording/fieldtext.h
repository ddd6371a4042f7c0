// Texts in the recorder's structures.
#pragma once

#include "base/codecs.h"
#include "base/codetable.h"

#include <QString>

namespace zu {

/// The text from field up to its first NUL, and never beyond end, the end of the structure on disk.
inline QString FieldText(const char* field, const void* end, const QTextCodec* codec)
{
    const auto room = static_cast<size_t>(static_cast<const char*>(end) - field);
    return TextOf(field, static_cast<int>(qstrnlen(field, static_cast<uint>(room))), codec);
}

/// The beginning of every file's title.
inline QString TitleStart()
{
    return QStringLiteral("Данные ");
}

/// The code page of a file, in which its title begins as it must; null if there is none.
template <size_t Size>
QTextCodec* CodecOfTitle(const char (&title)[Size])
{
    for (QTextCodec* codec : {CodecCP866, CodecCP1251}) {
        if (TextOf(title, Size, codec).startsWith(TitleStart()))
            return codec;
    }
    return nullptr;
}

} // namespace zu
