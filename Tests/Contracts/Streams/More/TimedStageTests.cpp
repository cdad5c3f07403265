#include "Orrenby/Utilities/Streams/More/TimedStage.hpp"

#include "Orrenby/Utilities/Streams/More/Debounce.hpp"
#include "Orrenby/Utilities/Streams/More/Retry.hpp"
#include "Orrenby/Utilities/Streams/More/Throttle.hpp"
#include "Orrenby/Utilities/Streams/More/Timeout.hpp"
#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Trouble;

namespace {

/// What timed operators have in common, on real threads and queues. No test waits for time to pass.
class TimedStageContract : public orrenby::testing::BothEngines {
protected:
    using Publisher = Streams::AnyPublisher<int, Trouble>;

    static constexpr auto count = 1'000;

    /// Three threads send, the operator's own queue delivers as well, and the last of them ends the stream.
    static void expectNoOverlap(const std::function<Publisher(const Publisher&)>& apply)
    {
        const auto subject = NumberSubject();
        auto inside = std::atomic(0);
        auto delivered = 0; // deliveries do not overlap
        auto ended = std::promise<void>();
        const auto handle = Streams::sinkUntilEnd(
            apply(subject.asPublisher()),
            [&](const auto&) {
                EXPECT_EQ(inside.fetch_add(1), 0);
                ++delivered;
                --inside;
            },
            [&] { ended.set_value(); });
        auto running = std::atomic(3);
        auto threads = std::vector<std::thread>();
        for (auto thread = 0; thread < 3; ++thread)
            threads.emplace_back([&] {
                for (auto i = 0; i < count; ++i)
                    subject.send(i);
                if (--running == 0)
                    subject.send(Streams::Completion<Trouble>::finished());
            });
        ended.get_future().wait();
        for (auto& thread : threads)
            thread.join();

        EXPECT_GE(delivered, 1);
        EXPECT_LE(delivered, 3 * count);
    }

    static void expectToBeCancelledAtAnyMoment(const std::function<Publisher(const Publisher&)>& apply)
    {
        const auto before = Streams::liveSubscriptionCount();
        for (auto round = 0; round < 50; ++round) {
            const auto subject = NumberSubject();
            auto isCancelled = std::atomic(false);
            auto sent = std::atomic(0);
            auto handle = apply(subject.asPublisher()).sink([&](const auto&) { EXPECT_FALSE(isCancelled); });
            auto sender = std::thread([&] {
                for (auto i = 0; i < 200; ++i) {
                    if (i % 50 == 49)
                        subject.send(Trouble{i});
                    else
                        subject.send(i);
                    ++sent;
                }
            });
            while (sent <= round)
                std::this_thread::yield();
            handle.cancelAndWait();
            isCancelled = true;
            sender.join();
            handle = {};
        }
        // A wake-up that runs at this moment lets go of its stage when it returns.
        while (Streams::liveSubscriptionCount() != before)
            std::this_thread::yield();
    }
};

const auto debounced = [](const auto& publisher) { return Streams::debounce(publisher, 1e-5); };
const auto throttled = [](const auto& publisher) { return Streams::throttle(publisher, 1e-5); };
const auto limited = [](const auto& publisher) { return Streams::timeout(publisher, 3600, Trouble{}); };
const auto retried = [](const auto& publisher) {
    return Streams::retry(publisher, {.interval = 1e-5, .limit = 1'000, .method = Retry::Linear{}});
};

TEST_P(TimedStageContract, DebounceDoesNotOverlap) { expectNoOverlap(debounced); }
TEST_P(TimedStageContract, ThrottleDoesNotOverlap) { expectNoOverlap(throttled); }
TEST_P(TimedStageContract, TimeoutDoesNotOverlap) { expectNoOverlap(limited); }
TEST_P(TimedStageContract, RetryDoesNotOverlap) { expectNoOverlap(retried); }

TEST_P(TimedStageContract, DebounceIsCancelledAtAnyMoment) { expectToBeCancelledAtAnyMoment(debounced); }
TEST_P(TimedStageContract, ThrottleIsCancelledAtAnyMoment) { expectToBeCancelledAtAnyMoment(throttled); }
TEST_P(TimedStageContract, TimeoutIsCancelledAtAnyMoment) { expectToBeCancelledAtAnyMoment(limited); }
TEST_P(TimedStageContract, RetryIsCancelledAtAnyMoment) { expectToBeCancelledAtAnyMoment(retried); }

INSTANTIATE_ON_BOTH_ENGINES(TimedStageContract);

} // namespace
