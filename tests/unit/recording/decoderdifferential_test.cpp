// The decoder, for each instruction set of this machine, against a slow and simple one, over good and bad
// random areas.
#include "decodertables.h"
#include "slowexpander.h"

#include "recorderfile/compress.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

using recorderfile::CompressedArea;
using recorderfile::CompressSamples;

namespace {

using Codes = std::vector<int16_t>;

struct Area
{
    QByteArray bytes;
    uint32_t points;
};

class Random
{
public:
    explicit Random(uint32_t seed) : engine(seed) {}

    /// A number from low to high.
    uint32_t Between(uint32_t low, uint32_t high)
    {
        return low + static_cast<uint32_t>(engine()) % (high - low + 1);
    }
    bool OneIn(uint32_t n) { return engine() % n == 0; }
    int16_t Code(uint32_t amplitude)
    {
        return static_cast<int16_t>(static_cast<int32_t>(Between(0, 2 * amplitude)) -
                                    static_cast<int32_t>(amplitude));
    }
    Codes CodesUpTo(uint32_t amplitude, uint32_t count)
    {
        Codes codes;
        while (codes.size() < count)
            codes.push_back(Code(amplitude));
        return codes;
    }
    QByteArray Bytes(uint32_t count)
    {
        QByteArray bytes;
        for (uint32_t i = 0; i < count; ++i)
            bytes.append(static_cast<char>(Between(0, 255)));
        return bytes;
    }

private:
    std::mt19937 engine;
};

uint32_t SomeAmplitude(Random& random)
{
    return (1u << random.Between(0, 15)) - 1; // 0 to 32767
}

Area Good(Random& random)
{
    const uint32_t points = random.OneIn(50) ? random.Between(100, 3000) : random.Between(1, 90);
    const Codes codes = random.CodesUpTo(SomeAmplitude(random), points);
    const uint32_t blockSamples = random.OneIn(4) ? random.Between(1, points) : random.Between(1, 20);
    return {CompressSamples(codes, static_cast<uint16_t>(blockSamples)), points};
}

Area Truncated(Random& random)
{
    Area area = Good(random);
    const auto size = static_cast<uint32_t>(area.bytes.size());
    area.bytes.truncate(static_cast<int>(random.OneIn(2) ? random.Between(0, size) : size - 1));
    return area;
}

Area WithFlippedBits(Random& random)
{
    Area area = Good(random);
    for (uint32_t flips = random.Between(1, 4); flips > 0; --flips) {
        const auto at = static_cast<int>(random.Between(0, static_cast<uint32_t>(area.bytes.size()) - 1));
        area.bytes[at] = static_cast<char>(area.bytes[at] ^ (1 << random.Between(0, 7)));
    }
    return area;
}

void SetTotal(Area& area, uint32_t total)
{
    std::memcpy(area.bytes.data(), &total, sizeof total);
}

Area WithOtherTotal(Random& random)
{
    Area area = Good(random);
    const uint32_t total = random.OneIn(8) ? random.Between(0, 0xFFFFFFFE) : random.Between(0, 200);
    SetTotal(area, total);
    return area;
}

Area WithOtherPoints(Random& random)
{
    Area area = Good(random);
    area.points = random.OneIn(2) ? random.Between(0, 200) : area.points - 1 + 2 * random.Between(0, 1);
    if (random.OneIn(2)) {
        const uint32_t total = 2 * area.points;
        SetTotal(area, total);
    }
    return area;
}

// Small blocks of random widths; the total is about right.
Area RandomGroups(Random& random)
{
    const uint32_t points = random.Between(0, 60);
    const uint32_t blockSamples = random.Between(0, 9);
    const uint32_t total = random.OneIn(3) ? random.Between(0, 2 * points + 3) : 2 * points;
    CompressedArea area(total, static_cast<uint16_t>(blockSamples), random.CodesUpTo(32767, blockSamples));
    for (uint32_t groups = random.Between(0, 12); groups > 0; --groups) {
        const uint32_t low = random.OneIn(3) ? 0 : random.Between(0, 15);
        const uint32_t high = random.OneIn(3) ? 0 : random.Between(0, 15);
        const uint32_t bytes = ((low + 1) * blockSamples + 7) / 8 + ((high + 1) * blockSamples + 7) / 8;
        area.Group(static_cast<int>(low), random.Bytes(random.OneIn(3) ? random.Between(0, bytes) : bytes),
                   static_cast<int>(high));
    }
    return {area.Bytes(), points};
}

// Almost only copies, and blocks whose data is missing.
Area MostlyCopies(Random& random)
{
    const uint32_t points = random.Between(1, 40);
    const uint32_t blockSamples = random.Between(0, 6);
    const uint32_t total = random.OneIn(2) ? 2 * points : random.Between(0, 90);
    CompressedArea area(total, static_cast<uint16_t>(blockSamples), random.CodesUpTo(99, blockSamples));
    for (uint32_t groups = random.Between(0, 14); groups > 0; --groups)
        area.Raw(random.OneIn(4) ? random.Bytes(1) : QByteArray(1, '\0'));
    return {area.Bytes(), points};
}

Area RandomBytes(Random& random)
{
    QByteArray bytes = random.Bytes(random.Between(0, 120));
    if (bytes.size() > 5 && !random.OneIn(4)) {
        bytes[4] = static_cast<char>(random.Between(0, 40));
        bytes[5] = '\0';
    }
    return {bytes, random.Between(0, 300)};
}

struct Kind
{
    const char* name;
    Area (*make)(Random&);
    bool someAreGood, someAreBad;
};

void PrintTo(const Kind& row, std::ostream* out)
{
    *out << row.name;
}

class DecoderDifferential : public testing::TestWithParam<Kind>
{};

const Kind kinds[] = {{"Good", Good, true, false},
                      {"Truncated", Truncated, true, true},
                      {"FlippedBits", WithFlippedBits, true, true},
                      {"OtherTotal", WithOtherTotal, true, true},
                      {"OtherPoints", WithOtherPoints, true, true},
                      {"RandomGroups", RandomGroups, true, true},
                      {"MostlyCopies", MostlyCopies, true, true},
                      {"RandomBytes", RandomBytes, false, true}};

constexpr int areasOfAKind = 25000;

} // namespace

