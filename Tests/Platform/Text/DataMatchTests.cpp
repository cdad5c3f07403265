#include "Orrenby/Platform/Text/DataMatch.hpp"

#include <gmock/gmock.h>
#include <optional>
#include <sstream>

using namespace orrenby;

namespace {

DataMatch link() { return {DataKind::Link, {4, 9}, 5, 10, URL::make("http://a.example")}; }

DataMatch number() { return {DataKind::PhoneNumber, {0, 3}, 0, 3, std::nullopt}; }

} // namespace

TEST(DataKind, HasNumbersThatAreKept)
{
    EXPECT_EQ(static_cast<std::uint32_t>(DataKind::Address), 16U);
    EXPECT_EQ(static_cast<std::uint32_t>(DataKind::Link), 32U);
    EXPECT_EQ(static_cast<std::uint32_t>(DataKind::PhoneNumber), 2048U);
}

TEST(DataKind, PrintsTheKindsThatAreIn)
{
    EXPECT_EQ(describe(DataKind::None), "None");
    EXPECT_EQ(describe(DataKind::PhoneNumber), "PhoneNumber");
    EXPECT_EQ(describe(DataKind::Address | DataKind::Link), "Address | Link");
    EXPECT_EQ(describe(DataKind::All), "Address | Link | PhoneNumber");
}

TEST(DataMatch, PrintsItsKindRangeAndURL)
{
    std::ostringstream stream;

    stream << link() << "; " << number();

    EXPECT_EQ(stream.str(), "Link {4, 9}: http://a.example; PhoneNumber {0, 3}");
}

TEST(DataMatch, HasTheSchemeOfItsURL)
{
    EXPECT_EQ(link().scheme(), "http");
    EXPECT_EQ(number().scheme(), "");
}

TEST(DataMatch, HashesByAllThatIsCompared)
{
    const std::hash<DataMatch> hash;
    const auto changed = [](auto change) {
        auto match = link();
        change(match);
        return match;
    };

    EXPECT_EQ(hash(link()), hash(link()));
    EXPECT_NE(hash(link()), hash(changed([](DataMatch& match) { match.kind = DataKind::Address; })));
    EXPECT_NE(hash(link()), hash(changed([](DataMatch& match) { match.range.location = 5; })));
    EXPECT_NE(hash(link()), hash(changed([](DataMatch& match) { match.byteOffset = 6; })));
    EXPECT_NE(hash(link()), hash(changed([](DataMatch& match) { match.byteCount = 11; })));
    EXPECT_NE(hash(link()), hash(changed([](DataMatch& match) { match.url = std::nullopt; })));
}
