// Texts by table against the codecs, which they stand for.
#include "base/codecs.h"
#include "base/codetable.h"
#include "base/encodedtext.h"

#include <gtest/gtest.h>

namespace {

QByteArray EncodedBy(const QTextCodec* codec, const QString& text)
{
    zu::EncodedText encoded(codec, 1);
    encoded.Add(text);
    return {encoded.Data(), encoded.Size()};
}

QString EveryCharacter()
{
    QString text;
    for (ushort character = 1; character != 0; ++character)
        text += QChar(character);
    return text;
}

} // namespace

TEST(EncodedText, HasTheBytesOfTheCodecForEachCharacter)
{
    for (QTextCodec* codec : {zu::CodecUtf8, zu::CodecCP1251, zu::CodecCP866}) {
        for (const QChar character : EveryCharacter())
            ASSERT_EQ(EncodedBy(codec, character), codec->fromUnicode(QString(character)))
                << codec->name().constData() << " " << character.unicode();
    }
}

TEST(EncodedText, HasTheBytesOfTheCodecForCharactersOfTwoUnits)
{
    const QString text = QStringLiteral("Ток \U0001F600 1");
    EXPECT_EQ(EncodedBy(zu::CodecUtf8, text), "Ток \U0001F600 1");
    EXPECT_EQ(EncodedBy(zu::CodecCP1251, text), zu::CodecCP1251->fromUnicode(text));
}

TEST(EncodedText, KeepsANulCharacter)
{
    const QString text = QStringLiteral("a") + QChar::Null + QStringLiteral("б");
    for (QTextCodec* codec : {zu::CodecUtf8, zu::CodecCP1251})
        EXPECT_EQ(EncodedBy(codec, text), codec->fromUnicode(text));
}

TEST(EncodedText, PutsPiecesTogether)
{
    zu::EncodedText text(zu::CodecCP1251, 1);
    text.AddBytes("N=");
    text.AddNumber(18446744073709551615U);
    text.Add(u"ж");
    EXPECT_EQ(QByteArray(text.Data(), text.Size()), "N=18446744073709551615\xE6");
    text.Truncate(2);
    text.AddNumber(0);
    EXPECT_EQ(QByteArray(text.Data(), text.Size()), "N=0");
}

TEST(CodeTable, DecodesEachByteAsTheCodec)
{
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    for (QTextCodec* codec : {zu::CodecCP866, zu::CodecCP1251, zu::CodecUtf8}) {
        EXPECT_EQ(zu::TextOf(bytes.constData(), bytes.size(), codec), codec->toUnicode(bytes));
        for (const char byte : bytes)
            EXPECT_EQ(zu::TextOf(&byte, 1, codec), codec->toUnicode(&byte, 1));
        EXPECT_EQ(zu::TextOf("", 0, codec).isNull(), codec->toUnicode("", 0).isNull());
    }
}

TEST(CodeTable, IsThereForTheCodeTablesOfRecorders)
{
    EXPECT_NE(zu::CodeTable::Of(zu::CodecCP866), nullptr);
    EXPECT_NE(zu::CodeTable::Of(zu::CodecCP1251), nullptr);
    EXPECT_EQ(zu::CodeTable::Of(zu::CodecUtf8), nullptr);
}
