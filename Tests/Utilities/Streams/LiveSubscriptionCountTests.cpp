#include "Orrenby/Utilities/Streams/LiveSubscriptionCount.hpp"

#include "Orrenby/Utilities/Streams/AnyCancellable.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <gtest/gtest.h>
#include <optional>

namespace {

using namespace orrenby;

TEST(LiveSubscriptionCount, IsZeroBeforeTheFirstSubscription)
{
    auto subject = Streams::PassthroughSubject<int, Never>();

    EXPECT_EQ(Streams::liveSubscriptionCount(), 0);
}

TEST(LiveSubscriptionCount, RisesWithEachSubscriptionAndFallsWithEachHandle)
{
    //! [Finding forgotten subscriptions]
    auto subject = Streams::PassthroughSubject<int, Never>();
    auto handles = Streams::CancellableSet();
    subject.eraseToAnyPublisher().bind([](int) {}).store(handles);
    subject.eraseToAnyPublisher().bind([](int) {}).store(handles);
    EXPECT_EQ(Streams::liveSubscriptionCount(), 2);

    handles.clear();
    EXPECT_EQ(Streams::liveSubscriptionCount(), 0);
    //! [Finding forgotten subscriptions]
}

TEST(LiveSubscriptionCount, CountsHandlesOfOneSubscriptionOnce)
{
    auto subject = Streams::PassthroughSubject<int, Never>();
    const auto handle = subject.eraseToAnyPublisher().bind([](int) {});
    const auto copy = handle; // NOLINT(performance-unnecessary-copy-initialization)

    EXPECT_EQ(Streams::liveSubscriptionCount(), 1);
}

TEST(LiveSubscriptionCount, CountsACancelledSubscriptionAsLongAsItsHandleIsKept)
{
    auto subject = Streams::PassthroughSubject<int, Never>();
    auto handle = subject.eraseToAnyPublisher().bind([](int) {});

    handle.cancel();
    EXPECT_EQ(Streams::liveSubscriptionCount(), 1);

    handle = {};
    EXPECT_EQ(Streams::liveSubscriptionCount(), 0);
}

TEST(LiveSubscriptionCount, CountsASubscriptionThatIsDroppedInsideItsCallbackUntilThatReturns)
{
    auto subject = Streams::PassthroughSubject<int, Never>();
    std::optional<Streams::AnyCancellable> handle;
    auto countInside = std::int64_t(-1);
    handle = subject.eraseToAnyPublisher().bind([&](int) {
        handle.reset();
        countInside = Streams::liveSubscriptionCount();
    });

    subject.send(1);

    EXPECT_EQ(countInside, 1);
    EXPECT_EQ(Streams::liveSubscriptionCount(), 0);
}

} // namespace
