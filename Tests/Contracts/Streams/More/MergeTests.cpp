#include "Orrenby/Utilities/Streams/More/Merge.hpp"

#include "Orrenby/Utilities/Streams/Just.hpp"
#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Received;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class MergeContract : public orrenby::testing::BothEngines {};

using Number = Streams::Payload<int, Trouble>;
using Completion = Streams::Completion<Trouble>;

TEST_P(MergeContract, PassesOnTheElementsOfAllAsTheyCome)
{
    const auto first = NumberSubject();
    const auto second = NumberSubject();
    const auto third = NumberSubject();
    auto received = Received<int, Trouble>();

    //! [Several streams as one]
    const auto all = Streams::merge(first, second, third); // or: first | Streams::mergeWith(second, third)
    const auto handle = all.sink(received.recorder());
    //! [Several streams as one]
    second.send(2);
    first.send(1);
    third.send(Trouble{3});
    first.send(4);

    EXPECT_THAT(received.payloads,
        ElementsAre(Number::value(2), Number::value(1), Number::error({3}), Number::value(4)));
}

TEST_P(MergeContract, EndsWhenAllHaveEnded)
{
    const auto first = NumberSubject();
    const auto second = NumberSubject();
    auto events = std::vector<std::string>();
    const auto handle = Streams::sinkUntilEnd(
        first | Streams::mergeWith(second),
        [&](const auto& payload) { events.push_back(payload.description()); },
        [&] { events.push_back("end"); });

    first.send(Completion::finished());
    EXPECT_THAT(events, IsEmpty());
    second.send(Completion::failure({5}));

    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events.back(), "end");
}

TEST_P(MergeContract, SubscribesInTheOrderOfTheStreams)
{
    using Just = Streams::Just<int, Trouble>;
    auto received = Received<int, Trouble>();
    auto ends = 0;

    const auto handle = Streams::sinkUntilEnd(
        Streams::merge(Just(1), Just(2), Just(3)), received.recorder(), [&] { ++ends; });

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1), Number::value(2), Number::value(3)));
    EXPECT_EQ(ends, 1);
}

TEST_P(MergeContract, MayTakeOneStreamSeveralTimes)
{
    const auto subject = NumberSubject();
    auto received = Received<int, Trouble>();
    const auto handle = Streams::merge(subject, subject).sink(received.recorder());

    subject.send(1);

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1), Number::value(1)));
}

TEST_P(MergeContract, StreamsThatFeedEachOtherComeOneAfterTheOther)
{
    const auto first = NumberSubject();
    const auto second = NumberSubject();
    auto seen = std::vector<int>();
    const auto handle = Streams::merge(first, second).sink([&](const Number& payload) {
        const auto value = *payload.asValue();
        if (value < 4)
            (value % 2 == 0 ? first : second).send(value + 1);
        seen.push_back(value); // a nested delivery would come first
    });

    first.send(1);

    EXPECT_THAT(seen, ElementsAre(1, 2, 3, 4));
}

TEST_P(MergeContract, DropsAllSourcesWhenItIsCancelled)
{
    const auto before = Streams::liveSubscriptionCount();
    const auto first = NumberSubject();
    const auto second = NumberSubject();
    auto received = Received<int, Trouble>();
    auto handle = Streams::merge(first, second).sink(received.recorder());

    handle.cancel();
    first.send(1);
    second.send(2);
    handle = {};

    EXPECT_THAT(received.payloads, IsEmpty());
    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
}

TEST_P(MergeContract, SourcesOnSeveralThreadsDoNotOverlapAndKeepTheirOrder)
{
    constexpr auto count = 2'000;
    const auto subjects = std::array<NumberSubject, 3>();
    auto last = std::array{-1, -1, -1};
    auto inside = std::atomic(0);
    auto total = 0;
    auto ended = std::promise<void>();
    const auto handle = Streams::sinkUntilEnd(
        Streams::merge(subjects[0], subjects[1], subjects[2]),
        [&](const Number& payload) {
            EXPECT_EQ(inside.fetch_add(1), 0);
            const auto value = *payload.asValue();
            const auto source = static_cast<std::size_t>(value / count);
            EXPECT_EQ(value % count, last[source] + 1);
            last[source] = value % count;
            ++total;
            --inside;
        },
        [&] { ended.set_value(); });
    auto threads = std::vector<std::thread>();
    for (auto source = 0; source < 3; ++source)
        threads.emplace_back([&, source] {
            const auto& subject = subjects[static_cast<std::size_t>(source)];
            for (auto i = 0; i < count; ++i)
                subject.send(source * count + i);
            subject.send(Completion::finished());
        });
    ended.get_future().wait();
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(total, 3 * count);
}

TEST_P(MergeContract, CancellingWhileSeveralThreadsSendIsSafe)
{
    for (auto round = 0; round < 50; ++round) {
        const auto subjects = std::array<NumberSubject, 2>();
        auto isCancelled = std::atomic(false);
        auto calls = std::atomic(0);
        auto handle = Streams::merge(subjects[0], subjects[1]).sink([&](const auto&) {
            EXPECT_FALSE(isCancelled);
            ++calls;
        });
        auto threads = std::vector<std::thread>();
        for (const auto& subject : subjects)
            threads.emplace_back([&] {
                for (auto i = 0; i < 300; ++i)
                    subject.send(i);
            });
        while (calls == 0)
            std::this_thread::yield();
        handle.cancelAndWait();
        isCancelled = true;
        for (auto& thread : threads)
            thread.join();
    }
}

const auto withAnother = [](const auto& publisher) { return Streams::merge(publisher, NumberSubject()); };

TEST_WHAT_HOLDS_FOR_OPERATORS(MergeContract, withAnother, orrenby::testing::sendOne);
INSTANTIATE_ON_BOTH_ENGINES(MergeContract);

} // namespace
