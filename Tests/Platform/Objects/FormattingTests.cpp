#include "Orrenby/Platform/Objects/Formatting.hpp"

#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Utilities/EmailAddress.hpp"
#include "Orrenby/Utilities/OrderedSet.hpp"
#include <gmock/gmock.h>

using namespace orrenby;

TEST(Formatting, FormatsValues)
{
    //! [Formatting values]
    const OrderedSet<int> set{3, 1};

    EXPECT_EQ(fmt::format("{} and {:?}", "a@b.co"_email, set), "a@b.co and [3, 1]");
    EXPECT_EQ(fmt::format("{:>8}|{:<8}|", set, set), "  [3, 1]|[3, 1]  |");
    //! [Formatting values]
}

TEST(Formatting, HasADebugForm)
{
    const auto address = "a@b.co"_email;

    EXPECT_EQ(fmt::format("{:?}", address), debugDescribe(address));
    EXPECT_NE(fmt::format("{:?}", address), fmt::format("{}", address));
}

TEST(Formatting, FormatsListsOfValues)
{
    const std::vector<UUID> uuids(2);

    EXPECT_EQ(fmt::format("{}", uuids), describe(uuids));
}

TEST(Formatting, LeavesTypesOfOthersAlone)
{
    struct Plain {
        std::string description() const { return ""; }
    };

    EXPECT_FALSE(fmt::is_formattable<Plain>::value);
    EXPECT_TRUE(fmt::is_formattable<UUID>::value);
}
