#include "Examples/Fieldbook/SignIn/SignIn.hpp"

#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;

std::string refusalOf(std::string_view text)
{
    const auto outcome = addressToSignIn(text);
    return outcome.error() ? *outcome.error() : "none";
}

TEST(SignIn, TakesAWellFormedAddress)
{
    EXPECT_EQ(addressToSignIn("ines@hut.example").unwrap(), "ines@hut.example"_email);
}

TEST(SignIn, SaysWhatIsWrongWithAnAddressAndAtWhichCharacter)
{
    EXPECT_EQ(refusalOf("ines@hut"), "\"ines@hut\", character 9: The domain has no dot.");
    EXPECT_EQ(refusalOf("ines.hut.example"), "\"ines.hut.example\", character 17: The \"@\" is missing.");
    EXPECT_EQ(refusalOf(""), "\"\", character 1: The address is empty.");
}

TEST(SignIn, CountsCharactersAndNotBytes)
{
    EXPECT_EQ(refusalOf("jürgen@hut"), "\"jürgen@hut\", character 11: The domain has no dot.");
}

TEST(SignIn, RefusesAddressesThatNobodyReads)
{
    EXPECT_EQ(refusalOf("noreply@hut.example"),
        "\"noreply@hut.example\": Nobody reads what is sent to this address.");
    EXPECT_EQ(refusalOf("no-reply@hut.example"),
        "\"no-reply@hut.example\": Nobody reads what is sent to this address.");
    EXPECT_EQ(refusalOf("noreplying@hut.example"), "none");
}

TEST(SignIn, ShowsNothingThatATerminalWouldObey)
{
    EXPECT_EQ(refusalOf("a\x1B@b.co").find('\x1B'), std::string::npos);
    EXPECT_EQ(refusalOf("a\xFF@b.co").find('\xFF'), std::string::npos);
}

} // namespace
