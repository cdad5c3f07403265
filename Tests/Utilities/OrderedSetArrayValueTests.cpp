#include "Orrenby/Utilities/OrderedSetArrayValue.hpp"

#include <cstdint>
#include <gmock/gmock.h>
#include <string>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ArrayValue, GivesTheMembersInOrder)
{
    //! [Members of one type]
    const std::optional<NSOrderedSet> tags = NSOrderedSet{"b", "a"};

    EXPECT_THAT(arrayValue<std::string>(tags), ElementsAre("b", "a"));
    EXPECT_THAT(arrayValue<std::int64_t>(tags), IsEmpty()); // they are no numbers
    //! [Members of one type]
}

TEST(ArrayValue, IsEmptyWithoutASet)
{
    EXPECT_THAT(arrayValue<std::string>(std::nullopt), IsEmpty());
    EXPECT_THAT(arrayValue<std::string>(NSOrderedSet()), IsEmpty());
}

TEST(ArrayValue, IsEmptyWhenOneMemberIsOfAnotherType)
{
    EXPECT_THAT(arrayValue<std::int64_t>(NSOrderedSet{1, 2, "three"}), IsEmpty());
    EXPECT_THAT(arrayValue<std::int64_t>(NSOrderedSet{1, 2.5}), IsEmpty());
    EXPECT_THAT(arrayValue<std::int64_t>(NSOrderedSet{1, true}), IsEmpty());
}

TEST(ArrayValue, TakesAnyMemberAsAnAny)
{
    EXPECT_THAT(arrayValue<Any>(NSOrderedSet{1, "a"}), ElementsAre(Any(1), Any("a")));
}
