#include "Orrenby/Utilities/Streams/EngineChoice.hpp"

#include "Orrenby/Platform/Engines/Ground/JustPublication.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include "Orrenby/Testing/TestAccess.hpp"
#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <gtest/gtest.h>

using namespace orrenby;
using orrenby::detail::Engine;
using orrenby::testing::TestAccess;

// Every case begins with an open choice, as a new process does.
namespace {

class EngineChoice : public ::testing::Test {
protected:
    void SetUp() override
    {
        TestAccess::resetEngineChoice();
        Streams::set({.isCombineEnabledWhenAvailable = true});
    }
};

World worldOfVersion(OperatingSystemVersion version)
{
    auto world = World::current();
    world.setOperatingSystemVersion(version);
    return world;
}

Engine engineOf(const Streams::PassthroughSubject<int, Never>& subject)
{
    return TestAccess::core(subject).engine();
}

TEST_F(EngineChoice, CombineIsUsedByDefaultOnACapableSystem) { EXPECT_EQ(engineOf({}), Engine::Combine); }

TEST_F(EngineChoice, RxIsUsedWhenCombineWasSwitchedOffBeforeTheFirstOperation)
{
    //! [Choosing the engine]
    Streams::set({.isCombineEnabledWhenAvailable = false});         // first of all, at start-up
    const auto subject = Streams::PassthroughSubject<int, Never>(); // fixes the choice
    //! [Choosing the engine]

    EXPECT_EQ(engineOf(subject), Engine::Rx);
}

TEST_F(EngineChoice, SettingItAfterTheFirstOperationHasNoEffect)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();

    Streams::set({.isCombineEnabledWhenAvailable = false});

    EXPECT_EQ(engineOf({}), Engine::Combine);
    subject.send(1);
}

TEST_F(EngineChoice, SettingItAfterTheFirstSinkHasNoEffect)
{
    using Payload = Streams::Payload<int, Never>;
    using Publication = detail::JustPublication<Payload>;
    const auto publisher = Streams::AnyPublisher<int, Never>(detail::Retained<const Publication>::adopting(
        new Publication(Engine::Combine, Payload::value(1)))); // no operation of a stream so far
    const auto handle = publisher.sink([](const Payload&) {});

    Streams::set({.isCombineEnabledWhenAvailable = false});

    EXPECT_EQ(engineOf({}), Engine::Combine);
}

TEST_F(EngineChoice, ItMayBeSetAgainWhileItIsOpen)
{
    Streams::set({.isCombineEnabledWhenAvailable = false});
    Streams::set({});

    EXPECT_EQ(engineOf({}), Engine::Combine);
}

TEST_F(EngineChoice, ComparingHandlesFixesItToo)
{
    EXPECT_EQ(Streams::AnyCancellable(), Streams::AnyCancellable());

    Streams::set({.isCombineEnabledWhenAvailable = false});

    EXPECT_EQ(engineOf({}), Engine::Combine);
}

struct SystemVersion {
    OperatingSystemVersion version;
    Engine engine;
};

class EngineChoiceBySystem : public EngineChoice, public ::testing::WithParamInterface<SystemVersion> {};

TEST_P(EngineChoiceBySystem, FollowsTheReportedVersion)
{
    const auto world = World::Override(worldOfVersion(GetParam().version));

    EXPECT_EQ(engineOf({}), GetParam().engine);
}

TEST_P(EngineChoiceBySystem, IsRxOnEveryVersionWhenCombineWasSwitchedOff)
{
    const auto world = World::Override(worldOfVersion(GetParam().version));
    Streams::set({.isCombineEnabledWhenAvailable = false});

    EXPECT_EQ(engineOf({}), Engine::Rx);
}

INSTANTIATE_TEST_SUITE_P(Versions, EngineChoiceBySystem,
    ::testing::Values(SystemVersion{{12, 99, 9}, Engine::Rx}, SystemVersion{{13, 0, 0}, Engine::Combine},
        SystemVersion{{13, 0, 1}, Engine::Combine}, SystemVersion{{9, 0, 0}, Engine::Rx},
        SystemVersion{{26, 0, 0}, Engine::Combine}));

TEST_F(EngineChoice, AVersionThatChangesLaterChangesNothing)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    const auto world = World::Override(worldOfVersion({12, 0, 0}));

    EXPECT_EQ(engineOf({}), Engine::Combine);
}

TEST_F(EngineChoice, AnObjectOfTheOtherEngineEndsTheProcess)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    const auto handle = subject.asPublisher().bind([](int) {});
    TestAccess::resetEngineChoice();
    Streams::set({.isCombineEnabledWhenAvailable = false});

    EXPECT_DEATH(
        subject.send(1), "Fatal error: A stream object of one engine was used with the other engine");
    EXPECT_DEATH(handle.cancel(), "other engine");

    TestAccess::resetEngineChoice();
    Streams::set({.isCombineEnabledWhenAvailable = true});
}

} // namespace
