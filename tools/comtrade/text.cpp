#include "comtrade/text.h"

#include <QTextCodec>

QString comtrade::DecodedText(const QByteArray& bytes)
{
    QTextCodec::ConverterState state;
    QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars == 0 && state.remainingChars == 0)
        return text;
    return QTextCodec::codecForName("Windows-1251")->toUnicode(bytes);
}
