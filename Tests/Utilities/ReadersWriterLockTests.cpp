#include "Orrenby/Utilities/ReadersWriterLock.hpp"

#include <barrier>
#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

using namespace orrenby;

TEST(ReadersWriterLock, ReadsAndWrites)
{
    //! [Reading and writing]
    ReadersWriterLock lock;
    std::string title = "Draft";

    lock.write([&] { title += " 2"; });
    const auto copy = lock.read([&] { return title; });

    EXPECT_EQ(copy, "Draft 2");
    //! [Reading and writing]
}

TEST(ReadersWriterLock, LetsReadersRunSideBySide)
{
    ReadersWriterLock lock;
    std::barrier<> meeting(2); // both readers have to be inside to pass it
    int met = 0;

    auto other = std::thread([&] { lock.read([&] { meeting.arrive_and_wait(); }); });
    lock.read([&] {
        meeting.arrive_and_wait();
        met = 2;
    });
    other.join();

    EXPECT_EQ(met, 2);
}

TEST(ReadersWriterLock, LetsAWriterRunAlone)
{
    ReadersWriterLock lock;
    int first = 0;
    int second = 0;
    std::vector<int> differences;
    const auto write = [&] {
        for (int round = 0; round < 2'000; ++round)
            lock.write([&] {
                ++first;
                ++second;
            });
    };

    auto writers = std::vector<std::thread>();
    for (int writer = 0; writer < 2; ++writer)
        writers.emplace_back(write);
    for (int round = 0; round < 2'000; ++round)
        differences.push_back(lock.read([&] { return first - second; }));
    for (auto& writer : writers)
        writer.join();

    EXPECT_EQ(first, 4'000);
    EXPECT_THAT(differences, testing::Each(0));
}

TEST(ReadersWriterLock, IsGivenBackWhenABodyThrows)
{
    ReadersWriterLock lock;

    EXPECT_THROW(lock.read([] { throw std::runtime_error("body"); }), std::runtime_error);
    EXPECT_THROW(lock.write([] { throw std::runtime_error("body"); }), std::runtime_error);

    EXPECT_EQ(lock.write([] { return 1; }), 1);
    EXPECT_EQ(lock.read([] { return 2; }), 2);
}

TEST(ReadersWriterLock, PassesResultsThroughAsTheyAre)
{
    ReadersWriterLock lock;
    int guarded = 1;

    int& same = lock.read([&]() -> int& { return guarded; });
    const auto moved = lock.write([] { return std::make_unique<int>(2); });

    EXPECT_EQ(&same, &guarded);
    EXPECT_EQ(*moved, 2);
    EXPECT_TRUE(std::is_void_v<decltype(lock.read([] {}))>);
}
