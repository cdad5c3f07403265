#include "Examples/Fieldbook/SignIn/SignInFlow.hpp"

#include "Examples/Fieldbook/Tests/SessionTest.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;
using ::testing::EndsWith;

class SignInFlowTest : public SessionTest {
protected:
    void SetUp() override
    {
        flow = orrenby::make<SignInFlow>(session, [this] {
            ++signedInCount;
            flow.reset();
        });
        flow->start();
    }

    int signedInCount = 0;
    orrenby::Ref<SignInFlow> flow;
};

TEST_F(SignInFlowTest, TellsOfTheUserAndMayBeLetGoOfThen)
{
    const auto kept = flow; // as its caller does
    kept->obey("sign in ada@hut.example");

    EXPECT_EQ(session.user, "ada@hut.example"_email);
    EXPECT_EQ(signedInCount, 1);
    EXPECT_EQ(flow, nullptr);
}

TEST_F(SignInFlowTest, SaysWhyNobodyIsSignedIn)
{
    flow->obey("sign in ada@hut");

    EXPECT_EQ(session.user, std::nullopt);
    EXPECT_EQ(signedInCount, 0);
    EXPECT_THAT(printed(), EndsWith("! sign-in  \"ada@hut\", character 8: The domain has no dot.\n"));
}

TEST_F(SignInFlowTest, ObeysNothingElse)
{
    flow->obey("upload");

    EXPECT_THAT(printed(), EndsWith("! nobody is signed in: sign in ADDRESS, or guest\n"));
}

TEST_F(SignInFlowTest, SaysWhatToDoBeforeAnybodyAsks)
{
    EXPECT_THAT(printed(), EndsWith("= nobody is signed in: sign in ADDRESS, or guest\n"));
}

TEST_F(SignInFlowTest, LetsAGuestIn)
{
    const auto kept = flow;
    kept->obey("guest");

    EXPECT_EQ(session.user, std::nullopt);
    EXPECT_EQ(signedInCount, 1);
}

TEST_F(SignInFlowTest, TellsOnceAlsoWhereSomebodyKeepsIt)
{
    const auto kept = flow;
    kept->obey("guest");

    kept->obey("sign in ada@hut.example");

    EXPECT_EQ(signedInCount, 1);
    EXPECT_EQ(session.user, "ada@hut.example"_email);
}

TEST_F(SignInFlowTest, IsCountedAsAScreen) { EXPECT_EQ(session.screens.at("sign-in"), 1); }

} // namespace
