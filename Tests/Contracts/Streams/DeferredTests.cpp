#include "Orrenby/Utilities/Streams/Deferred.hpp"

#include "Orrenby/Utilities/Streams/Just.hpp"
#include "Orrenby/Utilities/Streams/LiveSubscriptionCount.hpp"
#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"
#include "Tests/Support/StreamEngines.hpp"
#include <memory>
#include <string>

using namespace orrenby;
using orrenby::testing::Received;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;

namespace {

class DeferredContract : public orrenby::testing::BothEngines {};

using Number = Streams::Payload<int, Trouble>;
using Just = Streams::Just<int, Trouble>;
using Subject = Streams::PassthroughSubject<int, Trouble>;

TEST_P(DeferredContract, CallsItsCallableOnceForEachSubscriptionAndNotBefore)
{
    auto calls = 0;
    auto received = Received<int, Trouble>();

    //! [A stream for each subscriber]
    const auto counted = Streams::Deferred<Just>([&] { return Just(++calls); });
    const auto publisher = counted.asPublisher(); // nothing was called so far
    //! [A stream for each subscriber]
    EXPECT_EQ(calls, 0);
    const auto first = publisher.sink(received.recorder());
    EXPECT_EQ(calls, 1);
    const auto second = publisher.sink(received.recorder());

    EXPECT_EQ(calls, 2);
    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1), Number::value(2)));
}

TEST_P(DeferredContract, PassesOnWhatItsStreamSendsLater)
{
    const auto subject = Subject();
    auto received = Received<int, Trouble>();

    const auto handle
        = Streams::Deferred<Subject>([&] { return subject; }).asPublisher().sink(received.recorder());
    subject.send(1);
    subject.send(Trouble{2});

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1), Number::error({2})));
}

TEST_P(DeferredContract, StopsWhenItIsCancelled)
{
    const auto subject = Subject();
    auto received = Received<int, Trouble>();
    const auto handle
        = Streams::Deferred<Subject>([&] { return subject; }).asPublisher().sink(received.recorder());

    handle.cancel();
    subject.send(1);

    EXPECT_THAT(received.payloads, ElementsAre());
}

TEST_P(DeferredContract, KeepsTheStreamThatNobodyElseKeeps)
{
    auto number = std::make_shared<int>(3);
    const auto watched = std::weak_ptr<int>(number);
    auto received = Received<int, Trouble>();
    const auto subject = Subject();
    auto handle = [&] {
        const auto publisher = Streams::Deferred<Streams::AnyPublisher<int, Trouble>>(
            [&] { return subject.asPublisher().map([number](int value) { return value + *number; }); });
        return publisher.asPublisher().sink(received.recorder());
    }();
    number.reset();

    subject.send(1);
    EXPECT_THAT(received.payloads, ElementsAre(Number::value(4)));
    EXPECT_FALSE(watched.expired());
    handle = {};

    EXPECT_TRUE(watched.expired());
}

TEST_P(DeferredContract, DeliversNothingAfterACancellationInsideItsOwnOperators)
{
    const auto subject = Subject();
    auto received = Received<int, Trouble>();
    auto handle = Streams::AnyCancellable();
    const auto publisher = Streams::Deferred<Streams::AnyPublisher<int, Trouble>>([&] {
        return subject.asPublisher().map([&](int value) {
            handle.cancel();
            return value;
        });
    });

    handle = publisher.asPublisher().sink(received.recorder());
    subject.send(1);

    EXPECT_THAT(received.payloads, ElementsAre());
}

TEST_P(DeferredContract, MayStandInsideAnother)
{
    auto received = Received<int, Trouble>();
    using Inner = Streams::Deferred<Just>;

    const auto handle = Streams::Deferred<Inner>([] { return Inner([] { return Just(5); }); })
                            .asPublisher()
                            .map([](int value) { return value + 1; })
                            .sink(received.recorder());

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(6)));
}

TEST_P(DeferredContract, LeavesNothingBehind)
{
    const auto before = Streams::liveSubscriptionCount();

    {
        const auto subject = Subject();
        const auto handle
            = Streams::Deferred<Subject>([&] { return subject; }).asPublisher().sink([](const auto&) {});
        EXPECT_EQ(Streams::liveSubscriptionCount(), before + 1);
    }

    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
}

TEST_P(DeferredContract, WaitsForADeliveryOnAnotherThread)
{
    orrenby::testing::expectToWaitForADeliveryElsewhere(
        [](const auto& publisher) {
            using Publisher = Streams::AnyPublisher<int, Trouble>;
            return Streams::Deferred<Publisher>([publisher] { return publisher; }).asPublisher();
        },
        orrenby::testing::sendOne);
}

TEST_P(DeferredContract, RefusesAStreamOfTheOtherEngine)
{
    const auto other = Just(1);
    orrenby::testing::TestAccess::resetEngineChoice();
    Streams::set({.isCombineEnabledWhenAvailable = GetParam() != detail::Engine::Combine});
    const auto deferred = Streams::Deferred<Just>([&] { return other; });

    EXPECT_DEATH((void)deferred.asPublisher().sink([](const auto&) {}), "used with the other engine");
}

TEST_P(DeferredContract, ACallableThatThrowsEndsTheProcess)
{
    const auto deferred = Streams::Deferred<Just>([]() -> Just { throw 1; });

    EXPECT_DEATH((void)deferred.asPublisher().sink([](const auto&) {}), "");
}

static_assert(StreamsPublisher<Streams::Deferred<Just>>);

INSTANTIATE_ON_BOTH_ENGINES(DeferredContract);

} // namespace
