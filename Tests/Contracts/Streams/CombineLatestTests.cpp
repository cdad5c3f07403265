#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"

#include "Orrenby/Utilities/Streams/Just.hpp"
#include "Orrenby/Utilities/Streams/LiveSubscriptionCount.hpp"
#include "Tests/Support/StreamEngines.hpp"
#include <bit>
#include <memory>
#include <string>
#include <thread>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

using Numbers = Streams::PassthroughSubject<int, Never>;
using Texts = Streams::PassthroughSubject<std::string, Never>;
using Pair = std::tuple<int, std::string>;

class CombineLatestContract : public orrenby::testing::BothEngines {
protected:
    void SetUp() override
    {
        BothEngines::SetUp();
        m_numbers.emplace();
        m_texts.emplace();
    }

    const Numbers& numbers() const { return *m_numbers; }
    const Texts& texts() const { return *m_texts; }
    auto pairs() const { return numbers().asPublisher().combineLatest(texts().asPublisher()); }

    std::vector<Pair> m_received;
    auto recorder()
    {
        return [this](const Pair& pair) { m_received.push_back(pair); };
    }

private:
    std::optional<Numbers> m_numbers;
    std::optional<Texts> m_texts;
};

TEST_P(CombineLatestContract, SendsATupleForEachValueOnceAllHaveSentOne)
{
    //! [Combining streams]
    const auto subscription = numbers().asPublisher().combineLatest(texts().asPublisher()).bind(recorder());
    numbers().send(1);
    texts().send("a"); // 1, a
    numbers().send(2); // 2, a
    texts().send("b"); // 2, b
    //! [Combining streams]

    EXPECT_THAT(m_received, ElementsAre(Pair(1, "a"), Pair(2, "a"), Pair(2, "b")));
}

TEST_P(CombineLatestContract, SendsNothingBesideAStreamThatNeverSends)
{
    const auto handle = pairs().bind(recorder());

    numbers().send(1);
    numbers().send(2);

    EXPECT_THAT(m_received, ElementsAre());
}

TEST_P(CombineLatestContract, UsesTheLatestOfSeveralEarlyValues)
{
    const auto handle = pairs().bind(recorder());

    numbers().send(1);
    numbers().send(2);
    texts().send("a");

    EXPECT_THAT(m_received, ElementsAre(Pair(2, "a")));
}

TEST_P(CombineLatestContract, OfThreePutsTheReceiverFirstAndKeepsTheOrderOfArguments)
{
    const auto flags = Streams::CurrentValueSubject<bool, Never>(true);
    auto received = std::vector<std::tuple<int, std::string, bool>>();
    const auto handle = numbers()
                            .asPublisher()
                            .combineLatest(texts().asPublisher(), flags.asPublisher())
                            .bind([&](const auto& tuple) { received.push_back(tuple); });

    texts().send("a");
    numbers().send(1);
    flags.send(false);

    EXPECT_THAT(received, ElementsAre(std::tuple(1, "a", true), std::tuple(1, "a", false)));
}

TEST_P(CombineLatestContract, OfFourCombinesFour)
{
    const auto first = Streams::CurrentValueSubject<int, Never>(1);
    const auto second = Streams::CurrentValueSubject<int, Never>(2);
    const auto third = Streams::CurrentValueSubject<int, Never>(3);
    const auto fourth = Streams::CurrentValueSubject<int, Never>(4);
    auto received = std::vector<std::tuple<int, int, int, int>>();

    const auto handle = first.asPublisher()
                            .combineLatest(second.asPublisher(), third.asPublisher(), fourth.asPublisher())
                            .bind([&](const auto& tuple) { received.push_back(tuple); });
    third.send(30);

    EXPECT_THAT(received, ElementsAre(std::tuple(1, 2, 3, 4), std::tuple(1, 2, 30, 4)));
}

