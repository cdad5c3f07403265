// What a change at one place means for all others: every place of small sets, whole and with a duplicate, and
// every order of few members.

#include "Orrenby/Utilities/OrderedSet.hpp"

#include <algorithm>
#include <gmock/gmock.h>
#include <numeric>
#include <random>
#include <string>
#include <vector>

using namespace orrenby;

namespace {

using Index = std::int64_t;
using Array = std::vector<int>;
using Set = OrderedSet<int>;

constexpr int largest = 8;

/// 0, 1, 2 …
Array counted(int size)
{
    Array array(static_cast<std::size_t>(size));
    std::iota(array.begin(), array.end(), 0);
    return array;
}

/// The array without later duplicates, by scans alone.
Array withoutDuplicates(const Array& array)
{
    Array kept;
    for (const int element : array)
        if (std::find(kept.begin(), kept.end(), element) == kept.end())
            kept.push_back(element);
    return kept;
}

/// The set holds exactly these, and each is known at its place.
void expectWhole(const Set& set, const Array& expected)
{
    ASSERT_EQ(set.elements(), expected);
    ASSERT_EQ(set.count(), static_cast<Index>(expected.size()));
    for (std::size_t place = 0; place < expected.size(); ++place)
        ASSERT_EQ(set.indexOf(expected[place]), static_cast<Index>(place));
}

/// Calls `check` with the members of each set that the setter can make of up to five members by one
/// duplicate: the set, and its array.
template <class Check> void forEachSetWithADuplicate(Check check)
{
    for (int size = 2; size <= 5; ++size)
        for (int place = 0; place < size; ++place)
            for (int other = 0; other < size; ++other) {
                if (place == other)
                    continue;
                SCOPED_TRACE(testing::Message()
                    << "of " << size << " members, the one at " << place << " set to " << other);
                Set set(counted(size));
                set.set(place, other);
                Array array = counted(size);
                array[static_cast<std::size_t>(place)] = other;
                check(set, array);
                if (testing::Test::HasFatalFailure())
                    return;
            }
}

/// How many of the places have to move when as many as possible stay in ascending order: by trying every
/// selection.
std::size_t fewestMoves(const std::vector<Index>& places)
{
    std::size_t most = 0;
    for (std::uint32_t selection = 0; selection < (1U << places.size()); ++selection) {
        std::vector<Index> stays;
        for (std::size_t place = 0; place < places.size(); ++place)
            if ((selection >> place & 1U) != 0)
                stays.push_back(places[place]);
        if (std::is_sorted(stays.begin(), stays.end()))
            most = std::max(most, stays.size());
    }
    return places.size() - most;
}

/// Moves the members of `first` as a diff without inserts and deletes says: what moves is taken out, then put
/// in by ascending place.
Array moved(const Array& first, std::vector<Set::Diff::Move> moves)
{
    Array rest;
    for (std::size_t place = 0; place < first.size(); ++place)
        if (std::none_of(moves.begin(), moves.end(),
                [=](const auto& move) { return move.from == static_cast<Index>(place); }))
            rest.push_back(first[place]);
    std::sort(
        moves.begin(), moves.end(), [](const auto& left, const auto& right) { return left.to < right.to; });
    for (const auto& [from, to] : moves)
        rest.insert(rest.begin() + to, first[static_cast<std::size_t>(from)]);
    return rest;
}

} // namespace

TEST(OrderedSetConsequences, ANewMemberShiftsAllBehindItsPlaceByOne)
{
    for (int size = 0; size <= largest; ++size)
        for (int place = 0; place <= size; ++place) {
            Set set(counted(size));
            auto expected = counted(size);
            expected.insert(expected.begin() + place, 100);

            set.insert(100, place);

            expectWhole(set, expected);
            ASSERT_FALSE(HasFatalFailure()) << "at " << place << " of " << size;
        }
}

TEST(OrderedSetConsequences, AMemberInsertedBeforeItsPlaceMovesThereAndBehindItStays)
{
    for (int size = 1; size <= largest; ++size)
        for (int member = 0; member < size; ++member)
            for (int place = 0; place <= size; ++place) {
                Set set(counted(size));
                auto expected = counted(size);
                if (place < member) {
                    expected.erase(expected.begin() + member);
                    expected.insert(expected.begin() + place, member);
                }

                set.insert(member, place);

                expectWhole(set, expected);
                ASSERT_FALSE(HasFatalFailure()) << member << " at " << place << " of " << size;
            }
}

TEST(OrderedSetConsequences, ARemovedMemberLetsAllBehindItMoveUpByOne)
{
    for (int size = 1; size <= largest; ++size)
        for (int place = 0; place < size; ++place) {
            Set byPlace(counted(size));
            Set byValue(counted(size));
            auto expected = counted(size);
            expected.erase(expected.begin() + place);

            ASSERT_EQ(byPlace.removeAt(place), place);
            ASSERT_EQ(byValue.remove(place), place);

            expectWhole(byPlace, expected);
            expectWhole(byValue, expected);
            ASSERT_EQ(byPlace.indexOf(place), std::nullopt);
            ASSERT_FALSE(HasFatalFailure()) << "at " << place << " of " << size;
        }
}

TEST(OrderedSetConsequences, AReplacedMemberLeavesAllOthersWhereTheyAre)
{
    for (int size = 1; size <= largest; ++size)
        for (int place = 0; place < size; ++place) {
            Set set(counted(size));
            auto expected = counted(size);
            expected[static_cast<std::size_t>(place)] = 100;

            set[place] = 100;

            expectWhole(set, expected);
            ASSERT_EQ(set.indexOf(place), std::nullopt);
            ASSERT_FALSE(HasFatalFailure()) << "at " << place << " of " << size;
        }
}