TEST_P(DecoderDifferential, GivesWhatTheSimpleDecoderGives)
{
    const std::vector<const zu::ItemDecoderTable*> tables = AllItemDecoders();
    Random random(20240131);
    int good = 0;
    for (int number = 0; number < areasOfAKind; ++number) {
        const Area area = GetParam().make(random);
        const SlowExpansion expected = ExpandSlowly(area.bytes, area.points);
        const auto decoded = static_cast<std::ptrdiff_t>(expected.decoded);
        for (size_t set = 0; set < tables.size(); ++set) {
            const Expansion actual = Expand(area.bytes, area.points, *tables[set]);
            ASSERT_EQ(actual.good, expected.good)
                << "set " << set << ", " << number << ' ' << area.bytes.toHex().toStdString();
            ASSERT_TRUE(std::equal(actual.samples.begin(), actual.samples.begin() + decoded,
                                   expected.samples.begin()))
                << "set " << set << ", " << number << ' ' << area.bytes.toHex().toStdString();
        }
        good += expected.good ? 1 : 0;
        const std::vector<unsigned char> bytes(area.bytes.begin(), area.bytes.end());
        const bool reachable = zu::CanExpandTo({bytes.data(), bytes.size()}, area.points);
        ASSERT_TRUE(reachable || !expected.good) << number << ' ' << area.bytes.toHex().toStdString();
    }
    EXPECT_EQ(good > 0, GetParam().someAreGood);
    EXPECT_EQ(good < areasOfAKind, GetParam().someAreBad);
}

INSTANTIATE_TEST_SUITE_P(Areas, DecoderDifferential, testing::ValuesIn(kinds));
