#include "Orrenby/Utilities/Streams/More/Debounce.hpp"

#include "Tests/Contracts/Streams/More/TimedContract.hpp"

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Recorder;
using orrenby::testing::sendOne;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class DebounceContract : public orrenby::testing::TimedContract {};

const auto debounced = [](const auto& publisher) { return Streams::debounce(publisher, 0.03); };

TEST_P(DebounceContract, PassesOnAValueOnceItIsQuiet)
{
    const auto words = Streams::PassthroughSubject<std::string, Never>();

    //! [Waiting until it is quiet]
    const auto searches = words | Streams::debounce(0.3, DispatchQueue::main());
    //! [Waiting until it is quiet]
    const auto recorder = Recorder(searches);
    words.send("s");
    world().advance(0.2);
    words.send("se");
    world().advance(0.29);
    EXPECT_THAT(recorder.values(), IsEmpty());
    world().advance(0.01);

    EXPECT_THAT(recorder.values(), ElementsAre("se"));
}

TEST_P(DebounceContract, DropsWhatIsFollowedTooSoon)
{
    EXPECT_EQ(marbles("a-b--c-------d", debounced), "--------c-------d");
    EXPECT_EQ(marbles("(ab)", debounced), "---b");
}

TEST_P(DebounceContract, PassesEachOfSparseValues)
{
    EXPECT_EQ(marbles("a---b----c", debounced), "---a---b----c");
}

TEST_P(DebounceContract, AFailureLetsTheValueGoFirstAndPassesAtOnce)
{
    EXPECT_EQ(marbles("a-#-----b#", debounced), "--(a#)------(b#)");
    EXPECT_EQ(marbles("#", debounced), "#");
}

TEST_P(DebounceContract, TheEndLetsTheValueGoFirst)
{
    EXPECT_EQ(marbles("a-b|", debounced), "---(b|)");
    EXPECT_EQ(marbles("|", debounced), "|");
}

TEST_P(DebounceContract, WithoutAnIntervalItPassesTheLatestOfAMoment)
{
    EXPECT_EQ(marbles("(ab)c", [](const auto& publisher) { return Streams::debounce(publisher, 0); }), "bc");
}

TEST_P(DebounceContract, ForEverItPassesNothingBeforeTheEnd)
{
    const auto forEver = [](const auto& publisher) {
        return Streams::debounce(publisher, std::numeric_limits<double>::infinity());
    };
    EXPECT_EQ(marbles("a--b--|", forEver), "------(b|)");
}

TEST_P(DebounceContract, ABurstPostsOneWakeUp)
{
    const auto subject = NumberSubject();
    const auto recorder = Recorder(debounced(subject));

    for (auto i = 0; i < 1'000; ++i)
        subject.send(i);

    EXPECT_EQ(world().pendingCount(), 1U);
    world().runAll();
    EXPECT_THAT(recorder.values(), ElementsAre(999));
}

TEST_P(DebounceContract, ASendInsideTheCallbackStartsTheNextWait)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto times = std::vector<double>();
    const auto handle = (subject | Streams::debounce(1)).bind([&](int value) {
        times.push_back(world().elapsed());
        if (value < 3)
            subject.send(value + 1);
    });

    subject.send(1);
    world().runAll();

    EXPECT_THAT(times, ElementsAre(1, 2, 3));
}

TEST_P(DebounceContract, DeliversOnTheQueue)
{
    const auto queue = DispatchQueue::serial("debounced");
    const auto subject = NumberSubject();
    auto isOnQueue = false;
    const auto handle = Streams::debounce(subject, 1, queue).sink([&](const auto&) {
        isOnQueue = queue.isCurrent();
    });

    subject.send(1);
    world().runAll();

    EXPECT_TRUE(isOnQueue);
}

TEST_P(DebounceContract, KeepsNothingWhileADelayIsPending)
{
    orrenby::testing::expectToKeepNothingWhileADelayIsPending(world(), debounced, sendOne);
}

TEST_P(DebounceContract, AnEndedStreamLetsEverythingGo)
{
    const auto kept = std::make_shared<int>(0);
    {
        const auto subject = NumberSubject();
        const auto handle = debounced(subject).sink([kept](const auto&) {});
        subject.send(1);
        subject.send(Streams::Completion<Trouble>::finished());
    }

    EXPECT_EQ(kept.use_count(), 1);
    world().runAll();
}

TEST_WHAT_HOLDS_FOR_OPERATORS(DebounceContract, debounced, orrenby::testing::sendTrouble);
INSTANTIATE_ON_BOTH_ENGINES(DebounceContract);

} // namespace
