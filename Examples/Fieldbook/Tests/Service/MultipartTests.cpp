#include "Examples/Fieldbook/Service/Multipart.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr auto type = "multipart/form-data; boundary=limit";

std::string part(const std::string& head, const std::string& content)
{
    return "--limit\r\n" + head + "\r\n\r\n" + content + "\r\n";
}

TEST(Multipart, HasItsPartsInOrder)
{
    const auto body = part("Content-Disposition: form-data; name=\"report\"", "{}")
        + part(
            "Content-Disposition: form-data; name=\"photo\"; filename=\"a.png\"\r\nContent-Type: image/png",
            "x")
        + "--limit--\r\n";

    EXPECT_EQ(partsIn(body, type),
        (std::vector<ServicePart>{{"report", "", "", "{}"}, {"photo", "a.png", "image/png", "x"}}));
}

TEST(Multipart, KeepsTheBytesOfAPart)
{
    const auto content = std::string("\r\n--limi\0t\r\n\r\n--\r\n", 18);

    const auto parts = partsIn(
        part("Content-Disposition: form-data; name=\"a\"", content) + "--limit--", type);

    ASSERT_TRUE(parts);
    EXPECT_THAT(*parts, ElementsAre(ServicePart{"a", "", "", content}));
}

TEST(Multipart, TakesWhatStandsInQuotesForNoParameter)
{
    const auto parts = partsIn(
        part(R"(Content-Disposition: form-data; filename="; name=x"; name="a; filename=b")", "")
            + "--limit--",
        type);

    EXPECT_EQ(parts, (std::vector<ServicePart>{{"a; filename=b", "; name=x", "", ""}}));
}

TEST(Multipart, NeedsNoBlanksBetweenParametersAndNoQuotes)
{
    const auto parts = partsIn(
        part("Content-Disposition: form-data;name=a ;  filename=b.png", "") + "--limit--", type);

    EXPECT_EQ(parts, (std::vector<ServicePart>{{"a", "b.png", "", ""}}));
}

TEST(Multipart, HasNoNameWhereNoneIsSaid)
{
    const auto parts = partsIn(
        part("Content-Disposition: form-data; name; nickname=\"a\"", "") + "--limit--", type);

    EXPECT_EQ(parts, (std::vector<ServicePart>{{"", "", "", ""}}));
}

TEST(Multipart, MayHaveAnEmptyPartAndNoneAtAll)
{
    const auto parts = partsIn(part("Content-Disposition: form-data; name=\"a\"", "") + "--limit--", type);

    EXPECT_EQ(parts, (std::vector<ServicePart>{{"a", "", "", ""}}));
    EXPECT_EQ(partsIn("--limit--", type), std::vector<ServicePart>());
}

TEST(Multipart, TakesABoundaryInQuotes)
{
    EXPECT_EQ(partsIn("--a b--", "multipart/form-data; boundary=\"a b\""), std::vector<ServicePart>());
}

TEST(Multipart, IsNoneWithoutItsEnd)
{
    const auto whole = part("Content-Disposition: form-data; name=\"a\"", "x") + "--limit--";

    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(partsIn(whole.substr(0, length), type), std::nullopt) << length;
}

TEST(Multipart, IsNoneOfAnotherType)
{
    for (const auto* const other : {"", "application/json", "multipart/form-data",
             "multipart/form-data; boundary=", "multipart/mixed; boundary=limit",
             "multipart/form-data; boundary=other"})
        EXPECT_EQ(partsIn("--limit--", other), std::nullopt) << other;
}

} // namespace
