#include "Orrenby/Platform/Text/NSMutableAttributedString.hpp"

#include "Orrenby/Platform/Drawing/Color.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Text/UTF16.hpp"
#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

using namespace orrenby;

namespace {

const TextAttributes underlined{{TextAttribute::underline, true}};
const TextAttributes grey{{TextAttribute::foregroundColor, Color::gray()}};

NSMutableAttributedString mutableText(std::string_view text, const TextAttributes& attributes = {})
{
    return NSMutableAttributedString(NSAttributedString(text, attributes));
}

/// A text as a list of UTF-16 units, each with its attributes: nothing to get wrong.
using Units = std::vector<std::pair<char16_t, TextAttributes>>;

Units unitsOf(const NSAttributedString& text)
{
    Units units;
    std::size_t location = 0;
    for (const char16_t unit : utf16FromUTF8(text.string()))
        units.emplace_back(unit, text.attributes(location++));
    return units;
}

bool isBoundary(const Units& units, std::size_t location)
{
    return location == units.size()
        || (location < units.size() && (units[location].first & 0xFC00) != 0xDC00);
}

void requireSound(const NSAttributedString& text)
{
    std::size_t units = 0;
    std::size_t bytes = 0;
    const TextAttributes* last = nullptr;
    for (const auto& run : text.runs()) {
        ASSERT_EQ(run.range.location, units);
        ASSERT_EQ(run.byteOffset, bytes);
        ASSERT_GT(run.byteCount, 0U);
        ASSERT_EQ(run.range.length, utf16Length(run.in(text.string())));
        ASSERT_TRUE(last == nullptr || *last != run.attributes);
        last = &run.attributes;
        units += run.range.length;
        bytes += run.byteCount;
    }
    ASSERT_EQ(units, text.length());
    ASSERT_EQ(bytes, text.string().size());
}

} // namespace

TEST(NSMutableAttributedString, GrowsPieceByPiece)
{
    //! [Putting a text together]
    NSMutableAttributedString text;
    text.append("Nests: ");
    text.append("three", {{TextAttribute::underline, true}});
    text.insert(NSAttributedString("Empty n"), 0);
    text.erase({.location = 7, .length = 1});

    EXPECT_EQ(text.string(), "Empty nests: three");
    EXPECT_EQ(text.runs().size(), 2U);
    EXPECT_EQ(text.runs()[1].range, (NSRange{.location = 13, .length = 5}));
    //! [Putting a text together]
}

TEST(NSMutableAttributedString, LeavesTheTextItWasMadeFromAlone)
{
    const NSAttributedString original("abc", grey);
    NSMutableAttributedString text(original);

    text.setAttributes(underlined, text.fullRange());

    EXPECT_EQ(original, NSAttributedString("abc", grey));
    EXPECT_EQ(text.attributedString(), NSAttributedString("abc", underlined));
}

TEST(NSMutableAttributedString, GivesATextThatStaysAsItIs)
{
    auto text = mutableText("abc");
    const auto given = text.attributedString();

    text.append("d");

    EXPECT_EQ(given, NSAttributedString("abc"));
}

TEST(NSMutableAttributedString, IsEmptyOnceItsContentWasTakenAway)
{
    auto text = mutableText("abc", grey);

    EXPECT_EQ(std::move(text).attributedString(), NSAttributedString("abc", grey));
    EXPECT_EQ(text, NSMutableAttributedString()); // NOLINT: it says what it is then
    EXPECT_EQ(text.length(), 0U);
}

TEST(NSMutableAttributedString, AppendsItself)
{
    auto text = mutableText("ab", grey);

    text.append(text.attributedString());
    text.append(text.string(), underlined);
    text.append("c", text.runs()[0].attributes);

    EXPECT_EQ(text.string(), "ababababc");
    EXPECT_EQ(text.runs().size(), 3U);
}

TEST(NSMutableAttributedString, AddsAttributesToThoseThereAre)
{
    auto text = mutableText("abcd", grey);

    EXPECT_TRUE(text.addAttribute(TextAttribute::underline, true, {1, 2}));
    EXPECT_TRUE(text.addAttribute(TextAttribute::foregroundColor, Color::black(), {3, 1}));

    EXPECT_EQ(describe(text),
        R"("a" ["foregroundColor": Color(#808080)], "bc" ["foregroundColor": Color(#808080), "underline": true], )"
        R"("d" ["foregroundColor": Color(#000000)])");
}

