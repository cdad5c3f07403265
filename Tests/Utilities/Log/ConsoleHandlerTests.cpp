#include "Orrenby/Utilities/Log/ConsoleHandler.hpp"

#include "LogFixture.hpp"
#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include "Pipe.hpp"
#include <cstdlib>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <thread>
#include <vector>

using namespace orrenby;
using testing::HasSubstr;
using testing::Not;

namespace {

class StoppedClock : public Clock {
public:
    Date now() const override { return Date(1763719200.125); }
    double monotonicSeconds() const override { return 0; }
};

World stoppedWorld()
{
    auto world = World();
    world.setClock(std::make_shared<StoppedClock>());
    return world;
}

const auto sample = Log::Event("W", "Feed", 120, "load", "[MAIN]", "request failed", {{"k", 1}});

} // namespace

using LogConsoleHandler = LogFixture;

TEST_F(LogConsoleHandler, ShowsTheLog)
{
    const auto world = World::Override(stoppedWorld());
    auto pipe = Pipe();
    const int terminal = pipe.descriptor();
    useCodes();

    //! [Showing the log]
    Log::onEvent(Log::ConsoleHandler({.descriptor = terminal, .level = Log::Level::info}));

    Log::debug("too fine");
    Log::_append([] { return false; }, Log::Level::warning, "request failed", Dictionary{},
        CallSite("Feed.cpp", 120, "load"));
    //! [Showing the log]

    EXPECT_EQ(pipe.read(), "10:00:00.125 W Feed:120 load [MAIN] request failed\n");
}

TEST_F(LogConsoleHandler, MakesNoEventBelowItsLevel)
{
    int evaluations = 0;
    Log::onEvent(Log::ConsoleHandler({.descriptor = -1, .level = Log::Level::error}));

    Log::warning([&] { return ++evaluations; });

    EXPECT_EQ(evaluations, 0);
}

TEST_F(LogConsoleHandler, WritesEachEntryInOnePiece)
{
    auto pipe = Pipe();
    Log::onEvent(Log::ConsoleHandler({.descriptor = pipe.descriptor()}));

    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([] {
            for (int entry = 0; entry < 20; ++entry)
                Log::info(std::string(100, 'x'));
        });
    for (auto& thread : threads)
        thread.join();

    auto text = pipe.read();
    std::size_t whole = 0;
    for (std::size_t end = 0; (end = text.find('\n')) != std::string::npos; text.erase(0, end + 1))
        whole += text.substr(0, end).ends_with(" " + std::string(100, 'x')) ? 1 : 0;
    EXPECT_EQ(whole, 80U);
}

TEST_F(LogConsoleHandler, IsNotColouredOutsideATerminal)
{
    auto pipe = Pipe();
    Log::onEvent(Log::ConsoleHandler({.descriptor = pipe.descriptor()}));

    Log::error("text");

    EXPECT_THAT(pipe.read(), Not(HasSubstr("\x1B")));
}

TEST_F(LogConsoleHandler, IsColouredOnRequest)
{
    auto pipe = Pipe();
    Log::onEvent(Log::ConsoleHandler(
        {.descriptor = pipe.descriptor(), .colour = Log::ConsoleOptions::Colour::always}));

    Log::error("text");

    EXPECT_THAT(pipe.read(), testing::StartsWith("\x1B[31m"));
}

TEST_F(LogConsoleHandler, IsColouredOnATerminalUnlessTheEnvironmentRefuses)
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0)
        GTEST_SKIP() << "no pseudo-terminal here";
    const int side = open(ptsname(terminal), O_RDWR | O_NOCTTY);
    ASSERT_GE(side, 0);
    const auto written = [&] {
        Log::onEvent(Log::ConsoleHandler({.descriptor = side}));
        Log::error("text");
        char buffer[1024];
        const auto count = read(terminal, buffer, sizeof buffer);
        return std::string(buffer, count > 0 ? static_cast<std::size_t>(count) : 0);
    };

    unsetenv("NO_COLOR");
    EXPECT_THAT(written(), HasSubstr("\x1B[31m"));
    setenv("NO_COLOR", "1", 1);
    EXPECT_THAT(written(), Not(HasSubstr("\x1B")));
    setenv("NO_COLOR", "", 1);
    EXPECT_THAT(written(), HasSubstr("\x1B[31m"));

    unsetenv("NO_COLOR");
    close(side);
    close(terminal);
}

TEST(LogConsoleLine, HoldsTheTimeAndTheEvent)
{
    EXPECT_EQ(Log::ConsoleHandler::line(Log::Level::warning, sample, Date(1763719200.125), false),
        "10:00:00.125 W Feed:120 load [MAIN] request failed [\"k\": 1]\n");
}

TEST(LogConsoleLine, IsColouredByLevelUpToItsEnd)
{
    EXPECT_EQ(Log::ConsoleHandler::line(Log::Level::critical, sample, Date(0), true),
        "\x1B[1;31m00:00:00.000 W Feed:120 load [MAIN] request failed [\"k\": 1]\x1B[0m\n");
}

TEST(LogConsoleLine, StaysOneLineWhateverItHolds)
{
    const auto event = Log::Event("W", "Fe\ned", 1, "lo\rad", "[MAIN]", "a\nb\x1B[2Jc\xFF", {{"k\n", "v\n"}});

    EXPECT_EQ(Log::ConsoleHandler::line(Log::Level::warning, event, Date(0), false),
        "00:00:00.000 W Fe\\ned:1 lo\\rad [MAIN] a\\nb\\u{001B}[2Jc\uFFFD [\"k\\n\": \"v\\n\"]\n");
}

TEST(LogConsoleLine, HasAColourOfItsOwnForEachLevel)
{
    const auto startOf = [](Log::Level level) {
        const auto line = Log::ConsoleHandler::line(level, sample, Date(1763719200.125), true);
        return line.substr(0, line.find('m') + 1);
    };

    EXPECT_EQ(startOf(Log::Level::debug), "\x1B[2m");
    EXPECT_EQ(startOf(Log::Level::info), "\x1B[0m");
    EXPECT_EQ(startOf(Log::Level::event), "\x1B[36m");
    EXPECT_EQ(startOf(Log::Level::warning), "\x1B[33m");
    EXPECT_EQ(startOf(Log::Level::error), "\x1B[31m");
    EXPECT_EQ(startOf(Log::Level::critical), "\x1B[1;31m");
}
