#include "Orrenby/Utilities/Log/Queue.hpp"

#include <gmock/gmock.h>
#include <thread>
#include <unordered_set>

using namespace orrenby;

TEST(LogQueue, HasTexts)
{
    const Log::Queue main = Log::Queue::main;
    const Log::Queue background = Log::Queue::background;

    EXPECT_EQ(main.rawValue(), 0);
    EXPECT_EQ(main.description(), "Main");
    EXPECT_EQ(main.code(), "[MAIN]");
    EXPECT_EQ(main.emoji(), "\xF0\x9F\x9A\x80");
    EXPECT_EQ(background.rawValue(), 1);
    EXPECT_EQ(background.description(), "Background");
    EXPECT_EQ(background.code(), "[BG]");
    EXPECT_EQ(background.emoji(), "\xF0\x9F\x9A\xA6");
}

TEST(LogQueue, IsThatOfTheCallingThread)
{
    auto other = Log::Queue(Log::Queue::main);

    std::thread([&] { other = Log::Queue::current(); }).join();

    EXPECT_EQ(Log::Queue::current(), Log::Queue::main);
    EXPECT_EQ(other, Log::Queue::background);
}

TEST(LogQueue, HashesByItsCase)
{
    const auto set = std::unordered_set<Log::Queue>{
        Log::Queue::main, Log::Queue::background, Log::Queue::main};

    EXPECT_EQ(set.size(), 2U);
    EXPECT_TRUE(set.contains(Log::Queue::background));
}
