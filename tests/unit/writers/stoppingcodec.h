// A codec that stops returning bytes, so that a line writer writes nothing to the device.
#pragma once

#include "service/zucmtrconverter.h"

#include <QTextCodec>

/// Encodes as CP1251 for a number of texts and returns nothing for all later ones. Qt deletes it at the end.
class StoppingCodec : public QTextCodec
{
public:
    explicit StoppingCodec(int texts_) : texts(texts_) {}

    QByteArray name() const override { return "stopping"; }
    int mibEnum() const override { return -1000; }

protected:
    QString convertToUnicode(const char* bytes, QString::size_type length, ConverterState*) const override
    {
        return QString::fromLatin1(bytes, length);
    }

    QByteArray convertFromUnicode(const QChar* text, QString::size_type length,
                                  ConverterState*) const override
    {
        if (texts == 0)
            return QByteArray();
        --texts;
        return QTextCodec::codecForName("CP1251")->fromUnicode(text, length);
    }

private:
    mutable int texts;
};

/// Replaces CP1251 with a stopping codec for its own lifetime.
class StoppedWriting
{
public:
    explicit StoppedWriting(int texts) : usual(ZuCmtrConverter::codec_CP1251)
    {
        ZuCmtrConverter::codec_CP1251 = new StoppingCodec(texts);
    }

    ~StoppedWriting() { ZuCmtrConverter::codec_CP1251 = usual; }

    StoppedWriting(const StoppedWriting&) = delete;
    StoppedWriting& operator=(const StoppedWriting&) = delete;

private:
    QTextCodec* usual;
};
