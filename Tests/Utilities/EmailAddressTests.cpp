#include "Orrenby/Utilities/EmailAddress.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <gmock/gmock.h>
#include <sstream>
#include <unordered_set>

using namespace orrenby;

namespace {

EmailAddress made(std::string text)
{
    auto address = EmailAddress::make({.stringValue = std::move(text)});
    if (!address)
        throw std::runtime_error("no address");
    return *address;
}

} // namespace

TEST(EmailAddress, IsMadeOfText)
{
    //! [Making an address]
    const auto address = EmailAddress::make({.stringValue = "ranger@hut.example.com"});

    ASSERT_TRUE(address.has_value());
    EXPECT_EQ(address->localPart(), "ranger");
    EXPECT_EQ(address->domain(), "hut.example.com");
    EXPECT_EQ("ranger@hut.example.com"_email, *address);
    EXPECT_FALSE(EmailAddress::make({.stringValue = "ranger"}).has_value());
    //! [Making an address]
}

TEST(EmailAddress, IsMadeOfItsParts)
{
    const auto address = EmailAddress::make({.localPart = "a", .domain = "b.co"});

    ASSERT_TRUE(address.has_value());
    EXPECT_EQ(address->stringValue(), "a@b.co");
    EXPECT_EQ(address->localPart(), "a");
    EXPECT_EQ(address->domain(), "b.co");
    EXPECT_FALSE(EmailAddress::make({.localPart = "", .domain = "b.co"}).has_value());
    EXPECT_FALSE(EmailAddress::make({.localPart = "a", .domain = ""}).has_value());
    EXPECT_FALSE(EmailAddress::make({.localPart = "a", .domain = "b"}).has_value());
}

TEST(EmailAddress, EndsItsLocalPartAtTheFirstAtSign)
{
    const auto address = made(R"("a@x"@b.co)");

    EXPECT_EQ(address.localPart(), "\"a");
    EXPECT_EQ(address.domain(), "b.co");
    EXPECT_EQ(address.stringValue(), R"("a@x"@b.co)");
}

TEST(EmailAddress, BeginsItsDomainBehindTheLastAtSign)
{
    EXPECT_EQ(made("a@[1.2.3.x:y@z]").domain(), "z]");
    EXPECT_EQ(made("a@[1.2.3.x:y@]").domain(), "]");
    EXPECT_EQ(made("\"@\"@b.co").localPart(), "\"");
}

TEST(EmailAddress, IsEqualByItsExactText)
{
    EXPECT_EQ(made("a@b.co"), made("a@b.co"));
    EXPECT_NE(made("a@b.co"), made("A@b.co"));
    EXPECT_NE(made("a@b.co"), made("a@b.cO"));
}

TEST(EmailAddress, HashesByItsText)
{
    const std::unordered_set<EmailAddress> addresses{made("a@b.co"), made("a@b.co"), made("A@b.co")};

    EXPECT_EQ(addresses.size(), 2U);
}

TEST(EmailAddress, PrintsAsItsText)
{
    std::ostringstream stream;
    stream << made("a@b.co");

    EXPECT_EQ(stream.str(), "a@b.co");
    EXPECT_EQ(describe(made("a@b.co")), "a@b.co");
}

TEST(EmailAddress, TellsWhetherATextIsOne)
{
    EXPECT_TRUE(EmailAddress::isValid("a@b.c"));
    EXPECT_FALSE(EmailAddress::isValid("a@b"));
    EXPECT_TRUE(isValidEmail("a@b.c"));
    EXPECT_FALSE(isValidEmail(""));
}

TEST(EmailAddressDeathTest, TerminatesWhenALiteralIsNone)
{
    EXPECT_DEATH("a@b"_email,
        "Fatal error: Could not create an Email with the specified string: file Utilities/EmailAddress, line "
        "169");
}
