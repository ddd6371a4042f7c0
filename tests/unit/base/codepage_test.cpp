// The tables of CP1251 and CP866 against Qt's codecs, and what all codecs make of difficult texts, which has
// to be the same with Qt 5 and Qt 6.
#include "base/codecs.h"
#include "base/codepage.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QTextCodec>

#include <random>
#include <vector>

namespace {

struct Pair
{
    const char* name;
    const zu::CodePage& page;
};

const Pair Pages[] = {{"CP1251", zu::CodePage1251}, {"CP866", zu::CodePage866}};

QString Character(char32_t code)
{
    return code > 0xFFFF ? QString(QChar(QChar::highSurrogate(code))) + QChar(QChar::lowSurrogate(code))
                         : QString(QChar(static_cast<ushort>(code)));
}

// Every character from first to last, halves of pairs among them, each before a bar.
QString Barred(char32_t first, char32_t last)
{
    QString text;
    for (char32_t code = first; code <= last; ++code)
        text += Character(code) + QLatin1Char('|');
    return text;
}

// Of all blocks of 4096 characters those that have any which are not alike.
std::vector<char32_t> Starts()
{
    std::vector<char32_t> starts;
    for (char32_t first = 0; first < 0x20000; first += 0x1000)
        starts.push_back(first);
    starts.insert(starts.end(), {0xE0000, 0xE1000, 0x10F000});
    return starts;
}

// Texts of few characters and bytes of which every order is worth trying.
class Draw
{
public:
    QString Text()
    {
        static const QString characters = QStringLiteral("AЯ€中") + QChar(0xFEFF) + QChar(0) + QChar(0xFFFD) +
                                          QChar(0xAD) + QChar(0xD83D) + QChar(0xD800) + QChar(0xDE00);
        QString text;
        for (unsigned int left = Number(7); left > 0; --left)
            text += characters[static_cast<int>(Number(static_cast<unsigned int>(characters.size())))];
        return text;
    }

    QByteArray Bytes()
    {
        static const QByteArray bytes = QByteArray::fromHex("410ad090e282acf09f9880fffec0eda0efbbbf00dcd898");
        QByteArray drawn = Number(8) == 0 ? QByteArray("\xEF\xBB\xBF") : QByteArray();
        for (unsigned int left = Number(9); left > 0; --left)
            drawn += bytes[static_cast<int>(Number(static_cast<unsigned int>(bytes.size())))];
        return drawn;
    }

private:
    unsigned int Number(unsigned int below) { return static_cast<unsigned int>(numbers() % below); }

    std::mt19937 numbers; // the same on every machine
};

// A fingerprint of results, each before a line end.
class Fingerprint
{
public:
    void Add(const QByteArray& result) { hash.addData(result.toHex() + '\n'); }
    void Add(const QString& result)
    {
        hash.addData(
            QByteArray(reinterpret_cast<const char*>(result.utf16()), 2 * int(result.size())).toHex() + '\n');
    }
    void Add(qlonglong result) { hash.addData(QByteArray::number(result) + '\n'); }

    QByteArray Text() const { return hash.result().toHex().left(16); }

private:
    QCryptographicHash hash{QCryptographicHash::Sha256};
};

// What the codec decodes with and without a state.
QByteArray FingerprintOfDecoded(const char* name)
{
    const QTextCodec& codec = *QTextCodec::codecForName(name);
    Fingerprint fingerprint;
    Draw draw;
    for (int i = 0; i < 5000; ++i) {
        const QByteArray bytes = draw.Bytes();
        fingerprint.Add(codec.toUnicode(bytes));
        QTextCodec::ConverterState state;
        fingerprint.Add(codec.toUnicode(bytes.constData(), bytes.size(), &state));
        fingerprint.Add(static_cast<qlonglong>(state.remainingChars));
    }
    return fingerprint.Text();
}

QByteArray FingerprintOfEncoded(const char* name)
{
    const QTextCodec& codec = *QTextCodec::codecForName(name);
    Fingerprint fingerprint;
    Draw draw;
    for (int i = 0; i < 5000; ++i) {
        const QString text = draw.Text();
        fingerprint.Add(codec.fromUnicode(text));
        fingerprint.Add(static_cast<qlonglong>(codec.canEncode(text)));
        QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
        fingerprint.Add(codec.fromUnicode(text.constData(), text.size(), &state));
    }
    return fingerprint.Text();
}

} // namespace

TEST(CodePage, DecodesEveryByteAsTheCodecDoes)
{
    for (const Pair& pair : Pages) {
        for (int byte = 0; byte < 256; ++byte) {
            const QByteArray bytes(1, static_cast<char>(byte));
            EXPECT_EQ(pair.page.Decode(bytes.constData(), 1),
                      QTextCodec::codecForName(pair.name)->toUnicode(bytes))
                << pair.name << ' ' << byte;
        }
    }
}

