#include "Orrenby/Standard/AllCasesDictionary.hpp"

#include <array>
#include <gmock/gmock.h>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::Pair;

namespace {

enum class Weather { sun, rain, snow };

/// Can be hashed and has no order.
struct Symbol {
    char letter = 0;
    friend bool operator==(const Symbol&, const Symbol&) = default;
};

} // namespace

template <> struct std::hash<Symbol> {
    std::size_t operator()(const Symbol& symbol) const { return static_cast<std::size_t>(symbol.letter); }
};

template <>
inline constexpr std::array<Weather, 3> orrenby::allCases<Weather>{
    Weather::sun, Weather::rain, Weather::snow};

TEST(AllCasesDictionary, MapsEveryCase)
{
    //! [A dictionary of all cases]
    const auto letters = allCasesDictionary<Weather>(
        [](Weather weather) { return std::pair("srw"[static_cast<int>(weather)], weather); });

    EXPECT_THAT(
        letters, ElementsAre(Pair('r', Weather::rain), Pair('s', Weather::sun), Pair('w', Weather::snow)));
    //! [A dictionary of all cases]
}

TEST(AllCasesDictionary, CallsInTheOrderOfTheCases)
{
    std::vector<Weather> called;

    allCasesDictionary<Weather>([&](Weather weather) {
        called.push_back(weather);
        return std::pair(-static_cast<int>(weather), 0);
    });

    EXPECT_THAT(called, ElementsAre(Weather::sun, Weather::rain, Weather::snow));
}

TEST(AllCasesDictionary, HashesKeysWithoutAnOrder)
{
    const auto symbols = allCasesDictionary<Weather>(
        [](Weather weather) { return std::pair(Symbol{"srw"[static_cast<int>(weather)]}, weather); });

    static_assert(std::is_same_v<decltype(symbols), const std::unordered_map<Symbol, Weather>>);
    EXPECT_EQ(symbols.size(), 3U);
    EXPECT_EQ(symbols.at(Symbol{'r'}), Weather::rain);
}

TEST(AllCasesDictionary, PassesOnWhatIsThrown)
{
    const auto fail = [](Weather) -> std::pair<int, int> { throw std::runtime_error("no"); };

    EXPECT_THROW(allCasesDictionary<Weather>(fail), std::runtime_error);
}

TEST(AllCasesDictionaryDeathTest, TerminatesWhenTwoCasesHaveOneHashedKey)
{
    EXPECT_DEATH(allCasesDictionary<Weather>([](Weather) { return std::pair(Symbol{'x'}, 1); }),
        "Fatal error: Two cases have the same key");
}

TEST(AllCasesDictionaryDeathTest, TerminatesWhenTwoCasesHaveOneKey)
{
    EXPECT_DEATH(allCasesDictionary<Weather>([](Weather) { return std::pair(1, 1); }),
        "Fatal error: Two cases have the same key: file Standard/AllCasesDictionary, line 31");
}
