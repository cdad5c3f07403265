#include "Orrenby/Utilities/OrderedSet.hpp"

#include "Tests/Utilities/OrderedSetParts.hpp"
#include <gmock/gmock.h>
#include <iterator>
#include <limits>
#include <list>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

using namespace orrenby;
using orrenby::testing::Noted;
using orrenby::testing::Numbers;
using orrenby::testing::Texts;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

namespace {

/// All of them share one hash.
struct Clashing {
    int number = 0;
    friend bool operator==(const Clashing&, const Clashing&) = default;
};

} // namespace

template <> struct std::hash<Clashing> {
    std::size_t operator()(const Clashing&) const { return 7; }
};

namespace {

std::vector<std::string> notes(const OrderedSet<Noted>& set)
{
    std::vector<std::string> result;
    for (const Noted& member : set)
        result.push_back(member.note);
    return result;
}

} // namespace

static_assert(std::random_access_iterator<Numbers::const_iterator>);
static_assert(std::is_same_v<decltype(*std::declval<const Numbers&>().begin()), const int&>);
static_assert(std::is_same_v<decltype(*std::declval<Numbers&>().begin()), const int&>);
static_assert(std::is_nothrow_move_constructible_v<Numbers>);

TEST(OrderedSet, KeepsAnOrder)
{
    //! [Keeping an order]
    auto feed = OrderedSet<std::string>{"storm", "owl", "storm"};

    feed.append("owl");    // is there: nothing changes
    feed.append("orchid"); // new: comes last
    feed.insert("owl", 0); // further to the front: moves there

    EXPECT_THAT(feed, ElementsAre("owl", "storm", "orchid"));
    EXPECT_THAT(feed.indexOf("storm"), Optional(1));
    //! [Keeping an order]
}

TEST(OrderedSet, DropsLaterDuplicatesWhenItIsMade)
{
    const auto set = Numbers{3, 1, 3, 2, 1};

    EXPECT_THAT(set.elements(), ElementsAre(3, 1, 2));
    EXPECT_EQ(set.count(), 3);
    EXPECT_EQ(set.startIndex(), 0);
    EXPECT_EQ(set.endIndex(), 3);
    EXPECT_THAT(set.indexOf(2), Optional(2));
}

TEST(OrderedSet, IsEmptyWhenMadeOfNothing)
{
    const auto set = Numbers(std::vector<int>());

    EXPECT_EQ(set, Numbers());
    EXPECT_EQ(set.count(), 0);
    EXPECT_EQ(set.size(), 0U);
    EXPECT_EQ(set.startIndex(), 0);
    EXPECT_EQ(set.endIndex(), 0);
    EXPECT_TRUE(set.isEmpty());
    EXPECT_EQ(set.description(), "[]");
    EXPECT_EQ(set.indexOf(0), std::nullopt);
    EXPECT_FALSE(set.contains(0));
    EXPECT_EQ(set.first(), std::nullopt);
    EXPECT_EQ(set.last(), std::nullopt);
}

TEST(OrderedSet, IsMadeOfAnArrayAListOrAStreamInTheSameWay)
{
    const std::vector<int> array{2, 1, 2};
    std::istringstream digits("2 1 2");
    struct Digits {
        std::istringstream& stream;
        auto begin() const { return std::istream_iterator<int>(stream); }
        auto end() const { return std::istream_iterator<int>(); }
    };

    EXPECT_THAT(OrderedSet(array), ElementsAre(2, 1));
    EXPECT_THAT(OrderedSet(std::vector<int>{2, 1, 2}), ElementsAre(2, 1));
    EXPECT_THAT(OrderedSet(std::list<int>{2, 1, 2}), ElementsAre(2, 1));
    EXPECT_THAT(OrderedSet(Digits{digits}), ElementsAre(2, 1));
    EXPECT_THAT(array, ElementsAre(2, 1, 2));
}

TEST(OrderedSet, KeepsTheFirstOfEqualMembers)
{
    auto set = OrderedSet<Noted>{{1, "first"}, {2, "other"}, {1, "second"}};
    EXPECT_THAT(notes(set), ElementsAre("first", "other"));

    set.append({1, "appended"});
    EXPECT_THAT(notes(set), ElementsAre("first", "other"));

    set.insert({1, "behind"}, 2);
    EXPECT_THAT(notes(set), ElementsAre("first", "other"));

    set.insert({1, "in front"}, 0);
    EXPECT_THAT(notes(set), ElementsAre("in front", "other"));
}

TEST(OrderedSet, CopiesAreIndependent)
{
    auto set = Numbers{1, 2};
    const auto copy = set;

    set.append(3);
    set.remove(1);

    EXPECT_THAT(copy, ElementsAre(1, 2));
    EXPECT_THAT(copy.indexOf(1), Optional(0));
    EXPECT_THAT(set, ElementsAre(2, 3));
}

TEST(OrderedSet, IsEmptyAndUsableAfterItWasMovedFrom)
{
    auto set = Numbers{1, 2};
    const auto taken = std::move(set);

    EXPECT_EQ(set.count(), 0); // NOLINT(bugprone-use-after-move): that is what is tested
    EXPECT_EQ(set.size(), 0U);
    set.append(5);

    EXPECT_THAT(set, ElementsAre(5));
    EXPECT_THAT(taken, ElementsAre(1, 2));
}

