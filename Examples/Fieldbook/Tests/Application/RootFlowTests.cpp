#include "Examples/Fieldbook/Application/RootFlow.hpp"

#include "Examples/Fieldbook/Application/MainFlow.hpp"
#include "Examples/Fieldbook/SignIn/SignInFlow.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;

class RootFlowTest : public ::testing::Test {
protected:
    void TearDown() override
    {
        flow.reset();
        world.runUntilIdle();
    }

    bool isAsking() const { return flow->firstSubFlow<SignInFlow>() != nullptr; }
    bool isMain() const { return flow->firstSubFlow<MainFlow>() != nullptr; }

    orrenby::testing::VirtualWorld world;
    EventLoop loop;
    Terminal terminal{-1, false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, ::testing::TempDir(), Course::look};
    orrenby::Ref<RootFlow> flow = orrenby::make<RootFlow>(session);
};

TEST_F(RootFlowTest, AsksWhoItIsWhereNobodyIsKnown)
{
    flow->start();

    EXPECT_TRUE(isAsking());
    EXPECT_FALSE(isMain());
}

TEST_F(RootFlowTest, GoesOnAtOnceWhereSomebodyIsKnown)
{
    session.user = "ada@hut.example"_email;

    flow->start();

    EXPECT_FALSE(isAsking());
    EXPECT_TRUE(isMain());
}

TEST_F(RootFlowTest, GoesOnAtOnceForGuests)
{
    session.isGuest = true;

    flow->start();

    EXPECT_FALSE(isAsking());
    EXPECT_TRUE(isMain());
}

TEST_F(RootFlowTest, GoesOnAsSoonAsSomebodySignsIn)
{
    flow->start();
    session.commands.send("sign in ada@hut");
    EXPECT_TRUE(isAsking());

    session.commands.send("sign in ada@hut.example");

    EXPECT_FALSE(isAsking());
    EXPECT_TRUE(isMain());
    EXPECT_EQ(session.user, "ada@hut.example"_email);
}

TEST_F(RootFlowTest, LetsAGuestInWhoSaysSo)
{
    flow->start();

    session.commands.send("guest");

    EXPECT_TRUE(isMain());
    EXPECT_EQ(session.user, std::nullopt);
}

TEST_F(RootFlowTest, AsksAgainOnceSomebodySignedOutAlsoWhereGuestsAreLetIn)
{
    session.user = "ada@hut.example"_email;
    session.isGuest = true;
    flow->start();

    session.commands.send("sign out");
    session.commands.send("sign out");

    EXPECT_TRUE(isAsking());
    EXPECT_FALSE(isMain());
    EXPECT_EQ(session.user, std::nullopt);
}

TEST_F(RootFlowTest, CanBeEndedBeforeAnybodyHasSignedIn)
{
    flow->start();

    session.commands.send("end");

    EXPECT_EQ(session.ending.value(), Ending::byItself);
}

} // namespace
