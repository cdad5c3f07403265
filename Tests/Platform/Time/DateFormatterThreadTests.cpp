#include "Orrenby/Platform/Time/DateFormatter.hpp"

#include <atomic>
#include <gmock/gmock.h>
#include <thread>
#include <vector>

using namespace orrenby;

namespace {

constexpr int threadCount = 4;
constexpr int turns = 500;

/// What each thread writes and reads for a number of its own.
Date dateOf(int thread, int turn) { return Date(1e9 + thread * 1e7 + turn * 86'461); }

int wrongTurns(const DateFormatter& formatter, int thread)
{
    int wrong = 0;
    for (int turn = 0; turn < turns; ++turn) {
        const auto date = dateOf(thread, turn);
        const auto text = formatter.string(date);
        wrong += formatter.date(text) != date;
    }
    return wrong;
}

int wrongTurnsOfAllThreads(const DateFormatter& formatter)
{
    std::atomic<int> wrong = 0;
    std::atomic<int> arrived = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread)
        threads.emplace_back([&, thread] {
            ++arrived;
            while (arrived < threadCount)
                std::this_thread::yield();
            wrong += wrongTurns(formatter, thread);
        });
    for (auto& thread : threads)
        thread.join();
    return wrong;
}

} // namespace

TEST(DateFormatterThread, ServesSeveralThreadsFromItsFirstUseOn)
{
    DateFormatter formatter;
    formatter.setLocale(Locale("de_DE"));
    formatter.setTimeZone(TimeZone::fromName("Asia/Tokyo").value());
    formatter.setDateFormat("EEEE, d. MMMM yyyy, HH:mm:ss");

    EXPECT_EQ(wrongTurnsOfAllThreads(formatter), 0);
}

TEST(DateFormatterThread, ServesSeveralThreadsWithZonesInItsTexts)
{
    DateFormatter formatter;
    formatter.setLocale(Locale("en_US"));
    formatter.setTimeZone(TimeZone::fromName("Europe/Berlin").value());
    formatter.setDateFormat("yyyy-MM-dd HH:mm:ss zzzz");

    EXPECT_EQ(wrongTurnsOfAllThreads(formatter), 0);
}

TEST(DateFormatterThread, ServesSeveralThreadsWithServerTimestamps)
{
    DateFormatter formatter;
    formatter.setLocale(Locale("en_US_POSIX"));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateFormat("yyyy-MM-dd'T'HH:mm:ss.SSS'Z'");

    EXPECT_EQ(wrongTurnsOfAllThreads(formatter), 0);
}

TEST(DateFormatterThread, IsSafeForSeveralThreadsThatAskForFormats)
{
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread)
        threads.emplace_back([&] {
            for (int turn = 0; turn < 20; ++turn)
                wrong += DateFormatter::dateFormat("MMMMd", Locale("de_DE")) != "d. MMMM";
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(wrong, 0);
}
