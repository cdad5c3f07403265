#include "Orrenby/Utilities/Streams/Just.hpp"

#include "Orrenby/Testing/Recorder.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Orrenby/Utilities/Streams/StreamsPublisher.hpp"
#include "Tests/Support/StreamEngines.hpp"

using namespace orrenby;
using orrenby::testing::Received;
using orrenby::testing::Recorder;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;

namespace {

class JustContract : public orrenby::testing::BothEngines {};

using Number = Streams::Payload<int, Trouble>;

TEST_P(JustContract, DeliversItsValueToEachSubscriber)
{
    auto first = Received<int, Trouble>();
    auto second = Received<int, Trouble>();

    //! [A value as a stream]
    const auto three = Streams::Just<int, Trouble>(3);
    const auto subscription = three.asPublisher().sink(first.recorder()); // receives 3 at once
    //! [A value as a stream]
    const auto another = three.asPublisher().sink(second.recorder());

    EXPECT_THAT(first.payloads, ElementsAre(Number::value(3)));
    EXPECT_THAT(second.payloads, ElementsAre(Number::value(3)));
}

TEST_P(JustContract, CopiesShareAnIdentity)
{
    const auto three = Streams::Just<int, Trouble>(3);
    const auto copy = three;
    const auto another = Streams::Just<int, Trouble>(3);

    EXPECT_EQ(copy.sharedIdentity(), three.sharedIdentity());
    EXPECT_NE(another.sharedIdentity(), three.sharedIdentity());
}

TEST_P(JustContract, DeliversItsFailure)
{
    const auto recorder = Recorder(Streams::Just<int, Trouble>(Trouble{4}));

    EXPECT_THAT(recorder.payloads(), ElementsAre(Number::error({4})));
}

TEST_P(JustContract, EndsAtOnce)
{
    const auto world = orrenby::testing::VirtualWorld();

    EXPECT_EQ((Recorder(Streams::Just<int, Trouble>(3)).marbles()), "(3|)");
    EXPECT_EQ((Recorder(Streams::Just<int, Trouble>(Trouble{4})).marbles()), "(#|)");
}

TEST_P(JustContract, TellsValueAndFailureOfOneTypeApartByTheMark)
{
    using Text = Streams::Payload<std::string, std::string>;
    auto received = Received<std::string, std::string>();

    const auto value = Streams::Just<std::string, std::string>("a").asPublisher().sink(received.recorder());
    const auto failure = Streams::Just<std::string, std::string>(Streams::failure("b"))
                             .asPublisher()
                             .sink(received.recorder());

    EXPECT_THAT(received.payloads, ElementsAre(Text::value("a"), Text::error("b")));
}

TEST_P(JustContract, IsOfTheEngineThatWasChosen)
{
    const auto publisher = Streams::Just<int, Never>(1).asPublisher();
    orrenby::testing::TestAccess::resetEngineChoice();
    Streams::set({.isCombineEnabledWhenAvailable = GetParam() != detail::Engine::Combine});

    EXPECT_DEATH((void)publisher.bind([](int) {}), "used with the other engine");
}

static_assert(StreamsPublisher<Streams::Just<int, Trouble>>);

INSTANTIATE_ON_BOTH_ENGINES(JustContract);

} // namespace
