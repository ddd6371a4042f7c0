#include "text/numbers.h"

#include <QLocale>

namespace {

bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

// Whether the digit at this place is all that stands before the exponent.
bool IsAlone(const QByteArray& text, QByteArray::size_type at, const char* exponent)
{
    return IsDigit(text[at]) && (at == 0 || (!IsDigit(text[at - 1]) && text[at - 1] != '.')) &&
           qstrncmp(text.constData() + at + 1, exponent, 4) == 0;
}

// Texts of JSON, and with them all that looks like a number there, stay as they are.
QByteArray WithoutShortExponents(const QByteArray& text)
{
    constexpr QByteArray::size_type exponentSize = 4;
    if (!text.contains("e-04") && !text.contains("e+05"))
        return text;
    QByteArray plain;
    plain.reserve(text.size());
    bool isText = false;
    for (QByteArray::size_type i = 0; i < text.size(); ++i) {
        if (text[i] == '"')
            isText = !isText;
        if (isText && text[i] == '\\') {
            plain += text[i++];
            plain += text[i];
        } else if (!isText && IsAlone(text, i, "e-04")) {
            plain += QByteArray("0.000") + text[i];
            i += exponentSize;
        } else if (!isText && IsAlone(text, i, "e+05")) {
            plain += text[i] + QByteArray("00000");
            i += exponentSize;
        } else {
            plain += text[i];
        }
    }
    return plain;
}

} // namespace

namespace text {

QString ShortestNumber(double value)
{
    return QString::fromLatin1(
        WithoutShortExponents(QByteArray::number(value, 'g', QLocale::FloatingPointShortest)));
}

QByteArray JsonText(const QJsonDocument& document, QJsonDocument::JsonFormat format)
{
    return WithoutShortExponents(document.toJson(format));
}

} // namespace text
