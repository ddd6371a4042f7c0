// Randomly damaged records: they are read, or refused with a text, and nothing else happens.
#include "examples.h"

#include <gtest/gtest.h>

#include <random>

namespace {

QByteArray Spoilt(QByteArray bytes, std::mt19937& random)
{
    const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    const int changes = 1 + below(4);
    for (int i = 0; i < changes && !bytes.isEmpty(); ++i) {
        const int place = below(bytes.size());
        switch (below(4)) {
        case 0:
            bytes[place] = static_cast<char>(below(256));
            break;
        case 1:
            bytes.remove(place, 1 + below(20));
            break;
        case 2:
            bytes.insert(place, bytes.mid(below(bytes.size()), 1 + below(20)));
            break;
        default:
            bytes.truncate(place);
            break;
        }
    }
    return bytes;
}

} // namespace

TEST(ComtradeMutations, AreReadOrRefusedWithAText)
{
    const QByteArray record = "--- file type: CFG ---\r\n" + ExampleConfiguration() +
                              "--- file type: HDR ---\r\nreport\r\n--- file type: DAT ASCII ---\r\n"
                              "1,0,-5,32767,1\n2,417,6,7,0\n3,833,,8,1\n4,1250,1,2,0\n";
    const TestDirectory directory;
    std::mt19937 random(20240131);
    int refused = 0;
    for (int i = 0; i < 3000; ++i) {
        const QString path = directory.Write("rec.cff", Spoilt(record, random));
        int rows = 0;
        const QString error = ErrorOf([&] {
            comtrade::Record reader(path);
            comtrade::Row row;
            while (reader.Next(row))
                ASSERT_LT(++rows, 1000);
        });
        refused += error.isEmpty() ? 0 : 1;
        ASSERT_TRUE(error.isEmpty() || error.contains("rec.cff")) << error;
    }
    EXPECT_GT(refused, 1000);
    EXPECT_LT(refused, 3000);
}
