#include "base/decodedtext.h"

#include <QIODevice>
#include <QTextCodec>

QString zu::DecodedText(QIODevice& device, QTextCodec* codec)
{
    const bool isText = device.isTextModeEnabled();
    device.setTextModeEnabled(false); // line ends are removed from the text: in UTF-16 they are no bytes
    QByteArray bytes;
    constexpr qint64 step = 65536;
    while (!device.atEnd()) {
        const QByteArray more = device.read(step);
        if (more.isEmpty())
            break;
        bytes += more;
    }
    device.setTextModeEnabled(isText);

    codec = QTextCodec::codecForUtfText(bytes, codec != nullptr ? codec : QTextCodec::codecForLocale());
    QTextCodec::ConverterState state; // holds what is cut off at the end
    QString text = codec->toUnicode(bytes.constData(), bytes.size(), &state);
    if (isText)
        text.remove(QLatin1Char('\r'));
    return text;
}
