#include "Orrenby/Utilities/OrderedSet.hpp"

#include "Tests/Utilities/OrderedSetParts.hpp"
#include <functional>
#include <gmock/gmock.h>
#include <optional>
#include <string>

using namespace orrenby;
using orrenby::testing::Numbers;
using orrenby::testing::Texts;
using orrenby::testing::withADuplicate;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

TEST(OrderedSetSetter, ReplacesAMember)
{
    auto set = Numbers{1, 2, 3};

    set[1] = 9;

    EXPECT_THAT(set, ElementsAre(1, 9, 3));
    EXPECT_EQ(set.count(), 3);
    EXPECT_EQ(set.indexOf(2), std::nullopt);
    EXPECT_THAT(set.indexOf(9), Optional(1));
}

TEST(OrderedSetSetter, LetsAValueStandTwice)
{
    auto set = Numbers{1, 2, 3};

    set[0] = 3;

    EXPECT_THAT(set.elements(), ElementsAre(3, 2, 3));
    EXPECT_EQ(set.count(), 2);
    EXPECT_EQ(set.size(), 3U);
    EXPECT_EQ(set.endIndex(), 3);
    EXPECT_THAT(set.indexOf(3), Optional(0));
    EXPECT_EQ(set.indexOf(1), std::nullopt);
    EXPECT_EQ(set.description(), "[3, 2, 3]");
}

TEST(OrderedSetSetter, GivesTheLaterPositionAfterADuplicateWasSetBehind)
{
    auto set = Numbers{1, 2, 3};

    set.set(2, 1);

    EXPECT_THAT(set.elements(), ElementsAre(1, 2, 1));
    EXPECT_THAT(set.indexOf(1), Optional(2));
    EXPECT_THAT(set.firstIndexOf(1), Optional(0));
    EXPECT_EQ(set.count(), 2);
}

TEST(OrderedSetSetter, HidesWhatStandsElsewhereTooWhenItIsReplaced)
{
    auto set = withADuplicate();

    set[0] = 7;

    EXPECT_THAT(set.elements(), ElementsAre(7, 2, 3));
    EXPECT_EQ(set.indexOf(3), std::nullopt);
    EXPECT_TRUE(set.contains(3));
    EXPECT_THAT(set.firstIndexOf(3), Optional(2));
    EXPECT_EQ(set.count(), 2);
    EXPECT_EQ(set.remove(3), std::nullopt);
    EXPECT_THAT(set.elements(), ElementsAre(7, 2, 3));
}

TEST(OrderedSetSetter, PutsAMemberInItsOwnPlace)
{
    auto set = Numbers{1, 2};

    set[1] = 2;
    set[0] = set[0];

    EXPECT_THAT(set, ElementsAre(1, 2));
    EXPECT_EQ(set.count(), 2);
    EXPECT_THAT(set.indexOf(2), Optional(1));
}

TEST(OrderedSetSetter, EndsEveryChangeInPlace)
{
    auto set = Texts{"a", "b"};

    set.modify(0, [](std::string& text) { text += "x"; });

    EXPECT_THAT(set, ElementsAre("ax", "b"));
    EXPECT_THAT(set.indexOf("ax"), Optional(0));
    EXPECT_EQ(set.indexOf("a"), std::nullopt);
}

TEST(OrderedSetSetter, MakesRoomForEveryFurtherKind)
{
    auto set = Numbers{1, 2, 3};

    for (int value = 0; value < 1'000; ++value)
        set.set(value % 3, value);

    EXPECT_THAT(set, ElementsAre(999, 997, 998));
    EXPECT_EQ(set.count(), 3);
}

TEST(OrderedSetSetter, ComparesWithAValueAndPrints)
{
    auto set = Texts{"a"};

    EXPECT_TRUE(set[0] == "a");
    EXPECT_EQ(describe(set[0]), "a");
    EXPECT_EQ(debugDescribe(set[0]), "\"a\"");
}

TEST(OrderedSetWithADuplicate, DropsItInWhateverReplacesARange)
{
    const auto broken = withADuplicate();
    const auto after = [&](auto change) {
        auto set = broken;
        change(set);
        EXPECT_EQ(set.count(), set.endIndex());
        return set.elements();
    };

    EXPECT_THAT(after([](Numbers& set) { set.append(2); }), ElementsAre(3, 2));
    EXPECT_THAT(after([](Numbers& set) { set.append(5); }), ElementsAre(3, 2, 5));
    EXPECT_THAT(after([](Numbers& set) { set.appendContentsOf({}); }), ElementsAre(3, 2));
    EXPECT_THAT(after([](Numbers& set) { set.insert(5, 1); }), ElementsAre(3, 5, 2));
    EXPECT_THAT(after([](Numbers& set) { set.removeAt(0); }), ElementsAre(2, 3));
    EXPECT_THAT(after([](Numbers& set) { set.removeLast(); }), ElementsAre(3, 2));
    EXPECT_THAT(after([](Numbers& set) { set.removeFirst(0); }), ElementsAre(3, 2));
    EXPECT_THAT(after([](Numbers& set) { set.removeLast(0); }), ElementsAre(3, 2));
    EXPECT_THAT(after([](Numbers& set) { set.remove(3); }), ElementsAre(2, 3));
    EXPECT_THAT(after([](Numbers& set) { set.removeAll([](int) { return false; }); }), ElementsAre(3, 2));
    EXPECT_THAT(after([](Numbers& set) { set.reserveCapacity(0); }), ElementsAre(3, 2));
    EXPECT_THAT(after([](Numbers& set) { set.sort(std::less<>()); }), ElementsAre(2, 3));
    EXPECT_THAT(after([](Numbers& set) { set.removeAllKeepingCapacity(); }), IsEmpty());
}

TEST(OrderedSetWithADuplicate, TakesPartInAlgebraAsItsMembersStand)
{
    const auto broken = withADuplicate();

    EXPECT_THAT(broken.intersection(Numbers{3}), ElementsAre(3));
    EXPECT_THAT(broken.subtracting(Numbers{2}), ElementsAre(3));
    EXPECT_THAT((Numbers{1, 2, 3}.intersection(broken)), ElementsAre(2, 3));
}
