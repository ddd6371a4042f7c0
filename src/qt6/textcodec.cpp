#include "textcodec.h"

#include "base/codepage.h"

#include <QList>

#include <map>
#include <mutex>

namespace {

using Flag = QStringConverter::Flag;

// Their counts are for their children alone.
class Decoder : public QStringDecoder
{
public:
    using QStringDecoder::QStringDecoder;

    // The text of a further piece in UTF-8. Qt 6 leaves out the byte at which it sees that the bytes which
    // wait from the last piece are no character. So they are completed byte by byte, and if that fails the
    // piece is read from its start.
    QString DecodeUtf8(QByteArrayView piece)
    {
        QString text;
        QByteArrayView rest = piece;
        const auto invalidBefore = state.invalidChars;
        while (state.remainingChars > 0 && !rest.isEmpty()) {
            text += decode(rest.first(1));
            rest = state.invalidChars == invalidBefore ? rest.sliced(1) : piece;
        }
        return text + decode(rest);
    }

    void Count(QTextCodec::ConverterState& counts) const
    {
        counts.invalidChars = state.invalidChars;
        counts.remainingChars = state.remainingChars;
    }
};

bool IsIgnored(const QTextCodec::ConverterState* state)
{
    return state != nullptr && state->flags == QTextCodec::IgnoreHeader;
}

class CodePageCodec : public QTextCodec
{
public:
    CodePageCodec(const char* title_, int number_, const zu::CodePage& page_)
        : title(title_), number(number_), page(page_)
    {}

    QByteArray name() const override { return title; }
    int mibEnum() const override { return number; }

protected:
    QString convertToUnicode(const char* bytes, qsizetype length, ConverterState*) const override
    {
        return page.Decode(bytes, length);
    }

    QByteArray convertFromUnicode(const QChar* text, qsizetype length, ConverterState* state) const override
    {
        if (state == nullptr)
            return page.Encode(text, length).bytes;
        const QString whole = (state->highSurrogate.isNull() ? QString() : QString(state->highSurrogate)) +
                              QString(text, length);
        const zu::CodePage::Encoded encoded = page.Encode(whole.constData(), whole.size());
        state->invalidChars += encoded.lost;
        state->highSurrogate = encoded.half;
        return encoded.bytes;
    }

private:
    const char* title;
    int number;
    const zu::CodePage& page;
};

// What Qt's own converters know, UTF-8 and UTF-16 among them.
class QtCodec : public QTextCodec
{
public:
    explicit QtCodec(const QByteArray& title_)
        : title(title_), encoding(QStringConverter::encodingForName(title_.constData()))
    {}

    QByteArray name() const override { return title; }
    int mibEnum() const override { return encoding == QStringConverter::Utf8 ? 106 : 0; }

protected:
    QString convertToUnicode(const char* bytes, qsizetype length, ConverterState* state) const override
    {
        const QByteArrayView input(bytes, length);
        if (state == nullptr) {
            // Half a character of UTF-16 at the end is left out, one of UTF-8 is an invalid one.
            return QStringDecoder(title.constData(), isUtf8() ? Flag::Stateless : Flag::Default)(input);
        }
        if (!state->decoder)
            state->decoder = std::make_shared<Decoder>(
                title.constData(), IsIgnored(state) ? Flag::ConvertInitialBom : Flag::Default);
        auto& decoder = static_cast<Decoder&>(*state->decoder);
        QString text = isUtf8() ? decoder.DecodeUtf8(input) : decoder.decode(input);
        decoder.Count(*state);
        return text;
    }

    QByteArray convertFromUnicode(const QChar* text, qsizetype length, ConverterState* state) const override
    {
        if (isUtf8())
            return ToUtf8(QStringView(text, length), state);
        QStringEncoder encoder(title.constData(),
                               encoding && !IsIgnored(state) ? Flag::WriteBom : Flag::Default);
        QByteArray bytes = encoder(QStringView(text, length));
        if (!encoder.hasError())
            return bytes;
        if (state != nullptr)
            ++state->invalidChars;
        return Replaced(QString(text, length));
    }

private:
    bool isUtf8() const { return encoding == QStringConverter::Utf8; }

