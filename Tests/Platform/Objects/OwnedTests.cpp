#include "Orrenby/Platform/Objects/Owned.hpp"

#include <gtest/gtest.h>
#include <type_traits>
#include <utility>

namespace {

using orrenby::detail::Owned;

/// Counts those that live, and says what it was made with.
struct Counted {
    Counted(int& count, int number)
        : living(count)
        , value(number)
    {
        ++living;
    }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() { --living; }

    int& living;
    int value;
};

static_assert(!std::is_copy_constructible_v<Owned<Counted>> && !std::is_copy_assignable_v<Owned<Counted>>);
static_assert(std::is_nothrow_move_constructible_v<Owned<Counted>>);
static_assert(sizeof(Owned<Counted>) == sizeof(Counted*));

TEST(Owned, OwnsNothingAtFirst)
{
    const Owned<Counted> owned;

    EXPECT_FALSE(owned);
    EXPECT_EQ(owned.get(), nullptr);
}

TEST(Owned, DeletesItsObjectWithItself)
{
    auto living = 0;
    {
        const auto owned = Owned<Counted>::make(living, 7);

        EXPECT_TRUE(owned);
        EXPECT_EQ(owned->value, 7);
        EXPECT_EQ(&*owned, owned.get());
        EXPECT_EQ(living, 1);
    }
    EXPECT_EQ(living, 0);
}

TEST(Owned, LeavesNothingBehindWhenMoved)
{
    auto living = 0;
    auto first = Owned<Counted>::make(living, 1);

    const auto second = std::move(first);

    EXPECT_FALSE(first); // NOLINT: what a move leaves is stated
    EXPECT_EQ(second->value, 1);
    EXPECT_EQ(living, 1);
}

TEST(Owned, DeletesTheFormerObjectOnAssignment)
{
    auto living = 0;
    auto owned = Owned<Counted>::make(living, 1);

    owned = Owned<Counted>::make(living, 2);

    EXPECT_EQ(owned->value, 2);
    EXPECT_EQ(living, 1);
}

TEST(Owned, KeepsItsObjectWhenAssignedToItself)
{
    auto living = 0;
    auto owned = Owned<Counted>::make(living, 1);
    auto& same = owned;

    owned = std::move(same);

    ASSERT_TRUE(owned);
    EXPECT_EQ(owned->value, 1);
    EXPECT_EQ(living, 1);
}

TEST(Owned, HasTheNewObjectInPlaceWhileTheFormerIsDeleted)
{
    struct Looking {
        explicit Looking(Owned<Looking>& owner)
            : place(owner)
        {}
        ~Looking()
        {
            if (seen != nullptr)
                *seen = place.get();
        }
        Owned<Looking>& place;
        Looking** seen = nullptr;
    };
    Looking* seen = nullptr;
    Owned<Looking> owned;
    owned = Owned<Looking>::make(owned);
    owned->seen = &seen;

    owned = Owned<Looking>::make(owned);

    EXPECT_EQ(seen, owned.get());
}

TEST(Owned, GivesItsObjectAway)
{
    auto living = 0;
    auto owned = Owned<Counted>::make(living, 1);

    auto* object = owned.release();

    EXPECT_FALSE(owned);
    EXPECT_EQ(living, 1);
    delete object;
    EXPECT_EQ(living, 0);
}

TEST(Owned, SwapsWithAnother)
{
    auto living = 0;
    auto first = Owned<Counted>::make(living, 1);
    Owned<Counted> second;

    first.swap(second);

    EXPECT_FALSE(first);
    EXPECT_EQ(second->value, 1);
}

} // namespace
