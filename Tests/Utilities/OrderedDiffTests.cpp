#include "Orrenby/Utilities/OrderedDiff.hpp"

#include "Orrenby/Utilities/OrderedSet.hpp"
#include <gmock/gmock.h>
#include <stdexcept>
#include <string>
#include <utility>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Texts = OrderedSet<std::string>;
using Diff = OrderedDiff<std::int64_t>;
using Move = Diff::Move;

} // namespace

TEST(OrderedDiff, NamesTheRowsOfAList)
{
    //! [Naming the rows of a list]
    const auto before = OrderedSet<std::string>{"storm", "owl"};
    const auto after = OrderedSet<std::string>{"orchid", "storm"};

    const auto diff = before.compared(after);
    const auto rows = diff->map([](std::int64_t position) { return "row " + std::to_string(position); });

    EXPECT_THAT(rows.inserts, ElementsAre("row 0"));
    EXPECT_THAT(rows.deletes, ElementsAre("row 1"));
    EXPECT_THAT(rows.moves, ElementsAre(OrderedDiffMove<std::string>{"row 0", "row 1"}));
    //! [Naming the rows of a list]
}

TEST(OrderedDiff, IsNothingBetweenEqualSets)
{
    EXPECT_FALSE((Texts{"a", "b"}.compared(Texts{"a", "b"})).has_value());
    EXPECT_FALSE(Texts().compared(Texts()).has_value());
}

TEST(OrderedDiff, IsAllInsertsFromTheEmptySetAndAllDeletesToIt)
{
    const auto there = Texts().compared(Texts{"a", "b"});
    const auto back = Texts{"a", "b"}.compared(Texts());

    EXPECT_THAT(there->inserts, ElementsAre(0, 1));
    EXPECT_THAT(there->deletes, IsEmpty());
    EXPECT_THAT(there->moves, IsEmpty());
    EXPECT_THAT(back->inserts, IsEmpty());
    EXPECT_THAT(back->deletes, ElementsAre(0, 1));
    EXPECT_THAT(back->moves, IsEmpty());
}

TEST(OrderedDiff, MovesBothMembersThatChangedPlaces)
{
    const auto diff = Texts{"a", "b"}.compared(Texts{"b", "a"});

    EXPECT_THAT(diff->inserts, IsEmpty());
    EXPECT_THAT(diff->deletes, IsEmpty());
    EXPECT_THAT(diff->moves, ElementsAre(Move{0, 1}, Move{1, 0}));
}

TEST(OrderedDiff, MovesWhatOnlyShifted)
{
    const auto diff = Texts{"a", "b", "c"}.compared(Texts{"x", "a", "b", "c"});

    EXPECT_THAT(diff->inserts, ElementsAre(0));
    EXPECT_THAT(diff->deletes, IsEmpty());
    EXPECT_THAT(diff->moves, ElementsAre(Move{0, 1}, Move{1, 2}, Move{2, 3}));
}

TEST(OrderedDiff, ListsAscendingPositions)
{
    const auto diff = Texts{"a", "b", "c", "d"}.compared(Texts{"y", "b", "a", "z"});

    EXPECT_THAT(diff->inserts, ElementsAre(0, 3));
    EXPECT_THAT(diff->deletes, ElementsAre(2, 3));
    EXPECT_THAT(diff->moves, ElementsAre(Move{0, 2}));
}

TEST(OrderedDiff, UsesTheKnownPositionOfADuplicateForInsertsAndTheFirstForMoves)
{
    auto set = Texts{"a", "b", "c"};
    set[2] = "a"; // a, b, a: known at 2

    const auto inserted = Texts{"b"}.compared(set);
    const auto moved = Texts{"x", "a"}.compared(set);

    EXPECT_THAT(inserted->inserts, ElementsAre(2));
    EXPECT_THAT(inserted->moves, ElementsAre(Move{0, 1}));
    EXPECT_THAT(moved->inserts, ElementsAre(1));
    EXPECT_THAT(moved->moves, ElementsAre(Move{1, 0}));
}

TEST(OrderedDiff, MapsEachPositionInOrder)
{
    const Diff diff{{1, 2}, {3}, {{4, 5}}};
    std::vector<std::int64_t> seen;

    const auto mapped = diff.map([&](std::int64_t position) {
        seen.push_back(position);
        return static_cast<double>(position) / 2;
    });

    EXPECT_THAT(mapped.inserts, ElementsAre(0.5, 1.0));
    EXPECT_THAT(mapped.deletes, ElementsAre(1.5));
    EXPECT_THAT(mapped.moves, ElementsAre(OrderedDiffMove<double>{2.0, 2.5}));
    EXPECT_THAT(seen, ElementsAre(1, 2, 3, 4, 5));
}

