#include "Orrenby/Utilities/Streams/AnyCancellable.hpp"

#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

TEST(AnyCancellable, EndsTheSubscriptionsOfItsOwnerTogether)
{
    const auto numbers = Streams::PassthroughSubject<int, Never>();
    auto seen = std::vector<int>();

    //! [Keeping a subscription]
    auto subscriptions = Streams::CancellableSet();
    numbers.asPublisher().bind([&](int number) { seen.push_back(number); }).store(subscriptions);
    numbers.asPublisher().bind([&](int number) { seen.push_back(-number); }).store(subscriptions);
    numbers.send(1);

    subscriptions.clear(); // both end here
    numbers.send(2);
    //! [Keeping a subscription]

    EXPECT_THAT(seen, ElementsAre(1, -1));
}

struct Owner {
    Streams::CancellableSet set;
    template <class Change> void modifyCancellables(Change change) { change(set); }
};

TEST(AnyCancellable, StoresItselfWithAnOwnerThatKeepsASet)
{
    const auto numbers = Streams::PassthroughSubject<int, Never>();
    auto owner = Owner();

    numbers.asPublisher().bind([](int) {}).store(owner);

    EXPECT_EQ(owner.set.size(), 1U);
}

TEST(AnyCancellable, AMovedFromHandleIsEmpty)
{
    const auto numbers = Streams::PassthroughSubject<int, Never>();
    auto handle = numbers.asPublisher().bind([](int) {});
    const auto moved = std::move(handle);

    EXPECT_EQ(handle, Streams::AnyCancellable()); // NOLINT: what is left is specified
    EXPECT_NE(moved, Streams::AnyCancellable());
}

TEST(AnyCancellable, SerialNumbersFollowTheOrderOfSubscribing)
{
    const auto numbers = Streams::PassthroughSubject<int, Never>();

    const auto first = numbers.asPublisher().bind([](int) {});
    const auto second = numbers.asPublisher().bind([](int) {});

    EXPECT_EQ(second.hash(), first.hash() + 1);
    EXPECT_EQ(std::hash<Streams::AnyCancellable>()(first), first.hash());
}

} // namespace