TEST(OrderedSet, StepsFromPositionToPosition)
{
    const auto set = Numbers{};

    EXPECT_EQ(set.indexAfter(0), 1);
    EXPECT_EQ(set.indexBefore(0), -1);
}

TEST(OrderedSetDeathTest, TerminatesWhenAPositionOverflows)
{
    const auto set = Numbers{};
    const auto message = "Fatal error: Arithmetic operation overflowed: file Utilities/OrderedSet, line 62";

    EXPECT_DEATH(set.indexAfter(std::numeric_limits<std::int64_t>::max()), message);
    EXPECT_DEATH(set.indexBefore(std::numeric_limits<std::int64_t>::min()), message);
}

TEST(OrderedSetDeathTest, TerminatesOutOfRange)
{
    auto set = Numbers{1};
    const auto message = "Fatal error: Index out of range: file Utilities/OrderedSet, line 84";

    EXPECT_DEATH(std::as_const(set)[1], message);
    EXPECT_DEATH(std::as_const(set)[-1], message);
    EXPECT_DEATH(set[1], message);
    EXPECT_DEATH(set.set(1, 2), message);
    EXPECT_DEATH(set.insert(2, 2), message);
    EXPECT_DEATH(set.removeAt(1), message);
    EXPECT_DEATH(set.removeSubrange(1, 0), message);
    EXPECT_DEATH(set.removeSubrange(0, 2), message);
    EXPECT_DEATH(set.removeFirst(2), message);
    EXPECT_DEATH(set.removeLast(-1), message);
    EXPECT_DEATH(Numbers{}.removeFirst(), message);
    EXPECT_DEATH(Numbers{}.removeLast(), message);
}

TEST(OrderedSet, GivesFirstAndLast)
{
    const auto set = Numbers{4, 5, 6};

    EXPECT_EQ(set[1], 5);
    EXPECT_THAT(set.first(), Optional(4));
    EXPECT_THAT(set.last(), Optional(6));
}

TEST(OrderedSet, LooksUpTextByAnyKindOfText)
{
    auto set = Texts{"a", "b"};
    const std::string_view view = "b";

    EXPECT_THAT(set.indexOf(view), Optional(1));
    EXPECT_THAT(set.indexOf("a"), Optional(0));
    EXPECT_TRUE(set.contains(std::string("a")));
    EXPECT_THAT(set.remove(view), Optional(std::string("b")));
}

TEST(OrderedSet, TellsMembersOfOneHashApart)
{
    OrderedSet<Clashing> set;
    for (int number = 0; number < 100; ++number)
        set.append({number});

    for (int number = 0; number < 100; number += 2)
        set.remove({number});

    EXPECT_EQ(set.count(), 50);
    EXPECT_THAT(set.indexOf({51}), Optional(25));
    EXPECT_EQ(set.indexOf({50}), std::nullopt);
}

TEST(OrderedSet, PrintsLikeTheListOfItsMembers)
{
    const auto texts = Texts{"a", "b"};

    EXPECT_EQ((Numbers{1, 2, 3}.description()), "[1, 2, 3]");
    EXPECT_EQ(texts.description(), describe(texts.elements()));
    EXPECT_EQ(texts.debugDescription(), debugDescribe(texts.elements()));
}

TEST(OrderedSet, EqualsOneOfTheSameOrderOnly)
{
    EXPECT_EQ((Numbers{1, 2}), (Numbers{1, 2, 1}));
    EXPECT_NE((Numbers{1, 2}), (Numbers{2, 1}));
    EXPECT_NE((Numbers{1, 2}), (Numbers{1}));
}

TEST(OrderedSet, HoldsBooleans)
{
    auto set = OrderedSet<bool>{true, false, true};

    set.sort([](bool first, bool second) { return !first && second; });

    EXPECT_EQ(set.description(), "[false, true]");
    EXPECT_THAT(set.remove(false), Optional(false));
    EXPECT_THAT(set.indexOf(true), Optional(0));
}

TEST(OrderedSetAlgebra, KeepsTheOrderOfTheReceiver)
{
    const auto first = Numbers{1, 2, 3, 4};
    const auto second = Numbers{4, 5, 2};

    EXPECT_THAT(first.intersection(second), ElementsAre(2, 4));
    EXPECT_THAT(first.subtracting(second), ElementsAre(1, 3));
    EXPECT_THAT(second.subtracting(first), ElementsAre(5));
    EXPECT_THAT(first.intersection(Numbers()), IsEmpty());
    EXPECT_THAT(first.subtracting(first), IsEmpty());
}

TEST(OrderedSet, HashesByItsMembersInTheirOrder)
{
    const std::hash<OrderedSet<std::string>> hash;

    EXPECT_EQ(hash({"a", "b", "a"}), hash({"a", "b"}));
    EXPECT_NE(hash({"a", "b"}), hash({"b", "a"}));
    EXPECT_NE(hash({"a"}), hash({}));
}