TEST(OrderedDiff, PassesOnWhatATransformThrows)
{
    const Diff diff{{1}, {}, {}};
    const auto fail = [](std::int64_t) -> int { throw std::runtime_error("no"); };

    EXPECT_THROW(diff.map(fail), std::runtime_error);
}

TEST(OrderedDiff, CanBeChanged)
{
    auto diff = *Texts().compared(Texts{"a"});

    diff.inserts.clear();
    diff.moves.push_back({.from = 1, .to = 2});

    EXPECT_THAT(diff.inserts, IsEmpty());
    EXPECT_THAT(diff.moves, ElementsAre(Move{1, 2}));
}

TEST(OrderedDiffDeathTest, TerminatesWhenADuplicateHidAMemberThatIsNeeded)
{
    auto set = Texts{"a", "b", "c"};
    set[0] = "c";
    set[0] = "x"; // x, b, c: the position of c is not known any more

    EXPECT_DEATH(static_cast<void>(set.compared(Texts{"b"})),
        "Fatal error: A member that a duplicate hid has no position: file Utilities/OrderedSet, line 205");
}

TEST(OrderedDiffApplied, GivesTheNewSet)
{
    //! [Applying a diff]
    const auto before = Texts{"a", "b", "c", "d"};
    const auto after = Texts{"x", "b", "a", "d"};

    const auto diff = before.compared(after);
    const auto rebuilt = before.applying(*diff, {"x"});

    EXPECT_EQ(rebuilt, after);
    //! [Applying a diff]
}

TEST(OrderedDiffApplied, GivesNothingWhenItDoesNotFit)
{
    const auto set = Texts{"a", "b"};

    EXPECT_EQ(set.applying({{0}, {}, {}}, {}), std::nullopt);       // a member too few
    EXPECT_EQ(set.applying({{}, {2}, {}}, {}), std::nullopt);       // deletes what is not there
    EXPECT_EQ(set.applying({{}, {-1}, {}}, {}), std::nullopt);      //
    EXPECT_EQ(set.applying({{}, {0, 0}, {}}, {}), std::nullopt);    // deletes twice
    EXPECT_EQ(set.applying({{}, {0, 1, 0}, {}}, {}), std::nullopt); // deletes more than there are
    EXPECT_EQ(set.applying({{}, {}, {{0, 1}}}, {}), std::nullopt);  // moves to a place that is taken
    EXPECT_EQ(set.applying({{0}, {}, {}}, {"x"}), std::nullopt);    // inserts where one stays
    EXPECT_EQ(set.applying({{2}, {}, {}}, {"a"}), std::nullopt);    // inserts what is there
    EXPECT_EQ(set.applying({{}, {}, {{0, 1}, {1, 0}}}, {}), (Texts{"b", "a"}));
}

TEST(OrderedDiffWithFewestMoves, LeavesOutWhatOnlyShifted)
{
    const auto shifted = Texts{"a", "b", "c"}.comparedWithFewestMoves(Texts{"x", "a", "b", "c"});
    const auto moved = Texts{"a", "b", "c"}.comparedWithFewestMoves(Texts{"x", "c", "a", "b"});

    EXPECT_THAT(shifted->inserts, ElementsAre(0));
    EXPECT_THAT(shifted->moves, IsEmpty());
    EXPECT_THAT(moved->inserts, ElementsAre(0));
    EXPECT_THAT(moved->moves, ElementsAre(Move{2, 1}));
    EXPECT_FALSE(Texts{"a"}.comparedWithFewestMoves(Texts{"a"}).has_value());
}

TEST(OrderedDiff, PrintsItsLists)
{
    const OrderedDiff<int> diff{{0}, {}, {{1, 2}, {3, 4}}};

    EXPECT_EQ(describe(diff), "inserts [0], deletes [], moves [(1, 2), (3, 4)]");
    EXPECT_EQ(describe(OrderedDiff<int>()), "inserts [], deletes [], moves []");
}

TEST(OrderedDiffMove, HashesByBothPlaces)
{
    const std::hash<OrderedDiffMove<int>> hash;

    EXPECT_EQ(hash({1, 2}), hash({1, 2}));
    EXPECT_NE(hash({1, 2}), hash({2, 1}));
    EXPECT_NE(hash({1, 2}), hash({1, 3}));
}
