// Text codecs for Qt 6, which has none: the part of Qt 5's class that this project uses, under the same name
// and with the same bytes. This folder is compiled with Qt 6 alone; with Qt 5 the class is Qt's own.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringConverter>

#include <memory>

class QTextCodec
{
public:
    enum ConversionFlag { DefaultConversion, IgnoreHeader = 1 };

    /// What one call leaves for the next, and what was wrong so far.
    struct ConverterState
    {
        explicit ConverterState(ConversionFlag flags_ = DefaultConversion) : flags(flags_) {}

        ConversionFlag flags;         ///< IgnoreHeader: a byte order mark is neither skipped nor written
        qsizetype remainingChars = 0; ///< bytes of a character that has begun
        qsizetype invalidChars = 0;   ///< bytes without a character and characters without a byte
        std::shared_ptr<QStringDecoder> decoder; ///< from the first call on
        QChar highSurrogate;                     ///< waits for its other half; null if none does
    };

    virtual ~QTextCodec() = default;
    QTextCodec(const QTextCodec&) = delete;
    QTextCodec& operator=(const QTextCodec&) = delete;

    /// The codec of an encoding, whatever its case and punctuation; null if there is none. It lives to the
    /// end.
    static QTextCodec* codecForName(const QByteArray& name);

    /// What the encoding of the system is taken for: UTF-8, as for Qt 6 itself, unless another is set.
    static QTextCodec* codecForLocale();
    static void setCodecForLocale(QTextCodec* codec); ///< null: UTF-8

    /// The codec that the byte order mark of the bytes names; otherwise the given one.
    static QTextCodec* codecForUtfText(const QByteArray& bytes, QTextCodec* otherwise);

    /// The text of the bytes. Without a state a character that has only begun is an invalid one.
    QString toUnicode(const QByteArray& bytes) const;
    QString toUnicode(const char* bytes, qsizetype length, ConverterState* state = nullptr) const;

    /// The bytes of the text; '?' stands for a character that the encoding has not.
    QByteArray fromUnicode(const QString& text) const;
    QByteArray fromUnicode(const QChar* text, qsizetype length, ConverterState* state = nullptr) const;

    /// Whether the encoding has every character of the text.
    bool canEncode(const QString& text) const;
    bool canEncode(QChar character) const;

    virtual QByteArray name() const = 0;
    virtual int mibEnum() const = 0;

protected:
    QTextCodec() = default;
    virtual QString convertToUnicode(const char* bytes, qsizetype length, ConverterState* state) const = 0;
    virtual QByteArray convertFromUnicode(const QChar* text, qsizetype length,
                                          ConverterState* state) const = 0;
};
