#include "Orrenby/Platform/Text/NSAttributedString.hpp"

#include "Orrenby/Platform/Drawing/Color.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Text/NSMutableAttributedString.hpp"
#include <gmock/gmock.h>
#include <string>
#include <tuple>
#include <vector>

using namespace orrenby;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const TextAttributes underlined{{TextAttribute::underline, true}};
const TextAttributes grey{{TextAttribute::foregroundColor, Color::gray()}};

NSAttributedString joined(std::initializer_list<std::pair<std::string_view, TextAttributes>> pieces)
{
    NSMutableAttributedString text;
    for (const auto& [piece, attributes] : pieces)
        text.append(piece, attributes);
    return std::move(text).attributedString();
}

NSAttributedString::Run run(
    NSRange range, std::size_t byteOffset, std::size_t byteCount, TextAttributes attributes)
{
    return {range, byteOffset, byteCount, std::move(attributes)};
}

/// Stretches of 3 units and 7 bytes, of 2 and 2, of 2 and 4.
const auto mixed = joined({{"é€a", underlined}, {"bc", {}}, {"😀", grey}});

} // namespace

TEST(NSAttributedString, HasStretchesWithAttributes)
{
    //! [Looking at a text with attributes]
    NSMutableAttributedString text(NSAttributedString("Read the rules"));
    text.addAttribute(TextAttribute::link, "https://hut.example/rules"_url, {.location = 5, .length = 9});
    const auto notice = text.attributedString();

    std::vector<std::string> linked;
    for (const auto& run : notice.runs())
        if (run.attributes.contains(TextAttribute::link))
            linked.emplace_back(run.in(notice.string()));

    EXPECT_THAT(linked, ElementsAre("the rules"));
    EXPECT_EQ(notice.attributes(0), TextAttributes());
    //! [Looking at a text with attributes]
}

TEST(NSAttributedString, CountsInUnitsAndInBytes)
{
    EXPECT_EQ(mixed.string(), "é€abc😀");
    EXPECT_EQ(mixed.length(), 7U);
    EXPECT_THAT(mixed.runs(),
        ElementsAre(run({0, 3}, 0, 6, underlined), run({3, 2}, 6, 2, {}), run({5, 2}, 8, 4, grey)));
}

TEST(NSAttributedString, CanBeEmpty)
{
    for (const auto& text :
        {NSAttributedString(), NSAttributedString("", underlined), joined({{"", grey}})}) {
        EXPECT_TRUE(text.empty());
        EXPECT_EQ(text.length(), 0U);
        EXPECT_THAT(text.runs(), IsEmpty());
        EXPECT_EQ(text, NSAttributedString());
        EXPECT_EQ(text.run(0), nullptr);
        EXPECT_EQ(text.substring({0, 0}), "");
        EXPECT_EQ(describe(text), "");
    }
}

TEST(NSAttributedString, MergesNeighboursThatLookAlike)
{
    const auto text = joined({{"a", underlined}, {"b", underlined}, {"", grey}, {"c", underlined}});

    EXPECT_EQ(text, NSAttributedString("abc", underlined));
    EXPECT_EQ(text.runs().size(), 1U);
}

TEST(NSAttributedString, ReplacesWhatIsNoUTF8)
{
    EXPECT_EQ(NSAttributedString("a\xFFz").string(), "a\uFFFDz");
    EXPECT_EQ(NSAttributedString("\xF0\x9F").length(), 1U);
}

TEST(NSAttributedString, StandsForAnAttachment)
{
    const NSTextAttachment attachment{.image = Image({1, 2})};
    const NSAttributedString text(attachment);

    EXPECT_EQ(text.string(), "\uFFFC");
    EXPECT_EQ(text.length(), 1U);
    EXPECT_EQ(text.attributes(0), (TextAttributes{{TextAttribute::attachment, attachment}}));
}

TEST(NSAttributedString, FindsTheStretchOfEveryUnit)
{
    const auto& runs = mixed.runs();
    const auto* const wanted = runs.data();

    EXPECT_EQ(mixed.run(0), wanted);
    EXPECT_EQ(mixed.run(2), wanted);
    EXPECT_EQ(mixed.run(3), wanted + 1);
    EXPECT_EQ(mixed.run(5), wanted + 2);
    EXPECT_EQ(mixed.run(6), wanted + 2) << "the second half of a pair";
    EXPECT_EQ(mixed.run(7), nullptr);
    EXPECT_EQ(mixed.run(std::string::npos), nullptr);
    EXPECT_EQ(mixed.attributes(7), TextAttributes());
}

