#include "Orrenby/Utilities/OrderedSet.hpp"

#include <cstddef>
#include <functional>
#include <gmock/gmock.h>
#include <stdexcept>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

/// How many copies, moves and hashes are still done before one throws. Below zero none does.
int fuse = -1;

void burn()
{
    if (fuse >= 0 && fuse-- == 0)
        throw std::runtime_error("burnt");
}

/// Throws when it is copied, moved or hashed once the fuse has burnt down.
struct Fragile {
    Fragile(int value)
        : number(value)
    {}
    Fragile(const Fragile& other)
        : number(other.number)
    {
        burn();
    }
    Fragile& operator=(const Fragile& other)
    {
        burn();
        number = other.number;
        return *this;
    }
    ~Fragile() = default;
    friend bool operator==(const Fragile&, const Fragile&) = default;

    int number;
};

/// Throws when it is hashed.
struct Unhashable {
    int number = 0;
    friend bool operator==(const Unhashable&, const Unhashable&) = default;
};

} // namespace

template <> struct std::hash<Fragile> {
    std::size_t operator()(const Fragile& value) const
    {
        burn();
        return static_cast<std::size_t>(value.number);
    }
};
template <> struct std::hash<Unhashable> {
    std::size_t operator()(const Unhashable& value) const
    {
        burn();
        return static_cast<std::size_t>(value.number);
    }
};

namespace {

/// The numbers of the members, each looked up in its place.
template <class Set> std::vector<int> wholeNumbers(const Set& set)
{
    std::vector<int> numbers;
    for (std::int64_t position = 0; position < set.endIndex(); ++position) {
        EXPECT_EQ(set.indexOf(set[position]), position);
        numbers.push_back(set[position].number);
    }
    EXPECT_EQ(set.count(), set.endIndex());
    return numbers;
}

/// Lets everything in the change throw in turn, and gives what comes out when nothing does.
template <class Element, class Change> std::vector<int> survived(Change change)
{
    for (int length = 0; length < 1'000; ++length) {
        OrderedSet<Element> set{Element{1}, Element{2}, Element{3}, Element{4}};
        fuse = length;
        try {
            change(set);
            fuse = -1;
            return wholeNumbers(set);
        } catch (const std::runtime_error&) {
            fuse = -1;
            EXPECT_THAT(wholeNumbers(set), ElementsAre(1, 2, 3, 4)) << length;
        }
    }
    throw std::logic_error("it always throws");
}

template <class Element> class OrderedSetThatFails : public ::testing::Test {};
using Elements = ::testing::Types<Fragile, Unhashable>;
TYPED_TEST_SUITE(OrderedSetThatFails, Elements);

TYPED_TEST(OrderedSetThatFails, IsAsBeforeItWasToAppendOrInsert)
{
    using Set = OrderedSet<TypeParam>;

    EXPECT_THAT(survived<TypeParam>([](Set& set) { set.append({5}); }), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(survived<TypeParam>([](Set& set) { set.append({2}); }), ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(survived<TypeParam>([](Set& set) { set.insert({5}, 1); }), ElementsAre(1, 5, 2, 3, 4));
    EXPECT_THAT(survived<TypeParam>([](Set& set) { set.insert({4}, 1); }), ElementsAre(1, 4, 2, 3));
    EXPECT_THAT(survived<TypeParam>([](Set& set) {
        set.insertContentsOf({{5}, {6}}, 4);
    }),
        ElementsAre(1, 2, 3, 4, 5, 6));
}

TYPED_TEST(OrderedSetThatFails, IsAsBeforeItWasToRemove)
{
    using Set = OrderedSet<TypeParam>;

    EXPECT_THAT(survived<TypeParam>([](Set& set) { set.remove({2}); }), ElementsAre(1, 3, 4));
    EXPECT_THAT(survived<TypeParam>([](Set& set) { set.removeAt(0); }), ElementsAre(2, 3, 4));
    EXPECT_THAT(survived<TypeParam>([](Set& set) { set.removeLast(); }), ElementsAre(1, 2, 3));
    EXPECT_THAT(survived<TypeParam>([](Set& set) { set.removeSubrange(1, 3); }), ElementsAre(1, 4));
    EXPECT_THAT(survived<TypeParam>(
                    [](Set& set) { set.removeAll([](const auto& value) { return value.number == 3; }); }),
        ElementsAre(1, 2, 4));
}

TYPED_TEST(OrderedSetThatFails, IsAsBeforeItWasToBeSortedReservedOrAssigned)
{
    using Set = OrderedSet<TypeParam>;
    const auto isAfter = [](const auto& first, const auto& second) { return first.number > second.number; };
    const Set other{TypeParam{7}, TypeParam{8}};

    EXPECT_THAT(survived<TypeParam>([&](Set& set) { set.sort(isAfter); }), ElementsAre(4, 3, 2, 1));
    EXPECT_THAT(survived<TypeParam>([](Set& set) { set.reserveCapacity(100); }), ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(survived<TypeParam>([&](Set& set) { set = other; }), ElementsAre(7, 8));
}

TEST(OrderedSetThatFails, IsAsBeforeAMemberWasToBeSet)
{
    using Set = OrderedSet<Unhashable>;

    EXPECT_THAT(survived<Unhashable>([](Set& set) { set.set(1, {9}); }), ElementsAre(1, 9, 3, 4));
    EXPECT_THAT(survived<Unhashable>([](Set& set) { set[1] = Unhashable{9}; }), ElementsAre(1, 9, 3, 4));
}

TEST(OrderedSetThatFails, KeepsWhatItHasAddedOfASequence)
{
    OrderedSet<Unhashable> set{Unhashable{1}};
    fuse = 1;

    EXPECT_THROW(set.appendContentsOf({{2}, {3}}), std::runtime_error);

    fuse = -1;
    EXPECT_THAT(wholeNumbers(set), ElementsAre(1, 2));
}

} // namespace
