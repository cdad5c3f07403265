#include "Orrenby/Platform/Text/RegularExpression.hpp"

#include "Orrenby/Platform/Text/CharacterSet.hpp"
#include "Orrenby/Platform/Text/UTF16.hpp"
#include "Orrenby/Platform/Text/UTF8.hpp"
#include <gmock/gmock.h>
#include <string>
#include <thread>
#include <unordered_set>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;
using Match = RegularExpression::Match;
using Kind = RegularExpressionError::Kind;

namespace {

NSRange range(std::size_t location, std::size_t length) { return {.location = location, .length = length}; }

std::vector<NSRange> ranges(std::string_view pattern, std::string_view text)
{
    std::vector<NSRange> result;
    for (const auto& match : RegularExpression(pattern).allMatches(text))
        result.push_back(match.range());
    return result;
}

bool matches(std::string_view pattern, std::string_view text, RegularExpressionOptions options = {})
{
    return RegularExpression(pattern, options).matches(text);
}

std::optional<RegularExpressionError> patternError(std::string_view pattern)
{
    return RegularExpression::tryMake(pattern).error();
}

/// Takes time that doubles with each "a".
RegularExpression slow(double timeLimit) { return RegularExpression("(?:a+)+b", {.timeLimit = timeLimit}); }
const std::string slowText(40, 'a');

} // namespace

TEST(RegularExpression, FindsMatches)
{
    //! [Finding matches]
    const RegularExpression link("<(?<title>[^>|]*)\\|([^>]*)>");
    const std::string text = "see <Häuser|a.example> and <B|b.example>";
    const UTF16View view(text);

    const auto matches = link.allMatches(text);

    ASSERT_EQ(matches.size(), 2U);
    EXPECT_EQ(matches[0].range(), (NSRange{.location = 4, .length = 18}));
    EXPECT_EQ(view.slice(matches[0].range(*link.captureGroup("title")).value()), "Häuser");
    EXPECT_EQ(link.replacingMatches(text, "${title}"), "see Häuser and B");
    //! [Finding matches]
}

TEST(RegularExpression, MatchesAWholeTextOrNot)
{
    EXPECT_TRUE(matches("[0-9]+", "123"));
    EXPECT_FALSE(matches("[0-9]+", "123 "));
    EXPECT_FALSE(matches("[0-9]+", ""));
    EXPECT_TRUE(matches("", ""));
    EXPECT_TRUE(matches("a|ab", "ab")); // tries the other alternative when the first does not reach the end
}

TEST(RegularExpression, MatchesWholeTextOnlyToItsVeryEnd) { EXPECT_FALSE(matches("a$", "a\n")); }

TEST(RegularExpression, GivesTheFirstMatch)
{
    const RegularExpression number("[0-9]+");

    EXPECT_EQ(number.firstMatch("a 12 345")->range(), range(2, 2));
    EXPECT_EQ(number.firstMatch("none"), std::nullopt);
    EXPECT_EQ(number.firstMatch(""), std::nullopt);
}

TEST(RegularExpression, CountsInUTF16Units)
{
    EXPECT_THAT(ranges("b", "😀b€éb"), ElementsAre(range(2, 1), range(5, 1)));
    EXPECT_THAT(ranges(".", "😀"), ElementsAre(range(0, 2)));
}

TEST(RegularExpression, GivesEachGroup)
{
    const auto match = RegularExpression("(a)|(b)(c?)").firstMatch("xb");

    EXPECT_EQ(match->ranges(),
        (std::vector<std::optional<NSRange>>{range(1, 1), std::nullopt, range(1, 1), range(2, 0)}));
    EXPECT_EQ(match->range(1), std::nullopt);
    EXPECT_EQ(match->range(3), range(2, 0));
    EXPECT_EQ(match->range(4), std::nullopt);
}

TEST(RegularExpression, KnowsItsGroups)
{
    const RegularExpression expression("(?<year>[0-9]{4})-(?:x)(?<month>[0-9]{2})");

    EXPECT_EQ(expression.numberOfCaptureGroups(), 2U);
    EXPECT_EQ(expression.captureGroup("month"), 2U);
    EXPECT_EQ(expression.captureGroup("day"), std::nullopt);
    EXPECT_EQ(expression.captureGroup(""), std::nullopt);
    EXPECT_EQ(RegularExpression("a").numberOfCaptureGroups(), 0U);
}

TEST(RegularExpression, FindsEmptyMatches)
{
    EXPECT_THAT(ranges("x*", "ax"), ElementsAre(range(0, 0), range(1, 1), range(2, 0)));
    EXPECT_THAT(ranges("", "a"), ElementsAre(range(0, 0), range(1, 0)));
    EXPECT_THAT(ranges("", ""), ElementsAre(range(0, 0)));
}

TEST(RegularExpression, DoesNotMatchLineEndsWithADot)
{
    for (const auto* end : {"\n", "\v", "\f", "\r", "\u0085", "\u2028", "\u2029"}) {
        EXPECT_FALSE(matches("a.b", std::string("a") + end + "b"));
        EXPECT_TRUE(matches("a.b", std::string("a") + end + "b", {.dotMatchesLineSeparators = true}));
    }
}

