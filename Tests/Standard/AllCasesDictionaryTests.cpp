#include "Orrenby/Standard/AllCasesDictionary.hpp"

#include <array>
#include <gmock/gmock.h>
#include <stdexcept>
#include <string>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::Pair;

namespace {

enum class Weather { sun, rain, snow };

} // namespace

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

TEST(AllCasesDictionary, PassesOnWhatIsThrown)
{
    const auto fail = [](Weather) -> std::pair<int, int> { throw std::runtime_error("no"); };

    EXPECT_THROW(allCasesDictionary<Weather>(fail), std::runtime_error);
}

TEST(AllCasesDictionaryDeathTest, TerminatesWhenTwoCasesHaveOneKey)
{
    EXPECT_DEATH(allCasesDictionary<Weather>([](Weather) { return std::pair(1, 1); }),
        "Fatal error: Two cases have the same key: file Standard/AllCasesDictionary, line 31");
}
