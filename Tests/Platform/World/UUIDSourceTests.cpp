#include "Orrenby/Platform/World/UUIDSource.hpp"

#include <gmock/gmock.h>
#include <set>
#include <thread>

using namespace orrenby;

TEST(SystemUUIDSource, MarksVersionAndVariant)
{
    for (int round = 0; round < 100; ++round) {
        const auto bytes = UUIDSource::system()->next().bytes();

        ASSERT_EQ(bytes[6] >> 4, 4);
        ASSERT_EQ(bytes[8] >> 6, 2);
    }
}

TEST(SystemUUIDSource, RepeatsNothingOnSeveralThreads)
{
    std::set<UUID> here;
    std::set<UUID> there;

    auto thread = std::thread([&] {
        for (int round = 0; round < 1'000; ++round)
            there.insert(UUIDSource::system()->next());
    });
    for (int round = 0; round < 1'000; ++round)
        here.insert(UUIDSource::system()->next());
    thread.join();
    here.merge(there);

    EXPECT_EQ(here.size(), 2'000u);
}