TEST(RegularExpression, FollowsItsOptions)
{
    EXPECT_FALSE(matches("straße", "STRASSE"));
    EXPECT_TRUE(matches("straße", "STRASSE", {.isCaseInsensitive = true}));
    EXPECT_TRUE(matches("a b # letters", "ab", {.allowsComments = true}));
    EXPECT_EQ(
        RegularExpression("^b$", {.anchorsMatchLines = true}).firstMatch("a\nb\nc")->range(), range(2, 1));
    EXPECT_EQ(RegularExpression("^b$").firstMatch("a\nb\nc"), std::nullopt);
    EXPECT_EQ(RegularExpression("\\b").allMatches("can't").size(), 4U);
    EXPECT_EQ(RegularExpression("\\b", {.usesUnicodeWordBoundaries = true}).allMatches("can't").size(), 2U);
}

TEST(RegularExpression, KnowsUnicode)
{
    EXPECT_TRUE(matches("\\p{L}+", "Größeñ日本"));
    EXPECT_FALSE(matches("\\p{L}+", "a1"));
}

TEST(RegularExpression, AgreesWithTheSetsOfWhiteSpace)
{
    const RegularExpression blank("[\\p{Z}\\t\\x{A}-\\x{D}\\x{85}]");
    const auto& set = CharacterSet::whitespacesAndNewlines();
    for (char32_t scalar = 0; scalar < 0x10000; ++scalar) {
        if (scalar == 0xD800)
            scalar = 0xE000;
        std::string text;
        appendUTF8(text, scalar);
        ASSERT_EQ(blank.matches(text), set.contains(scalar)) << static_cast<unsigned>(scalar);
    }
}

TEST(RegularExpression, ReadsBrokenTextAsReplacements)
{
    EXPECT_TRUE(matches("a\uFFFDb",
        "a\xFF"
        "b"));
    EXPECT_EQ(RegularExpression("b").replacingMatches("\xFF"
                                                      "b",
                  "c"),
        "\uFFFDc");
}

TEST(RegularExpression, KeepsNULs)
{
    EXPECT_THAT(ranges("b", std::string_view("a\0b", 3)), ElementsAre(range(2, 1)));
    EXPECT_TRUE(matches(std::string_view("a\0b", 3), std::string_view("a\0b", 3)));
}

TEST(RegularExpression, ReplacesEveryMatch)
{
    const RegularExpression pair("(\\w)=(\\w)");

    EXPECT_EQ(pair.replacingMatches("a=1, b=2", "$2:$1"), "1:a, 2:b");
    EXPECT_EQ(pair.replacingMatches("none", "$1"), "none");
    EXPECT_EQ(pair.replacingMatches("", "$1"), "");
    EXPECT_EQ(pair.replacingMatches("a=1", "\\$1 €"), "$1 €");
}

TEST(RegularExpression, ReplacesWithATextAsItIs)
{
    const std::string text = "cost: $1 \\ ${x}";

    EXPECT_EQ(
        RegularExpression("(.+)").replacingMatches("a", RegularExpression::escapedTemplate(text)), text);
}

TEST(RegularExpression, MatchesATextAsItIs)
{
    for (const std::string text :
        {"", "a.b", "[x](y)", "\\", "\\E", "a\\Eb\\E", "\\Q", "a b # c", "^$|{1}", "é\n\t"}) {
        const auto pattern = RegularExpression::escapedPattern(text);
        EXPECT_TRUE(matches(pattern, text)) << text;
        EXPECT_TRUE(matches(pattern, text, {.allowsComments = true})) << text;
        EXPECT_FALSE(matches(pattern, text + "x")) << text;
    }
}