TEST_P(CombineLatestContract, OfOneStreamWithItselfSendsOneTupleForEachSide)
{
    auto received = std::vector<std::tuple<int, int>>();
    const auto publisher = numbers().asPublisher();
    const auto handle = publisher.combineLatest(publisher).bind(
        [&](const auto& tuple) { received.push_back(tuple); });

    numbers().send(1);
    numbers().send(2);

    EXPECT_THAT(received, ElementsAre(std::tuple(1, 1), std::tuple(2, 1), std::tuple(2, 2)));
}

TEST_P(CombineLatestContract, StopsWhenItIsCancelledAlsoInsideItsOwnCallback)
{
    auto handle = Streams::AnyCancellable();
    handle = pairs().bind([&](const Pair& pair) {
        m_received.push_back(pair);
        handle.cancel();
    });

    numbers().send(1);
    texts().send("a");
    texts().send("b");
    numbers().send(2);

    EXPECT_THAT(m_received, ElementsAre(Pair(1, "a")));
}

TEST_P(CombineLatestContract, ValuesSentInsideItsCallbackFollowInTheirOrder)
{
    const auto handle = pairs().bind([&](const Pair& pair) {
        m_received.push_back(pair);
        if (pair == Pair(1, "a")) {
            numbers().send(2);
            texts().send("b");
        }
    });

    texts().send("a");
    numbers().send(1);

    EXPECT_THAT(m_received, ElementsAre(Pair(1, "a"), Pair(1, "b"), Pair(2, "b")));
}

TEST_P(CombineLatestContract, AMillionNestedSendsNeedNoStack)
{
    constexpr auto count = 1'000'000;
    auto last = 0;
    const auto state = Streams::CurrentValueSubject<int, Never>(0);
    const auto handle = state.asPublisher().combineLatest(state.asPublisher()).bind([&](const auto& tuple) {
        last = std::get<0>(tuple);
        if (last == std::get<1>(tuple) && last < count)
            state.send(last + 1);
    });

    state.send(1);

    EXPECT_EQ(last, count);
}

TEST_P(CombineLatestContract, GoesOnWithTheLastValueOfASourceThatHasEnded)
{
    const auto handle = pairs().bind(recorder());

    texts().send("a");
    texts().send(Texts::Completion::finished());
    numbers().send(1);
    numbers().send(2);

    EXPECT_THAT(m_received, ElementsAre(Pair(1, "a"), Pair(2, "a")));
}

TEST_P(CombineLatestContract, TakesSourcesThatDeliverWhileItSubscribes)
{
    const auto handle = Streams::Just<int, Never>(1)
                            .asPublisher()
                            .combineLatest(Streams::Just<std::string, Never>("a").asPublisher())
                            .bind(recorder());

    EXPECT_THAT(m_received, ElementsAre(Pair(1, "a")));
}

TEST_P(CombineLatestContract, ItsResultTakesOperatorsAndCombinesFurther)
{
    auto received = std::vector<std::string>();
    const auto lengths = pairs().map(
        [](const Pair& pair) { return std::get<1>(pair) + std::to_string(std::get<0>(pair)); });
    const auto handle = lengths.combineLatest(numbers().asPublisher()).bind([&](const auto& tuple) {
        received.push_back(std::get<0>(tuple) + "/" + std::to_string(std::get<1>(tuple)));
    });

    texts().send("a");
    numbers().send(1);

    EXPECT_THAT(received, ElementsAre("a1/1"));
}

TEST_P(CombineLatestContract, LeavesNothingBehind)
{
    const auto before = Streams::liveSubscriptionCount();
    const auto content = std::make_shared<int>(1);

    {
        const auto shared = Streams::PassthroughSubject<std::shared_ptr<int>, Never>();
        const auto handle = shared.asPublisher().combineLatest(numbers().asPublisher()).bind([](const auto&) {
        });
        shared.send(content);
        EXPECT_GT(content.use_count(), 1);
    }

    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
    EXPECT_EQ(content.use_count(), 1);
}

