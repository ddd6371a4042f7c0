#include "base/codetable.h"

#include <QTextCodec>

#include <algorithm>
#include <numeric>

namespace zu {

CodeTable::CodeTable(const QTextCodec* codec) : empty(codec->toUnicode("", 0))
{
    std::array<char, Characters> bytes{};
    std::iota(bytes.begin(), bytes.end(), '\0');
    const QString text = codec->toUnicode(bytes.data(), Characters);
    const QByteArray back = codec->fromUnicode(text);
    usable = text.size() == Characters && back.size() == Characters;
    if (!usable)
        return;
    std::copy(text.begin(), text.end(), decoded.begin());
    for (int i = 0; i < Characters; ++i) {
        const ushort character = text[i].unicode();
        if (back[i] == bytes[static_cast<size_t>(i)] && character < encoded.size())
            encoded[character] = static_cast<uchar>(i);
    }
}

const CodeTable* CodeTable::Of(const QTextCodec* codec)
{
    // Not the variables: a codec that takes the place of one of these has no table.
    static const QTextCodec* const codec866 = QTextCodec::codecForName("CP866");
    static const QTextCodec* const codec1251 = QTextCodec::codecForName("CP1251");
    if (codec == codec866) {
        static const CodeTable table(codec);
        return table.usable ? &table : nullptr;
    }
    if (codec == codec1251) {
        static const CodeTable table(codec);
        return table.usable ? &table : nullptr;
    }
    return nullptr;
}

QString CodeTable::Decoded(const char* bytes, int size) const
{
    if (size == 0)
        return empty;
    QString text(size, Qt::Uninitialized);
    std::transform(bytes, bytes + size, text.begin(),
                   [this](char byte) { return decoded[static_cast<uchar>(byte)]; });
    return text;
}

QString TextOf(const char* bytes, int size, const QTextCodec* codec)
{
    const CodeTable* table = CodeTable::Of(codec);
    return table != nullptr ? table->Decoded(bytes, size) : codec->toUnicode(bytes, size);
}

} // namespace zu