TEST(RegularExpression, SharesOnePatternBetweenThreads)
{
    const RegularExpression word("(\\p{L})+");
    std::vector<std::size_t> counts(4);
    std::vector<std::thread> threads;
    threads.reserve(counts.size());
    for (auto& count : counts)
        threads.emplace_back([&count, word] {
            for (int round = 0; round < 200; ++round)
                count = word.allMatches("one zwei trois чотири").size();
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_THAT(counts, ::testing::Each(4U));
}

TEST(RegularExpression, EqualsAnotherOfThePatternAndOptions)
{
    const RegularExpression first("a+");
    const auto copy = first;

    EXPECT_EQ(copy, RegularExpression("a+"));
    EXPECT_NE(first, RegularExpression("a"));
    EXPECT_NE(first, RegularExpression("a+", {.isCaseInsensitive = true}));
    EXPECT_EQ((std::unordered_set<RegularExpression>{first, copy, RegularExpression("b")}.size()), 2U);
}

TEST(RegularExpression, KeepsItsPatternAndOptions)
{
    const RegularExpression expression("é+", {.timeLimit = 0.5});

    EXPECT_EQ(expression.pattern(), "é+");
    EXPECT_EQ(expression.options(), (RegularExpressionOptions{.timeLimit = 0.5}));
}

TEST(RegularExpression, GivesUpAtTheTimeLimit)
{
    const auto expression = slow(0.05);

    EXPECT_EQ(expression.tryMatches(slowText).error()->kind(), Kind::TimeLimitExceeded);
    EXPECT_EQ(expression.tryFirstMatch(slowText).error()->kind(), Kind::TimeLimitExceeded);
    EXPECT_EQ(expression.tryAllMatches(slowText).error()->kind(), Kind::TimeLimitExceeded);
    EXPECT_EQ(expression.tryReplacingMatches(slowText, "").error()->kind(), Kind::TimeLimitExceeded);
    EXPECT_THROW(static_cast<void>(expression.matches(slowText)), RegularExpressionError);
    EXPECT_THROW(static_cast<void>(expression.firstMatch(slowText)), std::exception);
    EXPECT_THROW(static_cast<void>(expression.allMatches(slowText)), RegularExpressionError);
    EXPECT_THROW(static_cast<void>(expression.replacingMatches(slowText, "")), RegularExpressionError);
}

TEST(RegularExpression, WorksOnAfterATimeLimit)
{
    const auto expression = slow(0.01);

    EXPECT_TRUE(expression.tryMatches(slowText).isFailure());
    EXPECT_TRUE(expression.matches("aab"));
}

TEST(RegularExpression, TakesItsTimeWithoutALimit)
{
    const std::string text(16, 'a');

    EXPECT_FALSE(slow(0).matches(text));
    EXPECT_FALSE(slow(-1).matches(text));
    EXPECT_FALSE(slow(1e300).matches(text));
}

TEST(RegularExpression, GivesUpWhenGoingBackTakesTooMuchMemory)
{
    const std::string text(4'000'000, 'a');

    EXPECT_EQ(
        RegularExpression("(?:a|b)*c", {.timeLimit = 0}).tryMatches(text).error()->kind(), Kind::TooDeep);
}

TEST(RegularExpressionError, TellsWhatIsWrongWithAPatternAndWhere)
{
    EXPECT_EQ(
        patternError("a(b"), RegularExpressionError(Kind::InvalidPattern, 3, "U_REGEX_MISMATCHED_PAREN"));
    EXPECT_EQ(patternError("*a")->kind(), Kind::InvalidPattern);
    EXPECT_EQ(patternError("[a")->reason(), "U_REGEX_MISSING_CLOSE_BRACKET");
    EXPECT_EQ(patternError("(?<=a+)b")->reason(), "U_REGEX_LOOK_BEHIND_LIMIT");
    EXPECT_EQ(patternError("a"), std::nullopt);
}

TEST(RegularExpressionError, CountsThePlaceInUTF16UnitsOverLines)
{
    EXPECT_EQ(patternError("😀\r\n😀(b")->position(), 8U);
    EXPECT_EQ(patternError("\n\n(")->position(), 3U);
}

TEST(RegularExpressionError, IsThrownForAPatternThatIsNone)
{
    EXPECT_THROW(RegularExpression("("), RegularExpressionError);
    EXPECT_THROW(RegularExpression("("), std::exception);
}

TEST(RegularExpressionError, TellsOfATemplateWithoutItsGroup)
{
    const RegularExpression letter("(a)");

    EXPECT_EQ(letter.tryReplacingMatches("a", "$2").error()->kind(), Kind::InvalidTemplate);
    EXPECT_EQ(letter.tryReplacingMatches("a", "${name}").error()->kind(), Kind::InvalidTemplate);
    EXPECT_EQ(letter.tryReplacingMatches("b", "$2").value(), "b"); // read only where it is needed
}

TEST(RegularExpressionError, SaysWhatHappened)
{
    const auto said = [](Kind kind) {
        return RegularExpressionError(kind, 3, "U_ILLEGAL_ARGUMENT_ERROR").description();
    };

    EXPECT_EQ(said(Kind::InvalidPattern), "Invalid pattern at UTF-16 unit 3 (U_ILLEGAL_ARGUMENT_ERROR)");
    EXPECT_EQ(said(Kind::TimeLimitExceeded), "Matching took too long");
    EXPECT_EQ(said(Kind::TooDeep), "Matching needed too much memory");
    EXPECT_EQ(said(Kind::InvalidTemplate), "Invalid template (U_ILLEGAL_ARGUMENT_ERROR)");
    EXPECT_EQ(said(Kind::Failed), "Matching failed (U_ILLEGAL_ARGUMENT_ERROR)");
}

TEST(RegularExpressionError, IsAPlatformErrorObject)
{
    const auto object = patternError("a(b")->nsError();

    EXPECT_EQ(object.domain(), "RegularExpressionError");
    EXPECT_EQ(object.code(), 1);
    EXPECT_EQ(object.localizedDescription(), "Invalid pattern at UTF-16 unit 3 (U_REGEX_MISMATCHED_PAREN)");
}
