#include "base/codepage.h"

#include "base/codecs.h"

#include <algorithm>
#include <numeric>

namespace zu {

CodePage::CodePage(const QTextCodec* codec) : empty(codec->toUnicode("", 0))
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

const CodePage* CodePage::Of(const QTextCodec* codec)
{
    if (codec == CodecCP866) {
        static const CodePage page(CodecCP866);
        return page.usable ? &page : nullptr;
    }
    if (codec == CodecCP1251) {
        static const CodePage page(CodecCP1251);
        return page.usable ? &page : nullptr;
    }
    return nullptr;
}

QString CodePage::Decoded(const char* bytes, int size) const
{
    if (size == 0)
        return empty;
    QString text(size, Qt::Uninitialized);
    std::transform(bytes, bytes + size, text.begin(),
                   [this](char byte) { return decoded[static_cast<uchar>(byte)]; });
    return text;
}

QString DecodedText(const char* bytes, int size, const QTextCodec* codec)
{
    const CodePage* page = CodePage::Of(codec);
    return page != nullptr ? page->Decoded(bytes, size) : codec->toUnicode(bytes, size);
}

} // namespace zu
