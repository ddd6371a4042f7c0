#include "forms/ahead.h"
#include "madestream.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

MadeStream& Filled(MadeStream& stream, int samples)
{
    for (int i = 0; i < samples; ++i)
        stream.Add({double(i)}, {}, i);
    return stream;
}

// Fails after its records.
class Failing : public forms::Stream
{
public:
    explicit Failing(forms::Stream& source_) : source(source_) {}
    const comtrade::Configuration& Config() const override { return source.Config(); }
    bool Next(comtrade::Block& block) override
    {
        if (!source.Next(block))
            throw std::runtime_error("bad record");
        return true;
    }

private:
    forms::Stream& source;
};

TEST(Ahead, DeliversTheSameBlocksInTheirOrder)
{
    MadeStream source(MadeConfiguration(1, 0, 100));
    forms::Ahead ahead(Filled(source, 100));
    const comtrade::Block all = AllOf(ahead);
    ASSERT_EQ(all.count, 100U);
    for (size_t i = 0; i < 100; ++i)
        EXPECT_EQ(all.analog[i], static_cast<double>(i));
    comtrade::Block block;
    EXPECT_FALSE(ahead.Next(block));
}

TEST(Ahead, FailsAfterTheRecordsThatPrecedeTheBadOne)
{
    MadeStream source(MadeConfiguration(1, 0, 7));
    Failing failing(Filled(source, 7));
    forms::Ahead ahead(failing);
    comtrade::Block block;
    size_t count = 0;
    EXPECT_THROW(
        {
            while (ahead.Next(block))
                count += block.count;
        },
        std::runtime_error);
    EXPECT_EQ(count, 7U);
}

TEST(Ahead, EndsBeforeItsSourceDoes)
{
    MadeStream source(MadeConfiguration(1, 0, 1000));
    forms::Ahead ahead(Filled(source, 1000));
    comtrade::Block block;
    EXPECT_TRUE(ahead.Next(block));
    ahead.Stop();
}

} // namespace
