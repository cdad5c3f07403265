#include "Examples/Fieldbook/Card/Caption.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using namespace fieldbook;

const Terminal coloured(STDOUT_FILENO, true);
const Terminal plain(STDOUT_FILENO, false);

TEST(Captioned, IsBoldBetweenBracketsAndLosesThem)
{
    EXPECT_EQ(captioned(coloured, "Keep [off] it"), "Keep \x1B[1moff\x1B[0m it");
    EXPECT_EQ(captioned(plain, "Keep [off] it"), "Keep off it");
}

TEST(Captioned, KeepsWhatHasNoPartner)
{
    EXPECT_EQ(captioned(plain, "a [b"), "a [b");
    EXPECT_EQ(captioned(plain, "a] b"), "a] b");
    EXPECT_EQ(captioned(plain, ""), "");
}

TEST(Captioned, UnderlinesWhatCanBeFollowed)
{
    EXPECT_EQ(captioned(coloured, "[Ask] warden@quay.example"),
        "\x1B[1mAsk\x1B[0m \x1B[4mwarden@quay.example\x1B[0m");
}

TEST(Captioned, EndsBoldAtLineEnds)
{
    EXPECT_EQ(captioned(plain, "[a]\n[b"), "a\n[b");
    EXPECT_EQ(captioned(coloured, "[a]\nb"), "\x1B[1ma\x1B[0m\nb");
}

} // namespace
