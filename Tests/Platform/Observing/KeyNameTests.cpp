#include "Orrenby/Platform/Observing/KeyName.hpp"

#include <bit>
#include <gmock/gmock.h>

using namespace orrenby;

TEST(KeyName, IsTheTextWithoutItsEnd)
{
    constexpr KeyName name("age");

    EXPECT_EQ(name.view(), "age");
}

TEST(KeyName, HasOneBitAmongTheObservedKeys)
{
    for (const auto* key : {"a", "age", "isFinished", "a rather long name of a key"})
        EXPECT_EQ(std::popcount(detail::keyBit(key)), 1) << key;
}

TEST(KeyName, SpreadsKeysOverTheBits)
{
    std::uint64_t bits = 0;
    for (const auto* key :
        {"isReady", "isExecuting", "isFinished", "isCancelled", "dependencies", "priority"})
        bits |= detail::keyBit(key);

    EXPECT_GE(std::popcount(bits), 5);
}
