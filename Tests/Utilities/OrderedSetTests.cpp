#include "Orrenby/Utilities/OrderedSet.hpp"

#include <gmock/gmock.h>
#include <iterator>
#include <limits>
#include <list>
#include <sstream>
#include <stdexcept>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

namespace {

using Numbers = OrderedSet<int>;
using Texts = OrderedSet<std::string>;

/// Equal by its number alone, so that a test can tell which of two equal members was kept.
struct Noted {
    int number = 0;
    std::string note;
    friend bool operator==(const Noted& first, const Noted& second) { return first.number == second.number; }
};

/// All of them share one hash.
struct Clashing {
    int number = 0;
    friend bool operator==(const Clashing&, const Clashing&) = default;
};

} // namespace

template <> struct std::hash<Noted> {
    std::size_t operator()(const Noted& value) const { return static_cast<std::size_t>(value.number); }
};
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
    auto set = Numbers{1, 2, 3};
    set[0] = 3;

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
    auto broken = Numbers{1, 2, 3};
    broken[0] = 3;
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
    auto broken = Numbers{1, 2, 3};
    broken[0] = 3;

    EXPECT_THAT(broken.intersection(Numbers{3}), ElementsAre(3));
    EXPECT_THAT(broken.subtracting(Numbers{2}), ElementsAre(3));
    EXPECT_THAT((Numbers{1, 2, 3}.intersection(broken)), ElementsAre(2, 3));
}

TEST(OrderedSetChanges, AppendASequenceThatMayBeThisSet)
{
    auto set = Numbers{1, 2};

    set.appendContentsOf(std::list<int>{2, 3, 4, 3});
    set.appendContentsOf(set);
    set.append(set.elements()[0]);

    EXPECT_THAT(set, ElementsAre(1, 2, 3, 4));
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
