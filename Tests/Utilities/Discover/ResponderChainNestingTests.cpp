#include "Orrenby/Utilities/Discover/ResponderChain.hpp"

#include "Orrenby/Testing/TestAccess.hpp"
#include "Tests/Utilities/Discover/ResponderChainParts.hpp"
#include <gmock/gmock.h>
#include <memory>

using namespace orrenby;
using orrenby::testing::Chain;
using orrenby::testing::claiming;
using orrenby::testing::Diary;
using orrenby::testing::passing;
using orrenby::testing::someone;
using orrenby::testing::TestAccess;
using orrenby::testing::TwoChains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ResponderChain, AnswersForAChainInIt)
{
    auto [diary, a, b, inner, outer] = TwoChains();
    const auto c = someone();
    inner->addResponder(b, claiming(diary, "b"));
    outer.addResponder(a, passing(diary, "a")).addResponder(inner).addResponder(c, claiming(diary, "c"));

    EXPECT_TRUE(outer.send("go"));
    EXPECT_THAT(diary, ElementsAre("a asked", "b asked", "b does go"));
}

TEST(ResponderChain, GoesOnAfterAChainThatClaimsNothing)
{
    auto [diary, a, b, inner, outer] = TwoChains();
    inner->addResponder(a, passing(diary, "a"));
    outer.addResponder(inner).addResponder(b, claiming(diary, "b"));

    EXPECT_TRUE(outer.send("go"));
    EXPECT_THAT(diary, ElementsAre("a asked", "b asked", "b does go"));
}

TEST(ResponderChain, PrunesAChainInItAsPartOfItsOwnWalk)
{
    auto diary = Diary();
    auto gone = someone();
    const auto inner = std::make_shared<Chain>();
    auto outer = Chain();
    inner->addResponder(gone, claiming(diary, "gone"));
    outer.addResponder(inner);
    gone.reset();

    EXPECT_FALSE(outer.send("go"));
    EXPECT_EQ(TestAccess::responderCount(*inner), 0U);
    EXPECT_EQ(TestAccess::responderCount(outer), 1U);
}

TEST(ResponderChain, PrunesAChainThatIsGone)
{
    auto diary = Diary();
    const auto a = someone();
    auto inner = std::make_shared<Chain>();
    auto outer = Chain();
    inner->addResponder(a, claiming(diary, "a"));
    outer.addResponder(inner);
    EXPECT_EQ(inner.use_count(), 1);

    inner.reset();

    EXPECT_FALSE(outer.send("go"));
    EXPECT_EQ(TestAccess::responderCount(outer), 0U);
    EXPECT_THAT(diary, IsEmpty());
}

TEST(ResponderChain, RemovesAChainLikeAnyResponder)
{
    auto diary = Diary();
    const auto a = someone();
    const auto inner = std::make_shared<Chain>();
    auto outer = Chain();
    inner->addResponder(a, claiming(diary, "a"));
    outer.addResponder(inner);

    outer.removeResponder(inner);

    EXPECT_FALSE(outer.send("go"));
}

TEST(ResponderChain, IgnoresItselfAsAResponder)
{
    const auto chain = std::make_shared<Chain>();

    chain->addResponder(chain);

    EXPECT_EQ(TestAccess::responderCount(*chain), 0U);
    EXPECT_FALSE(chain->send("go"));
}

TEST(ResponderChain, PassesOverAChainThatIsMetAgain)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    const auto first = std::make_shared<Chain>();
    const auto second = std::make_shared<Chain>();
    first->addResponder(second).addResponder(a, passing(diary, "a"));
    second->addResponder(first).addResponder(b, passing(diary, "b"));

    EXPECT_FALSE(first->send("go"));
    EXPECT_THAT(diary, ElementsAre("b asked", "a asked"));
}

TEST(ResponderChain, PassesOverAChainThatIsMetAgainThroughTwoOthers)
{
    auto diary = Diary();
    const auto a = someone();
    const auto first = std::make_shared<Chain>();
    const auto second = std::make_shared<Chain>();
    const auto third = std::make_shared<Chain>();
    first->addResponder(second);
    second->addResponder(third);
    third->addResponder(first).addResponder(second).addResponder(a, passing(diary, "a"));

    EXPECT_FALSE(first->send("go"));
    EXPECT_THAT(diary, ElementsAre("a asked"));
}

TEST(ResponderChain, WalksAChainOncePerPlaceInWhichItStands)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    const auto shared = std::make_shared<Chain>();
    const auto left = std::make_shared<Chain>();
    const auto right = std::make_shared<Chain>();
    auto outer = Chain();
    shared->addResponder(a, passing(diary, "a"));
    left->addResponder(shared);
    right->addResponder(b, passing(diary, "b")).addResponder(shared);
    outer.addResponder(left).addResponder(right);

    EXPECT_FALSE(outer.send("go"));
    EXPECT_THAT(diary, ElementsAre("a asked", "b asked", "a asked"));
}

TEST(ResponderChain, InsideAnotherKeepsItsPlaceWhenItGetsAHandler)
{
    auto [diary, a, b, inner, outer] = TwoChains();
    inner->addResponder(a, claiming(diary, "a"));
    outer.addResponder(inner).addResponder(b, passing(diary, "b"));

    outer.addResponder(inner, passing(diary, "inner"));
    EXPECT_FALSE(outer.send("go"));
    outer.addResponder(inner);
    EXPECT_TRUE(outer.send("again"));

    EXPECT_THAT(diary, ElementsAre("inner asked", "b asked", "a asked", "a does again"));
}
