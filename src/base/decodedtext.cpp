#include "base/decodedtext.h"

#include <QIODevice>
#include <QTextCodec>

QString zu::DecodedText(QIODevice& device, QTextCodec* codec)
{
    const bool isText = device.isTextModeEnabled();
    device.setTextModeEnabled(false); // line ends are removed from the text: in UTF-16 they are no bytes
    const QTextCodec* found = nullptr;
    QTextCodec::ConverterState state; // holds what is cut off at the end of a piece
    QString text;
    // Deliberate: pieces as QTextStream reads them; bytes that are no UTF-8 at their ends become the same
    // texts.
    constexpr qint64 piece = 16384;
    while (!device.atEnd()) {
        const QByteArray bytes = device.read(piece);
        if (bytes.isEmpty())
            break;
        if (found == nullptr)
            found =
                QTextCodec::codecForUtfText(bytes, codec != nullptr ? codec : QTextCodec::codecForLocale());
        text += found->toUnicode(bytes.constData(), bytes.size(), &state);
    }
    device.setTextModeEnabled(isText);
    if (isText)
        text.remove(QLatin1Char('\r'));
    return text;
}