TEST_P(CombineLatestContract, SourcesOnTwoThreadsNeverOverlapAndLoseNothing)
{
    constexpr auto count = 20'000;
    const auto first = Numbers();
    const auto second = Numbers();
    auto depth = std::atomic(0);
    auto tuples = 0;
    auto latest = std::tuple(0, 0);
    const auto handle = first.asPublisher().combineLatest(second.asPublisher()).bind([&](const auto& tuple) {
        EXPECT_EQ(depth.fetch_add(1), 0);
        const auto [oldFirst, oldSecond] = latest;
        const auto [newFirst, newSecond] = tuple;
        EXPECT_TRUE(tuples == 0 || (newFirst == oldFirst + 1 && newSecond == oldSecond)
            || (newFirst == oldFirst && newSecond == oldSecond + 1));
        latest = tuple;
        ++tuples;
        depth.fetch_sub(1);
    });
    first.send(0);
    second.send(0);

    auto senders = std::array{std::thread([&] {
                                  for (auto i = 1; i <= count; ++i)
                                      first.send(i);
                              }),
        std::thread([&] {
            for (auto i = 1; i <= count; ++i)
                second.send(i);
        })};
    for (auto& sender : senders)
        sender.join();

    EXPECT_EQ(tuples, 1 + 2 * count);
    EXPECT_EQ(latest, std::tuple(count, count));
}

TEST_P(CombineLatestContract, CancelAndWaitWaitsForTheCallbackWhicheverSourceItIsIn)
{
    const auto first = Numbers();
    const auto second = Numbers();
    auto isInside = std::atomic(false);
    auto afterwards = std::atomic(0);
    auto isCancelled = std::atomic(false);
    const auto handle = first.asPublisher().combineLatest(second.asPublisher()).bind([&](const auto&) {
        isInside = true;
        if (isCancelled)
            ++afterwards;
        isInside = false;
    });
    auto stop = std::atomic(false);
    const auto sendTo = [&stop](const Numbers& subject) {
        for (auto i = 0; !stop; ++i)
            subject.send(i);
    };
    auto senders = std::array{std::thread(sendTo, std::cref(first)), std::thread(sendTo, std::cref(second))};
    std::this_thread::yield();

    handle.cancelAndWait();
    isCancelled = true;
    EXPECT_FALSE(isInside);
    stop = true;
    for (auto& sender : senders)
        sender.join();

    EXPECT_EQ(afterwards, 0);
}

TEST_P(CombineLatestContract, AFailureThatCannotExistEndsTheProcess)
{
    using Payload = Streams::Payload<int, Never>;
    const auto impossible = Payload::error(std::bit_cast<Never>('\0'));
    const auto source = detail::Retained<const detail::JustPublication<Payload>>::adopting(
        new detail::JustPublication<Payload>(GetParam(), impossible));
    const auto publisher = Streams::AnyPublisher<int, Never>(source);

    EXPECT_DEATH((void)publisher.combineLatest(publisher).bind([](const auto&) {}),
        "Fatal error: Due to `Never` restriction, `default` can never occur.: file Utilities/Streams\\+CombineLatest\n");
}

TEST_P(CombineLatestContract, RefusesAStreamOfTheOtherEngine)
{
    const auto other = numbers().asPublisher();
    orrenby::testing::TestAccess::resetEngineChoice();
    Streams::set({.isCombineEnabledWhenAvailable = GetParam() != detail::Engine::Combine});

    EXPECT_DEATH((void)Numbers().asPublisher().combineLatest(other), "used with the other engine");
}

template <class Publisher>
concept Combines = requires(const Publisher& publisher)
{
    publisher.combineLatest(publisher);
};

static_assert(Combines<Streams::AnyPublisher<int, Never>>);
static_assert(!Combines<Streams::AnyPublisher<int, AnyError>>);

INSTANTIATE_ON_BOTH_ENGINES(CombineLatestContract);

} // namespace
