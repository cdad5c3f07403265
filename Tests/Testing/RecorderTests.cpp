#include "Orrenby/Testing/Recorder.hpp"

#include "Orrenby/Testing/MarbleSource.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"
#include "Orrenby/Utilities/Streams/Just.hpp"
#include "Orrenby/Utilities/Streams/LiveSubscriptionCount.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>

using namespace orrenby;
using orrenby::testing::MarbleSource;
using orrenby::testing::RecordedEvent;
using orrenby::testing::Recorder;
using orrenby::testing::VirtualWorld;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

TEST(Recorder, WritesDownElementsAndTheEndWithTheirTimes)
{
    //! [Recording a stream]
    auto world = VirtualWorld();
    const auto subject = Streams::PassthroughSubject<int, std::string>();
    const auto recorder = Recorder(subject.asPublisher());

    subject.send(1);
    world.advance(0.03);
    subject.send(std::string("lost"));
    world.advance(0.02);
    subject.send(Streams::Completion<std::string>::finished());

    EXPECT_EQ(recorder.marbles(), "1--#-|");
    EXPECT_THAT(recorder.values(), ElementsAre(1));
    EXPECT_THAT(recorder.failures(), ElementsAre("lost"));
    EXPECT_TRUE(recorder.hasEnded());
    //! [Recording a stream]

    using Payload = Streams::Payload<int, std::string>;
    using Event = RecordedEvent<int, std::string>;
    EXPECT_THAT(recorder.payloads(), ElementsAre(Payload::value(1), Payload::error("lost")));
    EXPECT_THAT(recorder.events(),
        ElementsAre(
            Event{0, Payload::value(1)}, Event{0.03, Payload::error("lost")}, Event{0.05, std::nullopt}));
    EXPECT_EQ(recorder.description(), "[0.0: value(1), 0.03: error(lost), 0.05: end]");
}

TEST(Recorder, OfAStreamThatSendsNothingIsEmpty)
{
    auto world = VirtualWorld();
    const auto recorder = Recorder(Streams::PassthroughSubject<int, Never>().asPublisher());

    world.advance(1);

    EXPECT_EQ(recorder.marbles(), "");
    EXPECT_FALSE(recorder.hasEnded());
    EXPECT_THAT(recorder.events(), IsEmpty());
    EXPECT_EQ(recorder.description(), "[]");
}

TEST(Recorder, SeesWhatIsDeliveredWhileItSubscribes)
{
    const auto world = VirtualWorld();

    EXPECT_EQ((Recorder(Streams::Just<int, Never>(4)).marbles()), "(4|)");
    EXPECT_EQ((Recorder(Streams::CurrentValueSubject<int, Never>(4).asPublisher()).marbles()), "4");
}

TEST(Recorder, CountsTimeFromItsSubscription)
{
    auto world = VirtualWorld();
    const auto source = MarbleSource<char>("a---b-|");
    world.advance(0.02);

    const auto recorder = Recorder(source);
    world.runAll();

    EXPECT_EQ(recorder.marbles(), "--b-|");
}

TEST(Recorder, RecordsNothingAfterItWasCancelled)
{
    auto world = VirtualWorld();
    auto recorder = Recorder(MarbleSource<char>("abc|"));
    world.advance(0.01);

    recorder.cancel();
    recorder.cancel();
    world.runAll();

    EXPECT_EQ(recorder.marbles(), "ab");
    EXPECT_FALSE(recorder.hasEnded());
}

TEST(Recorder, EndsItsSubscriptionWithItself)
{
    const auto world = VirtualWorld();
    const auto subject = Streams::PassthroughSubject<int, Never>();
    {
        const auto recorder = Recorder(subject.asPublisher());
        EXPECT_EQ(Streams::liveSubscriptionCount(), 1);
    }

    EXPECT_EQ(Streams::liveSubscriptionCount(), 0);
}

TEST(Recorder, PrintsAnEventInTheNearestFrame)
{
    auto world = VirtualWorld();
    const auto subject = Streams::PassthroughSubject<int, Never>();
    const auto recorder = Recorder(subject.asPublisher(), {.frame = 1});

    world.advance(1.4);
    subject.send(1);
    world.advance(0.2);
    subject.send(2);
    world.advance(0.3);
    subject.send(3);

    EXPECT_EQ(recorder.marbles(), "-1(23)");
}

TEST(Recorder, ForgetsWhenItIsCleared)
{
    auto world = VirtualWorld();
    auto recorder = Recorder(MarbleSource<char>("ab-c"));
    world.advance(0.01);

    recorder.clear();
    world.runAll();

    EXPECT_EQ(recorder.marbles(), "---c");
}

TEST(Recorder, CanBePrinted)
{
    const auto world = VirtualWorld();
    const auto recorder = Recorder(Streams::Just<int, Never>(4));
    auto text = std::ostringstream();

    text << recorder << " " << recorder.events().back();

    EXPECT_EQ(text.str(), "[0.0: value(4), 0.0: end] 0.0: end");
}

TEST(Recorder, RecordsFromSeveralThreads)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    const auto recorder = Recorder(subject.asPublisher());

    auto threads = std::vector<std::thread>();
    for (int thread = 0; thread < 2; ++thread)
        threads.emplace_back([&] {
            for (int value = 0; value < 200; ++value)
                subject.send(value);
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(recorder.values().size(), 400U);
}

} // namespace
