// The encodings and their names.
#include "base/codecs.h"

#include <gtest/gtest.h>

#include <QTextCodec>

TEST(Codecs, AreThoseOfTheirNames)
{
    EXPECT_EQ(zu::CodecCP1251, QTextCodec::codecForName("CP1251"));
    EXPECT_EQ(zu::CodecCP866, QTextCodec::codecForName("CP866"));
    EXPECT_EQ(zu::CodecUtf8, QTextCodec::codecForName("UTF8"));
    EXPECT_EQ(zu::CodecIni, zu::CodecUtf8);
    EXPECT_NE(zu::CodecCP1251, zu::CodecCP866);
}