TEST(NSAttributedString, KnowsHowFarAnAttributeReaches)
{
    const auto both = underlined.merging(grey);
    const auto text = joined({{"ab", underlined}, {"cd", both}, {"ef", grey}});
    using Stretch = AttributeStretch<bool>;

    EXPECT_EQ(text.attribute(TextAttribute::underline, 0), (Stretch{true, {0, 4}}));
    EXPECT_EQ(text.attribute(TextAttribute::underline, 3), (Stretch{true, {0, 4}}));
    EXPECT_EQ(text.attribute(TextAttribute::underline, 4), (Stretch{std::nullopt, {4, 2}}));
    EXPECT_EQ(text.attribute(TextAttribute::underline, 6), std::nullopt);
    EXPECT_EQ(text.attribute(TextAttribute::strikethrough, 3), (Stretch{std::nullopt, {0, 6}}));
}

TEST(NSAttributedString, EnumeratesAnAttribute)
{
    const auto text = joined({{"ab", {}}, {"cd", underlined}, {"ef", underlined.merging(grey)}, {"g", grey}});
    std::vector<std::pair<std::optional<bool>, NSRange>> found;

    text.enumerate(TextAttribute::underline,
        [&](const std::optional<bool>& value, NSRange range) { found.emplace_back(value, range); });

    EXPECT_THAT(found,
        ElementsAre(std::pair(std::nullopt, NSRange{0, 2}), std::pair(true, NSRange{2, 4}),
            std::pair(std::nullopt, NSRange{6, 1})));
}

TEST(NSAttributedString, EnumeratesNothingInTheEmptyText)
{
    int calls = 0;

    NSAttributedString().enumerate(TextAttribute::underline, [&](const auto&, NSRange) { ++calls; });

    EXPECT_EQ(calls, 0);
}

TEST(NSAttributedString, GivesItsParts)
{
    EXPECT_EQ(mixed.substring({1, 3}), "€ab");
    EXPECT_EQ(mixed.attributedSubstring({1, 3}), joined({{"€a", underlined}, {"b", {}}}));
    EXPECT_EQ(mixed.attributedSubstring({5, 2}), NSAttributedString("😀", grey));
    EXPECT_EQ(mixed.attributedSubstring({3, 0}), NSAttributedString());
    EXPECT_EQ(mixed.attributedSubstring(mixed.fullRange()), mixed);
    EXPECT_EQ(mixed.attributedSubstring({7, 0}), NSAttributedString());
}

TEST(NSAttributedString, GivesNoPartThatCutsAPairOrLeavesTheText)
{
    const NSRange ranges[] = {
        {6, 1}, {5, 1}, {7, 1}, {0, 8}, {8, 0}, {1, std::string::npos}, {std::string::npos, 2}};

    for (const auto& range : ranges) {
        EXPECT_EQ(mixed.substring(range), std::nullopt) << describe(range);
        EXPECT_EQ(mixed.attributedSubstring(range), std::nullopt) << describe(range);
    }
}

TEST(NSAttributedString, ComparesTextAndAttributes)
{
    EXPECT_EQ(NSAttributedString("a", grey), NSAttributedString("a", grey));
    EXPECT_NE(NSAttributedString("a", grey), NSAttributedString("a", underlined));
    EXPECT_NE(NSAttributedString("a", grey), NSAttributedString("b", grey));
    EXPECT_EQ(std::hash<NSAttributedString>{}(NSAttributedString("a", grey)),
        std::hash<NSAttributedString>{}(NSAttributedString("a", grey)));
}

TEST(NSAttributedString, IsAnyValue)
{
    EXPECT_EQ(Any(mixed), Any(NSAttributedString(mixed)));
    EXPECT_EQ(Any(mixed).cast<NSAttributedString>(), mixed);
}

TEST(NSAttributedString, Prints)
{
    const auto text = joined({{"a\n", {}}, {"b", underlined}});

    EXPECT_EQ(describe(text), R"("a\n" [:], "b" ["underline": true])");
    EXPECT_EQ(debugDescribe(text), R"(NSAttributedString("a\n" [:], "b" ["underline": true]))");
}
