#include "Orrenby/Utilities/Streams/More/Await.hpp"

#include "Orrenby/Utilities/Streams/Future.hpp"
#include "Orrenby/Utilities/Streams/Just.hpp"
#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"
#include <stdexcept>

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class AwaitContract : public orrenby::testing::BothEngines {};

using Completion = Streams::Completion<Trouble>;
using Texts = std::vector<std::string>;

/// Reads to the end and notes what it gets.
Streams::Task reads(NumberSubject numbers, Texts& notes)
{
    //! [Reading a stream]
    auto values = Streams::values(numbers);
    for (auto isOver = false; !isOver;) {
        try {
            while (const auto value = co_await values.next())
                notes.push_back(std::to_string(*value));
            isOver = true;
        } catch (const Trouble& trouble) {
            notes.push_back("trouble " + std::to_string(trouble.number)); // the stream goes on
        }
    }
    //! [Reading a stream]
    notes.push_back("end");
}

TEST_P(AwaitContract, AReaderGetsEveryElementUpToTheEnd)
{
    const auto subject = NumberSubject();
    auto notes = Texts();
    const auto task = reads(subject, notes);

    subject.send(1);
    subject.send(Trouble{2});
    subject.send(3);
    subject.send(Completion::finished());

    EXPECT_THAT(notes, ElementsAre("1", "trouble 2", "3", "end"));
}

Streams::Task readsAfter(NumberSubject numbers, NumberSubject gate, Texts& notes)
{
    auto values = Streams::values(numbers);
    (void)co_await Streams::next(gate);
    while (const auto value = co_await values.next())
        notes.push_back(std::to_string(*value));
    notes.push_back("end");
    if (!co_await values.next())
        notes.push_back("still");
}

TEST_P(AwaitContract, AReaderKeepsWhatComesWhileNobodyWaits)
{
    const auto subject = NumberSubject();
    const auto gate = NumberSubject();
    auto notes = Texts();
    const auto task = readsAfter(subject, gate, notes);

    subject.send(1);
    subject.send(2);
    subject.send(Completion::finished());
    EXPECT_THAT(notes, IsEmpty());
    gate.send(0);

    EXPECT_THAT(notes, ElementsAre("1", "2", "end", "still"));
}

Streams::Task twoReadersOfOne(Streams::Values<int, Trouble>& values) { (void)co_await values.next(); }

TEST_P(AwaitContract, TwoThatWaitForOneReaderEndTheProcess)
{
    const auto subject = NumberSubject();
    auto values = Streams::values(subject);
    const auto first = twoReadersOfOne(values);

    EXPECT_DEATH((void)twoReadersOfOne(values), "Two coroutines wait for the next value of one reader");
}

template <class P> Streams::Task awaitsNext(P publisher, Texts& notes)
{
    try {
        //! [Waiting for one value]
        if (const auto value = co_await Streams::next(publisher))
            notes.push_back(std::to_string(*value));
        else
            notes.push_back("ended");
        //! [Waiting for one value]
    } catch (const Trouble& trouble) {
        notes.push_back("trouble " + std::to_string(trouble.number));
    }
}

TEST_P(AwaitContract, NextGivesTheFirstElementThatComes)
{
    const auto subject = NumberSubject();
    auto notes = Texts();
    const auto first = awaitsNext(subject, notes);
    const auto second = awaitsNext(subject.asPublisher(), notes);

    subject.send(1);
    subject.send(2);

    EXPECT_THAT(notes, ElementsAre("1", "1"));
}

TEST_P(AwaitContract, NextThrowsAFailure)
{
    auto notes = Texts();

    const auto task = awaitsNext(Streams::Just<int, Trouble>(Trouble{4}), notes);

    EXPECT_THAT(notes, ElementsAre("trouble 4"));
}

TEST_P(AwaitContract, NextGivesNothingAtTheEnd)
{
    const auto subject = NumberSubject();
    auto notes = Texts();
    const auto waiting = awaitsNext(subject, notes);
    subject.send(Completion::finished());

    const auto late = awaitsNext(subject, notes);

    EXPECT_THAT(notes, ElementsAre("ended", "ended"));
}

TEST_P(AwaitContract, NextLetsTheStreamGo)
{
    const auto before = Streams::liveSubscriptionCount();
    const auto subject = NumberSubject();
    auto notes = Texts();
    auto finished = awaitsNext(subject, notes);
    EXPECT_EQ(Streams::liveSubscriptionCount(), before + 1);
    subject.send(1);
    EXPECT_EQ(Streams::liveSubscriptionCount(), before);

    auto cancelled = awaitsNext(subject, notes);
    cancelled.cancel();

    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
}