TEST(NSMutableAttributedString, RemovesAnAttributeWhereItIs)
{
    auto text = mutableText("ab", underlined);
    text.append("cd", grey);

    EXPECT_TRUE(text.removeAttribute(TextAttribute::underline, text.fullRange()));

    EXPECT_EQ(describe(text), R"("ab" [:], "cd" ["foregroundColor": Color(#808080)])");
}

TEST(NSMutableAttributedString, DoesNothingInAnEmptyRange)
{
    auto text = mutableText("ab", grey);

    EXPECT_TRUE(text.setAttributes(underlined, {1, 0}));
    EXPECT_TRUE(text.erase({2, 0}));

    EXPECT_EQ(text, mutableText("ab", grey));
}

TEST(NSMutableAttributedString, RefusesRangesThatCutAPairOrLeaveTheText)
{
    auto text = mutableText("a😀", grey);

    for (const NSRange& range :
        {NSRange{2, 1}, NSRange{1, 1}, NSRange{0, 4}, NSRange{4, 0}, NSRange{1, std::string::npos}}) {
        EXPECT_FALSE(text.erase(range)) << describe(range);
        EXPECT_FALSE(text.setAttributes(underlined, range)) << describe(range);
        EXPECT_FALSE(text.addAttributes(underlined, range)) << describe(range);
        EXPECT_FALSE(text.removeAttribute(TextAttribute::foregroundColor, range)) << describe(range);
    }
    EXPECT_FALSE(text.insert(NSAttributedString("b"), 2));
    EXPECT_EQ(text, mutableText("a😀", grey));
}

TEST(NSMutableAttributedString, ReplacesWhatIsNoUTF8)
{
    NSMutableAttributedString text;

    text.append("\xE2\x82");
    text.append("\xAC");

    EXPECT_EQ(text.string(), "\uFFFD\uFFFD") << "halves do not become whole";
    EXPECT_EQ(text.runs().size(), 1U);
}

TEST(NSMutableAttributedString, IsCleared)
{
    auto text = mutableText("ab", grey);

    text.clear();

    EXPECT_TRUE(text.empty());
    EXPECT_EQ(text, NSMutableAttributedString());
}

TEST(NSMutableAttributedString, ChangesLikeAListOfUnits)
{
    const std::array<std::string_view, 6> pieces{"", "a", "é", "€x", "😀", "b😀c"};
    const std::array looks{TextAttributes(), underlined, grey};
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto draw = [&](std::size_t bound) { return random() % bound; };
        NSMutableAttributedString text;
        Units units;
        for (int step = 0; step < 25; ++step) {
            const auto first = draw(units.size() + 1);
            const NSRange range{first, draw(units.size() - first + 1)};
            const NSAttributedString piece(pieces[draw(pieces.size())], looks[draw(looks.size())]);
            const auto& look = looks[draw(looks.size())];
            const bool isValid = isBoundary(units, first) && isBoundary(units, range.upperBound());
            const auto at = [&](std::size_t offset) {
                return std::next(units.begin(), static_cast<std::ptrdiff_t>(offset));
            };
            if (draw(2) == 0) {
                ASSERT_EQ(text.setAttributes(look, range), isValid);
                for (std::size_t unit = first; isValid && unit < range.upperBound(); ++unit)
                    units[unit].second = look;
            } else {
                ASSERT_EQ(text.replace(range, piece), isValid);
                const auto added = unitsOf(piece);
                if (isValid) {
                    units.erase(at(first), at(range.upperBound()));
                    units.insert(at(first), added.begin(), added.end());
                }
            }
            requireSound(text.attributedString());
            ASSERT_EQ(unitsOf(text.attributedString()), units);
        }
    }
}

TEST(NSMutableAttributedString, PrintsItsTextAndItsAttributes)
{
    const auto text = mutableText("ab", underlined);

    EXPECT_EQ(describe(text), R"("ab" ["underline": true])");
    EXPECT_EQ(debugDescribe(text), R"(NSMutableAttributedString("ab" ["underline": true]))");
}
