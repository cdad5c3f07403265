#include "Orrenby/Platform/World/OperatingSystemVersion.hpp"

#include <gmock/gmock.h>

using namespace orrenby;

TEST(OperatingSystemVersion, OrdersFromLeftToRight)
{
    const auto base = OperatingSystemVersion{13, 0, 0};

    EXPECT_LT((OperatingSystemVersion{12, 9, 9}), base);
    EXPECT_LT(base, (OperatingSystemVersion{13, 0, 1}));
    EXPECT_LT((OperatingSystemVersion{13, 0, 9}), (OperatingSystemVersion{13, 1, 0}));
    EXPECT_EQ(base, (OperatingSystemVersion{.major = 13}));
}

TEST(OperatingSystemVersion, PrintsItsNumbers)
{
    EXPECT_EQ((OperatingSystemVersion{13, 4, 10}).description(), "13.4.10");
    EXPECT_EQ(OperatingSystemVersion().description(), "0.0.0");
}
