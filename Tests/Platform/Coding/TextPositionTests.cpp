#include "Orrenby/Platform/Coding/TextPosition.hpp"

#include <gmock/gmock.h>

using namespace orrenby;

TEST(TextPosition, StartsAtLineOneColumnOne)
{
    EXPECT_EQ(TextPosition::in("", 0), (TextPosition{0, 1, 1}));
    EXPECT_EQ(TextPosition::in("abc", 0).description(), "line 1, column 1");
}

TEST(TextPosition, CountsAnyLineEndOnce)
{
    EXPECT_EQ(TextPosition::in("a\nb\rc\r\nd", 7), (TextPosition{7, 4, 1}));
    EXPECT_EQ(TextPosition::in("\r\r\n\n", 4), (TextPosition{4, 4, 1}));
}

TEST(TextPosition, CountsScalarValuesNotBytes)
{
    EXPECT_EQ(TextPosition::in("ä€😀x", 9), (TextPosition{9, 1, 4}));
}

TEST(TextPosition, StopsAtTheEnd) { EXPECT_EQ(TextPosition::in("ab", 100), (TextPosition{2, 1, 3})); }

TEST(TextPosition, CountsOnFromAnyEarlierPlace)
{
    constexpr std::string_view text = "a\r\nä€\r😀x\n\ny";

    for (std::size_t earlier = 0; earlier <= text.size(); ++earlier)
        EXPECT_EQ(TextPosition::in(text, text.size(), TextPosition::in(text, earlier)),
            TextPosition::in(text, text.size()));
}