TEST(OrderedSetConsequences, AReplacedRangeIsWhatARebuildGives)
{
    const std::vector<Array> replacements{{}, {100}, {0}, {5, 100, 5}, {3, 2, 1, 0}};
    for (int size = 0; size <= 6; ++size)
        for (int upper = 0; upper <= size; ++upper)
            for (int lower = 0; lower <= upper; ++lower)
                for (const auto& replacement : replacements) {
                    Set set(counted(size));
                    auto expected = counted(size);
                    expected.erase(expected.begin() + lower, expected.begin() + upper);
                    expected.insert(expected.begin() + lower, replacement.begin(), replacement.end());

                    set.replaceSubrange(lower, upper, replacement);

                    expectWhole(set, withoutDuplicates(expected));
                    ASSERT_FALSE(HasFatalFailure()) << lower << " to " << upper << " of " << size;
                }
}

TEST(OrderedSetWithADuplicateConsequences, InsertingAtAnyPlaceGivesWhatARebuildGives)
{
    forEachSetWithADuplicate([](const Set& broken, const Array& array) {
        for (std::size_t place = 0; place <= array.size(); ++place)
            for (const int member : {0, 1, 4, 100}) {
                auto set = broken;
                auto expected = array;
                expected.insert(expected.begin() + static_cast<Index>(place), member);

                set.insert(member, static_cast<Index>(place));

                expectWhole(set, withoutDuplicates(expected));
                ASSERT_FALSE(HasFatalFailure()) << member << " at " << place;
            }
    });
}

TEST(OrderedSetWithADuplicateConsequences, RemovingAtAnyPlaceGivesWhatARebuildGives)
{
    forEachSetWithADuplicate([](const Set& broken, const Array& array) {
        for (std::size_t place = 0; place < array.size(); ++place) {
            auto set = broken;
            auto expected = array;
            expected.erase(expected.begin() + static_cast<Index>(place));

            ASSERT_EQ(set.removeAt(static_cast<Index>(place)), array[place]);

            expectWhole(set, withoutDuplicates(expected));
            ASSERT_FALSE(HasFatalFailure()) << "at " << place;
        }
    });
}

TEST(OrderedSetWithADuplicateConsequences, RemovingAMemberTakesThePlaceByWhichItIsKnown)
{
    forEachSetWithADuplicate([](const Set& broken, const Array& array) {
        for (const int member : array) {
            auto set = broken;
            auto expected = array;
            expected.erase(expected.begin() + *broken.indexOf(member));

            ASSERT_EQ(set.remove(member), member);

            expectWhole(set, withoutDuplicates(expected));
            ASSERT_FALSE(HasFatalFailure()) << member;
        }
    });
}

TEST(OrderedSetWithADuplicateConsequences, ReplacingTheDuplicateHidesOrKeepsTheOther)
{
    forEachSetWithADuplicate([](const Set& broken, const Array& array) {
        for (std::size_t place = 0; place < array.size(); ++place) {
            auto set = broken;
            auto expected = array;
            expected[place] = 100;

            set.set(static_cast<Index>(place), 100);

            ASSERT_EQ(set.elements(), expected);
            ASSERT_EQ(set.indexOf(100), static_cast<Index>(place));
            ASSERT_EQ(set.indexOf(array[place]), std::nullopt); // even where it still stands elsewhere
        }
    });
}

TEST(OrderedDiffWithFewestMoves, MovesAsFewAsABruteForceInEveryOrderOfUpToSixMembers)
{
    for (int size = 2; size <= 6; ++size) {
        const Set first(counted(size));
        auto order = counted(size);
        while (std::next_permutation(order.begin(), order.end())) {
            const Set second(order);
            std::vector<Index> places;
            for (const int member : first)
                places.push_back(*second.indexOf(member));

            const auto diff = first.comparedWithFewestMoves(second);

            ASSERT_TRUE(diff.has_value());
            ASSERT_EQ(diff->moves.size(), fewestMoves(places)) << second.description();
            ASSERT_EQ(moved(first.elements(), diff->moves), order);
        }
    }
}

TEST(OrderedDiffWithFewestMoves, MovesAsFewAsABruteForceInRandomOrdersOfUpToTenMembers)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937_64 engine(seed);
        const auto size = static_cast<int>(7 + engine() % 4);
        const Set first(counted(size));
        auto order = counted(size);
        for (std::size_t place = order.size() - 1; place > 0; --place)
            std::swap(order[place], order[engine() % (place + 1)]);
        const Set second(order);
        std::vector<Index> places;
        for (const int member : first)
            places.push_back(*second.indexOf(member));

        const auto diff = first.comparedWithFewestMoves(second);

        ASSERT_EQ(diff ? diff->moves.size() : 0, fewestMoves(places)) << second.description();
        ASSERT_EQ(moved(first.elements(), diff ? diff->moves : std::vector<Set::Diff::Move>()), order);
    }
}

TEST(OrderedDiffApplied, GivesEveryOrderOfUpToSixMembers)
{
    for (int size = 2; size <= 6; ++size) {
        const Set first(counted(size));
        auto order = counted(size);
        while (std::next_permutation(order.begin(), order.end())) {
            const Set second(order);

            const auto rebuilt = first.applying(*first.compared(second), {});

            ASSERT_EQ(rebuilt, second);
        }
    }
}