    // A half of a pair becomes '?'; at the end it waits for the next call, and is left out if there is none.
    static QByteArray ToUtf8(QStringView text, ConverterState* state)
    {
        const bool isOpen =
            !text.isEmpty() && text.back().isSurrogate() &&
            (text.back().isHighSurrogate() || text.size() == 1 || !text[text.size() - 2].isHighSurrogate());
        const QStringView whole = isOpen ? text.chopped(1) : text;
        if (state == nullptr)
            return whole.toUtf8();
        if (!whole.isValidUtf16())
            ++state->invalidChars;
        QByteArray bytes;
        if (state->flags != IgnoreHeader)
            bytes = "\xEF\xBB\xBF";
        state->flags = IgnoreHeader;
        return bytes + whole.toUtf8();
    }

    // Qt's own stand-in is a control character.
    QByteArray Replaced(const QString& text) const
    {
        QByteArray bytes;
        for (const uint character : text.toUcs4()) {
            QStringEncoder encoder(title.constData());
            const QByteArray one =
                encoder(QString::fromUcs4(reinterpret_cast<const char32_t*>(&character), 1));
            bytes += encoder.hasError() ? QByteArray("?") : one;
        }
        return bytes;
    }

    QByteArray title;
    std::optional<QStringConverter::Encoding> encoding;
};

// The letters and digits of a name, small.
QByteArray Plain(const QByteArray& name)
{
    QByteArray plain;
    for (const char letter : name.toLower()) {
        if ((letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9'))
            plain += letter;
    }
    return plain;
}

std::unique_ptr<QTextCodec> NewCodec(const QByteArray& plain, const QByteArray& name)
{
    if (plain == "cp1251" || plain == "windows1251")
        return std::make_unique<CodePageCodec>("windows-1251", 2251, zu::CodePage1251);
    if (plain == "cp866" || plain == "ibm866")
        return std::make_unique<CodePageCodec>("IBM866", 2086, zu::CodePage866);
    if (plain == "utf8")
        return std::make_unique<QtCodec>("UTF-8");
    if (plain.isEmpty() || !QStringDecoder(name.constData()).isValid())
        return nullptr;
    return std::make_unique<QtCodec>(name);
}

QTextCodec* localeCodec = nullptr;

} // namespace

QTextCodec* QTextCodec::codecForName(const QByteArray& name)
{
    // Never destroyed, as hosts write to the log until their very end.
    static std::mutex& mutex = *new std::mutex;
    static std::map<QByteArray, std::unique_ptr<QTextCodec>>& codecs =
        *new std::map<QByteArray, std::unique_ptr<QTextCodec>>;
    const QByteArray plain = Plain(name);
    const std::lock_guard<std::mutex> lock(mutex);
    const auto [place, isNew] = codecs.try_emplace(plain);
    if (isNew)
        place->second = NewCodec(plain, name);
    return place->second.get();
}

QTextCodec* QTextCodec::codecForLocale()
{
    return localeCodec != nullptr ? localeCodec : codecForName("UTF-8");
}

void QTextCodec::setCodecForLocale(QTextCodec* codec)
{
    localeCodec = codec;
}

QTextCodec* QTextCodec::codecForUtfText(const QByteArray& bytes, QTextCodec* otherwise)
{
    const auto encoding = QStringConverter::encodingForData(bytes);
    return encoding ? codecForName(QStringConverter::nameForEncoding(*encoding)) : otherwise;
}

QString QTextCodec::toUnicode(const QByteArray& bytes) const
{
    return convertToUnicode(bytes.constData(), bytes.size(), nullptr);
}

QString QTextCodec::toUnicode(const char* bytes, qsizetype length, ConverterState* state) const
{
    return convertToUnicode(bytes, length, state);
}

QByteArray QTextCodec::fromUnicode(const QString& text) const
{
    return convertFromUnicode(text.constData(), text.size(), nullptr);
}

QByteArray QTextCodec::fromUnicode(const QChar* text, qsizetype length, ConverterState* state) const
{
    return convertFromUnicode(text, length, state);
}

bool QTextCodec::canEncode(const QString& text) const
{
    ConverterState state;
    convertFromUnicode(text.constData(), text.size(), &state);
    return state.invalidChars == 0;
}

bool QTextCodec::canEncode(QChar character) const
{
    return canEncode(QString(character));
}
