// Texts in the recorder's structures.
#pragma once

#include <QString>
#include <QTextCodec>

namespace zu {

/// The text from field up to its first NUL, and never beyond end, the end of the structure on disk.
inline QString FieldText(const char* field, const void* end, const QTextCodec* codec)
{
    const auto room = static_cast<size_t>(static_cast<const char*>(end) - field);
    return codec->toUnicode(field, static_cast<int>(qstrnlen(field, static_cast<uint>(room))));
}

} // namespace zu
