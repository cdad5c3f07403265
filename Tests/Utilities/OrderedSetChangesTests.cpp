#include "Orrenby/Utilities/OrderedSet.hpp"

#include "Tests/Utilities/OrderedSetParts.hpp"
#include <gmock/gmock.h>
#include <list>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::Noted;
using orrenby::testing::Numbers;
using orrenby::testing::Texts;
using ::testing::ElementsAre;
using ::testing::Optional;

TEST(OrderedSetChanges, AppendASequenceThatMayBeThisSet)
{
    auto set = Numbers{1, 2};

    set.appendContentsOf(std::list<int>{2, 3, 4, 3});
    set.appendContentsOf(set);
    set.append(set.elements()[0]);

    EXPECT_THAT(set, ElementsAre(1, 2, 3, 4));
}

TEST(OrderedSetChanges, AppendNothingThatIsThere)
{
    auto set = Numbers{3, 1, 2};

    set.append(1);

    EXPECT_THAT(set, ElementsAre(3, 1, 2));
    EXPECT_EQ(set.count(), 3);
    EXPECT_THAT(set.indexOf(1), Optional(1));
}

TEST(OrderedSetChanges, InsertANewMember)
{
    auto set = Numbers{1, 2};

    set.insert(8, 0);
    set.insert(9, 3);

    EXPECT_THAT(set, ElementsAre(8, 1, 2, 9));
    EXPECT_THAT(set.indexOf(2), Optional(2));
}

TEST(OrderedSetChanges, MoveAMemberToTheFrontOnly)
{
    auto set = Numbers{1, 2, 3};

    set.insert(3, 0);
    EXPECT_THAT(set, ElementsAre(3, 1, 2));

    set.insert(3, 3);
    EXPECT_THAT(set, ElementsAre(3, 1, 2));
    EXPECT_THAT(set.indexOf(2), Optional(2));
}

TEST(OrderedSetChanges, InsertASequence)
{
    auto set = Numbers{1, 2, 3};

    set.insertContentsOf({7, 3, 7}, 1);

    EXPECT_THAT(set, ElementsAre(1, 7, 3, 2));
}

TEST(OrderedSetChanges, ReplaceARange)
{
    auto set = Numbers{1, 2, 3, 4};

    set.replaceSubrange(1, 3, std::vector<int>{4, 9});

    EXPECT_THAT(set, ElementsAre(1, 4, 9));
    EXPECT_EQ(set.endIndex(), 3);
    EXPECT_THAT(set.indexOf(9), Optional(2));
}

TEST(OrderedSetChanges, RemoveAMemberAndGiveTheArgument)
{
    auto set = OrderedSet<Noted>{{1, "stored"}, {2, "two"}};

    const auto removed = set.remove({1, "argument"});

    ASSERT_TRUE(removed.has_value());
    EXPECT_EQ(removed->note, "argument");
    EXPECT_THAT(set.indexOf({2, ""}), Optional(0));
}

TEST(OrderedSetChanges, RemoveNothingThatIsAbsent)
{
    auto set = Numbers{1, 2};

    EXPECT_EQ(set.remove(3), std::nullopt);
    EXPECT_THAT(set, ElementsAre(1, 2));
}

TEST(OrderedSetChanges, RemoveAMemberGivenByReferenceIntoTheSet)
{
    auto set = Texts{"a long text that is stored elsewhere", "b"};

    const auto removed = set.remove(set.elements()[0]);

    EXPECT_THAT(removed, Optional(std::string("a long text that is stored elsewhere")));
    EXPECT_THAT(set, ElementsAre("b"));
}

TEST(OrderedSetChanges, RemoveByPosition)
{
    auto set = Numbers{1, 2, 3, 4, 5, 6, 7};

    EXPECT_EQ(set.removeAt(3), 4);
    EXPECT_EQ(set.removeFirst(), 1);
    EXPECT_EQ(set.removeLast(), 7);
    EXPECT_THAT(set, ElementsAre(2, 3, 5, 6));
    set.removeSubrange(1, 2);
    EXPECT_THAT(set, ElementsAre(2, 5, 6));
    set.removeFirst(1);
    EXPECT_THAT(set, ElementsAre(5, 6));
    set.removeLast(1);

    EXPECT_THAT(set, ElementsAre(5));
    EXPECT_THAT(set.indexOf(5), Optional(0));
}

TEST(OrderedSetChanges, RemoveWhatAPredicateChooses)
{
    auto set = Numbers{1, 2, 3, 4};

    set.removeAll([](int value) { return value % 2 == 0; });

    EXPECT_THAT(set, ElementsAre(1, 3));
    EXPECT_THAT(set.indexOf(3), Optional(1));
}

TEST(OrderedSetChanges, RemoveAll)
{
    auto set = Numbers{1, 2};
    auto kept = set;

    set.removeAll();
    kept.removeAllKeepingCapacity();
    kept.append(2);

    EXPECT_EQ(set, Numbers());
    EXPECT_EQ(set.count(), 0);
    EXPECT_THAT(kept, ElementsAre(2));
    EXPECT_EQ(kept.indexOf(1), std::nullopt);
}

TEST(OrderedSetChanges, LeaveTheSetAloneWhenACallableThrows)
{
    auto set = Numbers{3, 1, 2};
    const auto fail = [](auto...) -> bool { throw std::runtime_error("no"); };

    EXPECT_THROW(set.removeAll(fail), std::runtime_error);
    EXPECT_THROW(set.sort(fail), std::runtime_error);
    EXPECT_THROW(set.modify(0, fail), std::runtime_error);

    EXPECT_THAT(set, ElementsAre(3, 1, 2));
    EXPECT_EQ(set.count(), 3);
}

TEST(OrderedSetSort, OrdersByAPredicateAndKeepsEqualOnesAsTheyAre)
{
    auto set = Numbers{21, 12, 11, 22};
    const auto byLastDigit = [](int first, int second) { return first % 10 < second % 10; };

    const auto sorted = set.sorted(byLastDigit);
    EXPECT_THAT(sorted, ElementsAre(21, 11, 12, 22));
    EXPECT_THAT(set, ElementsAre(21, 12, 11, 22));

    set.sort(byLastDigit);
    EXPECT_EQ(set, sorted);
    EXPECT_THAT(set.indexOf(22), Optional(3));
}