TEST(CodePage, EncodesEveryCharacterAsTheCodecDoes)
{
    for (const Pair& pair : Pages) {
        for (const char32_t first : Starts()) {
            const QString text = Barred(first, first + 0xFFF);
            const zu::CodePage::Encoded encoded = pair.page.Encode(text.constData(), text.size());
            QTextCodec::ConverterState state;
            const QByteArray expected =
                QTextCodec::codecForName(pair.name)->fromUnicode(text.constData(), text.size(), &state);
            ASSERT_EQ(encoded.bytes, expected) << pair.name << ' ' << uint(first);
            ASSERT_EQ(encoded.lost, state.invalidChars) << pair.name << ' ' << uint(first);
        }
    }
}

TEST(CodePage, TreatsHalvesOfPairsAsTheCodecDoes)
{
    Draw draw;
    for (int i = 0; i < 5000; ++i) {
        const QString text = draw.Text();
        for (const Pair& pair : Pages)
            ASSERT_EQ(pair.page.Encode(text.constData(), text.size()).bytes,
                      QTextCodec::codecForName(pair.name)->fromUnicode(text))
                << pair.name << ' ' << i;
    }
}

TEST(Codecs, DecodeTheSameWithEveryQt)
{
    EXPECT_EQ(FingerprintOfDecoded("CP1251"), "237ef104927e5f5e");
    EXPECT_EQ(FingerprintOfDecoded("CP866"), "c85425a3f11e4d95");
    EXPECT_EQ(FingerprintOfDecoded("UTF-8"), "aaa13ea95cdb4a9f");
    EXPECT_EQ(FingerprintOfDecoded("UTF-16LE"), "57a744b7139e70ce");
    EXPECT_EQ(FingerprintOfDecoded("UTF-16BE"), "892eee530f8a772b");
    EXPECT_EQ(FingerprintOfDecoded("KOI8-R"), "0c0bd6d29f4c82ad");
    EXPECT_EQ(FingerprintOfDecoded("GBK"), "604ee17a22cd9251");
    EXPECT_EQ(FingerprintOfDecoded("windows-1252"), "19a5af0a922cb3e8");
}

TEST(Codecs, DecodePiecesAsTheWhole)
{
    const QString text = QStringLiteral("Да 中€") + Character(0x1F600);
    for (const char* name : {"CP1251", "CP866", "UTF-8", "UTF-16LE", "GBK"}) {
        const QTextCodec& codec = *QTextCodec::codecForName(name);
        const QByteArray bytes = codec.fromUnicode(text);
        for (int cut = 0; cut <= bytes.size(); ++cut) {
            QTextCodec::ConverterState state;
            const QString start = codec.toUnicode(bytes.constData(), cut, &state);
            EXPECT_EQ(start + codec.toUnicode(bytes.constData() + cut, bytes.size() - cut, &state),
                      codec.toUnicode(bytes))
                << name << ' ' << cut;
            EXPECT_EQ(state.remainingChars, 0) << name << ' ' << cut;
        }
    }
}

// Bytes of a character that turn out to be none when the next piece comes.
TEST(Codecs, DecodeInvalidPiecesTheSameWithEveryQt)
{
    const QTextCodec& codec = *QTextCodec::codecForName("UTF-8");
    const struct
    {
        const char* start; // hexadecimal
        const char* rest;
        QString text; // '?' for U+FFFD
        int invalid;
    } rows[] = {
        {"41e0", "4243", "A?BC", 1},       {"41f09080", "4243", "A?BC", 1}, {"41e2", "8241", "A??A", 2},
        {"41d0", "d090", "A?\u0410", 1},   {"41ed", "a08041", "A???A", 3},  {"41f0", "80808041", "A????A", 4},
        {"41f0", "9080d042", "A????B", 4}, {"41f0", "90", "A", 0},
    };
    for (const auto& row : rows) {
        QTextCodec::ConverterState state;
        QString text;
        for (const char* piece : {row.start, row.rest}) {
            const QByteArray bytes = QByteArray::fromHex(piece);
            text += codec.toUnicode(bytes.constData(), bytes.size(), &state);
        }
        EXPECT_EQ(text.replace(QChar(QChar::ReplacementCharacter), QLatin1Char('?')), row.text)
            << row.start << ' ' << row.rest;
        EXPECT_EQ(state.invalidChars, row.invalid) << row.start << ' ' << row.rest;
    }
}

TEST(Codecs, EncodeTheSameWithEveryQt)
{
    EXPECT_EQ(FingerprintOfEncoded("CP1251"), "431017e6381f7aea");
    EXPECT_EQ(FingerprintOfEncoded("CP866"), "f6fd5145aa28dcd8");
    EXPECT_EQ(FingerprintOfEncoded("UTF-8"), "576c84de74a55ca8");
}
