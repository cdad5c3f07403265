#include "Orrenby/Utilities/ServiceDecoder/TextExcerpt.hpp"

#include <gmock/gmock.h>

using orrenby::detail::textExcerpt;

namespace {

std::string repeated(std::string_view text, std::size_t count)
{
    std::string result;
    for (; count > 0; --count)
        result += text;
    return result;
}

} // namespace

TEST(TextExcerpt, ShowsAShortTextWhole)
{
    EXPECT_EQ(textExcerpt("", 0), "");
    EXPECT_EQ(textExcerpt("abc", 0), "abc");
    EXPECT_EQ(textExcerpt("abc", 1), "abc");
    EXPECT_EQ(textExcerpt("abc", 3), "abc");
    EXPECT_EQ(textExcerpt("abc", 100), "abc");
}

TEST(TextExcerpt, ShowsTwentyFourCharactersBeforeAndFortyFromThePlaceOn)
{
    EXPECT_EQ(textExcerpt(repeated("a", 24) + repeated("b", 40), 24), repeated("a", 24) + repeated("b", 40));
    EXPECT_EQ(textExcerpt(repeated("a", 25) + repeated("b", 41), 25),
        "…" + repeated("a", 24) + repeated("b", 40) + "…");
}

TEST(TextExcerpt, CountsCharactersNotBytes)
{
    EXPECT_EQ(textExcerpt(repeated("😀", 25) + repeated("€", 41), 100),
        "…" + repeated("😀", 24) + repeated("€", 40) + "…");
}

TEST(TextExcerpt, NeverCutsACharacterInALongText)
{
    for (std::size_t shift = 0; shift < 4; ++shift) {
        const auto before = repeated("x", shift) + repeated("😀", 1'000);
        const auto excerpt = textExcerpt(before + repeated("x", shift) + repeated("😀", 1'000), before.size());

        EXPECT_EQ(excerpt, "…" + repeated("😀", 24) + repeated("x", shift) + repeated("😀", 40 - shift) + "…");
    }
}

TEST(TextExcerpt, MakesOneBlankOfBlanksAndLineEnds)
{
    EXPECT_EQ(textExcerpt("{\r\n\t  \"a\":\n\n    1\n}\n", 16), "{ \"a\": 1 } ");
    EXPECT_EQ(textExcerpt(std::string("a\0\x1B\x7F"
                                      "b",
                              5),
                  0),
        "a b");
}

TEST(TextExcerpt, LooksFurtherWhereMuchIsBlank)
{
    const auto indented = repeated("\n            1,", 6);

    EXPECT_EQ(textExcerpt("[" + indented, 1 + indented.size()), "[ 1, 1, 1, 1, 1, 1,");
}

TEST(TextExcerpt, IsValidWhateverTheTextHolds)
{
    EXPECT_EQ(textExcerpt("a\xFF\xC3", 1), "a\uFFFD\uFFFD");
    EXPECT_EQ(textExcerpt("\xC0\xAF", 0), "\uFFFD\uFFFD");                // longer than needed
    EXPECT_EQ(textExcerpt("\xED\xA0\x80", 0), "\uFFFD\uFFFD\uFFFD");      // half of a pair
    EXPECT_EQ(textExcerpt("\xF4\x90\x80\x80", 0), repeated("\uFFFD", 4)); // beyond the last character
    EXPECT_EQ(textExcerpt("\xE2\x82", 0), "\uFFFD\uFFFD");
}

TEST(TextExcerpt, IsBoundedInATextThatIsNoText)
{
    const auto excerpt = textExcerpt(std::string(100'000, '\x80'), 50'000);

    EXPECT_EQ(excerpt, "…" + repeated("\uFFFD", 64) + "…");
}