template <class P> Streams::Task awaits(P publisher, Texts& notes)
{
    try {
        notes.push_back(std::to_string(co_await publisher));
    } catch (const Trouble& trouble) {
        notes.push_back("trouble " + std::to_string(trouble.number));
    } catch (const Streams::StreamEndedError& error) {
        notes.push_back(error.what());
    }
}

Streams::Task awaitsAnswer(Streams::Future<int, Trouble> answer, Texts& notes)
{
    //! [Waiting for a future]
    const auto number = co_await answer;
    //! [Waiting for a future]
    notes.push_back(std::to_string(number));
}

TEST_P(AwaitContract, AFutureGivesItsResult)
{
    using Future = Streams::Future<int, Trouble>;
    auto promises = std::vector<Future::Promise>();
    auto notes = Texts();
    const auto answer = Future([&](const auto& promise) {
        promises.push_back(promise);
        return nullptr;
    });
    const auto task = awaitsAnswer(answer, notes);
    EXPECT_THAT(notes, IsEmpty());

    promises.at(0)(Result<int, Trouble>::success(42));

    EXPECT_THAT(notes, ElementsAre("42"));
}

TEST_P(AwaitContract, AFutureThrowsItsFailure)
{
    using Future = Streams::Future<int, Trouble>;
    auto notes = Texts();

    const auto task = awaits(Future([](const auto& promise) {
        promise(Result<int, Trouble>::failure({3}));
        return nullptr;
    }),
        notes);

    EXPECT_THAT(notes, ElementsAre("trouble 3"));
}

TEST_P(AwaitContract, AStreamThatEndsWithoutAnElementThrowsThat)
{
    const auto subject = NumberSubject();
    auto notes = Texts();
    const auto task = awaits(subject.asPublisher(), notes);

    subject.send(Completion::finished());

    EXPECT_THAT(notes, ElementsAre("The stream ended without an element"));
}

Streams::Task awaitsAnything(Streams::AnyPublisher<int, AnyError> publisher, Texts& notes)
{
    try {
        (void)co_await publisher;
    } catch (const std::runtime_error& error) {
        notes.push_back(error.what());
    }
}

TEST_P(AwaitContract, AnErrorOfAnyTypeIsThrownAsWhatItHolds)
{
    auto notes = Texts();
    const auto failing = Streams::Just<int, Never>(1).eraseToAnyPublisher().tryMap(
        [](int) -> int { throw std::runtime_error("as it was"); });

    const auto task = awaitsAnything(failing, notes);

    EXPECT_THAT(notes, ElementsAre("as it was"));
}

TEST_P(AwaitContract, ACoroutineGoesOnOnTheThreadThatSends)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto thread = std::thread::id();
    const auto task = [](auto numbers, std::thread::id& seen) -> Streams::Task {
        (void)co_await numbers;
        seen = std::this_thread::get_id();
    }(subject, thread);

    auto sender = std::thread([&] { subject.send(1); });
    const auto expected = sender.get_id();
    sender.join();

    EXPECT_EQ(thread, expected);
}

/// A coroutine of another kind: its owner destroys it, and knows that nobody runs it meanwhile.
struct Foreign {
    struct promise_type {
        Foreign get_return_object() { return {std::coroutine_handle<promise_type>::from_promise(*this)}; }
        std::suspend_never initial_suspend() const noexcept { return {}; }
        std::suspend_always final_suspend() const noexcept { return {}; }
        void return_void() const noexcept {}
        void unhandled_exception() const noexcept { std::terminate(); }
    };
    std::coroutine_handle<promise_type> frame;
};

Foreign reads(Streams::Values<int, Trouble>& values, Texts& notes)
{
    while (const auto value = co_await values.next())
        notes.push_back(std::to_string(*value));
}

TEST_P(AwaitContract, CoroutinesOfOtherKindsAreResumedAndMayBeDestroyedWhileTheyWait)
{
    const auto subject = NumberSubject();
    auto values = Streams::values(subject);
    auto notes = Texts();
    const auto first = reads(values, notes);

    subject.send(1);
    first.frame.destroy();
    subject.send(2);
    const auto second = reads(values, notes);
    subject.send(3);
    second.frame.destroy();

    EXPECT_THAT(notes, ElementsAre("1", "2", "3"));
}

INSTANTIATE_ON_BOTH_ENGINES(AwaitContract);

} // namespace
