#include "Orrenby/Utilities/Log/Level.hpp"

#include <array>
#include <gmock/gmock.h>
#include <string>
#include <vector>

using namespace orrenby;
using testing::ElementsAre;

namespace {

constexpr std::array<Log::Level, 6> allLevels{Log::Level::debug, Log::Level::info, Log::Level::event,
    Log::Level::warning, Log::Level::error, Log::Level::critical};

template <class Text> std::vector<std::string> texts(Text text)
{
    std::vector<std::string> result;
    for (const auto level : allLevels)
        result.emplace_back((level.*text)());
    return result;
}

} // namespace

TEST(LogLevel, IsReadLikeAnEnumeration)
{
    //! [Reading a level]
    const Log::Level level = Log::Level::warning;

    EXPECT_EQ(level.description(), "Warning");
    EXPECT_EQ(level.code(), "W");
    EXPECT_TRUE(level > Log::Level::info);
    //! [Reading a level]
}

TEST(LogLevel, HasRawValuesInOrder)
{
    std::vector<int> values;
    for (const auto level : allLevels)
        values.push_back(level.rawValue());

    EXPECT_THAT(values, ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST(LogLevel, IsMadeFromARawValue)
{
    for (const auto level : allLevels)
        EXPECT_EQ(Log::Level::make(level.rawValue()), level);
}

TEST(LogLevel, IsNotMadeFromAValueOutsideTheRange)
{
    EXPECT_EQ(Log::Level::make(-1), std::nullopt);
    EXPECT_EQ(Log::Level::make(6), std::nullopt);
}

TEST(LogLevel, ComparesByRawValue)
{
    const Log::Level warning = Log::Level::warning;

    EXPECT_TRUE(warning < Log::Level::error);
    EXPECT_TRUE(warning <= Log::Level::warning);
    EXPECT_TRUE(warning > Log::Level::event);
    EXPECT_TRUE(warning >= Log::Level::warning);
    EXPECT_TRUE(warning == Log::Level(Log::Level::warning));
    EXPECT_TRUE(warning != Log::Level(Log::Level::error));
    EXPECT_FALSE(warning < Log::Level::warning);
}

TEST(LogLevel, CanBeSwitchedOver)
{
    const auto isGrave = [](Log::Level level) {
        switch (level) {
        case Log::Level::error:
        case Log::Level::critical:
            return true;
        default:
            return false;
        }
    };

    EXPECT_TRUE(isGrave(Log::Level::critical));
    EXPECT_FALSE(isGrave(Log::Level::warning));
}

TEST(LogLevel, HasDescriptions)
{
    EXPECT_THAT(texts(&Log::Level::description),
        ElementsAre("Debug", "Info", "Event", "Warning", "Error", "Critical"));
}

TEST(LogLevel, HasCodesOfOneLetterWithUForEvents)
{
    EXPECT_THAT(texts(&Log::Level::code), ElementsAre("D", "I", "U", "W", "E", "C"));
}

TEST(LogLevel, HasEmojiOfExactlyTheseCodePoints)
{
    EXPECT_THAT(texts(&Log::Level::emoji),
        ElementsAre("\xF0\x9F\x94\x98", "\xF0\x9F\x94\xB7", "\xE2\x9D\x87\xEF\xB8\x8F",
            "\xE2\x9A\xA0\xEF\xB8\x8F", "\xE2\x9B\x94\xEF\xB8\x8F", "\xF0\x9F\x91\xBF"));
}
