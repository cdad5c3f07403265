#include "Orrenby/Foundation/Brackets.hpp"

#include "Orrenby/Platform/Text/UTF16.hpp"
#include <array>
#include <gmock/gmock.h>
#include <random>
#include <string>

using namespace orrenby;
using testing::ElementsAre;

namespace {

/// What the expression matches in the whole text, and the groups of each match.
std::vector<std::vector<std::string>> engineMatches(
    std::string_view text, const detail::BracketPattern& pattern)
{
    const auto units = UTF16View(text);
    std::vector<std::vector<std::string>> result;
    for (const auto& match : pattern.expression->allMatches(text)) {
        auto& groups = result.emplace_back();
        for (const auto& range : match.ranges())
            groups.emplace_back(units.slice(range.value()).value());
    }
    return result;
}

std::vector<std::vector<std::string>> ownMatches(std::string_view text, const detail::BracketPattern& pattern)
{
    std::vector<std::vector<std::string>> result;
    const auto matches = detail::bracketMatches(text, pattern).value();
    for (const auto& match : matches) {
        auto& groups = result.emplace_back();
        groups.emplace_back(match.whole);
        groups.insert(groups.end(), match.groups.begin(), match.groups.end());
    }
    return result;
}

} // namespace

TEST(Brackets, AreFoundByTheseExpressions)
{
    EXPECT_EQ(detail::emphasisPattern().expression->pattern(), "\\[(.*?)\\]");
    EXPECT_EQ(detail::linkPattern().expression->pattern(), "\\[(.*?)\\]\\((.*?)\\)");
    EXPECT_EQ(detail::linkPattern().expression->options(), RegularExpressionOptions{.timeLimit = 0});
}

TEST(Brackets, AreNotFoundByAnExpressionThatTheEngineDoesNotTake)
{
    const detail::BracketPattern none{std::nullopt, {"[", "]"}};

    EXPECT_EQ(detail::bracketMatches("[a]", none).has_value(), false);
    EXPECT_EQ(detail::bracketMatches("", none).has_value(), false);
}

TEST(Brackets, HaveGroups)
{
    EXPECT_THAT(ownMatches("a[b](c)[](d)", detail::linkPattern()),
        ElementsAre(ElementsAre("[b](c)", "b", "c"), ElementsAre("[](d)", "", "d")));
}

TEST(Brackets, AreThoseThatTheEngineFindsInTheWholeText)
{
    constexpr std::array<std::string_view, 18> pieces{"[", "]", "(", ")", "](", "[", "a", "é", "😀", "\n",
        "\r", "\v", "\f", "\u0085", "\u2028", "\u2029", "\u2027", "\u0084"};
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        // Line ends come seldom, or hardly anything would match.
        const std::size_t kinds = random() % 2 == 0 ? 9 : pieces.size();
        std::string text;
        for (auto count = random() % 40; count > 0; --count)
            text += pieces[random() % kinds];

        for (const auto* pattern : {&detail::emphasisPattern(), &detail::linkPattern()})
            ASSERT_EQ(ownMatches(text, *pattern), engineMatches(text, *pattern)) << text;
    }
}

TEST(Formatting, FillsPlaceholders)
{
    EXPECT_EQ(detail::formatted("%@%@|%@", {"a", "%@"}), "a%@|(null)");
    EXPECT_EQ(detail::formatted("%", {}), "%");
    EXPECT_EQ(detail::formatted("", {"a"}), "");
}

TEST(Formatting, HalvesPercentSignsOnly)
{
    EXPECT_EQ(detail::formatted("%%%@%"), "%%@%");
    EXPECT_EQ(detail::formatted(""), "");
}
