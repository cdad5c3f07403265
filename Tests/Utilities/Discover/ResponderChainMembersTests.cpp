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
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ResponderChain, NeverAsksAResponderThatIsGone)
{
    auto diary = Diary();
    auto gone = someone();
    const auto still = someone();
    auto chain = Chain();
    chain.addResponder(gone, claiming(diary, "gone")).addResponder(still, claiming(diary, "still"));

    gone.reset();
    EXPECT_EQ(TestAccess::responderCount(chain), 2U);

    EXPECT_TRUE(chain.send("go"));
    EXPECT_EQ(TestAccess::responderCount(chain), 1U);
    EXPECT_THAT(diary, ElementsAre("still asked", "still does go"));
}

TEST(ResponderChain, KeepsEntriesThatAreGoneUntilTheNextSend)
{
    auto diary = Diary();
    auto gone = someone();
    const auto still = someone();
    auto chain = Chain();
    chain.addResponder(gone, claiming(diary, "gone"));
    gone.reset();

    chain.addResponder(still, passing(diary, "still"));
    chain.removeResponder(someone());
    EXPECT_EQ(TestAccess::responderCount(chain), 2U);

    EXPECT_FALSE(chain.send("go"));
    EXPECT_EQ(TestAccess::responderCount(chain), 1U);
}

TEST(ResponderChain, KeepsNoResponderAlive)
{
    auto diary = Diary();
    const auto responder = someone();
    auto chain = Chain();

    chain.addResponder(responder, claiming(diary, "a"));

    EXPECT_EQ(responder.use_count(), 1);
}

TEST(ResponderChain, ReplacesTheHandlerOfAResponderInItsPlace)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    auto chain = Chain();
    chain.addResponder(a, claiming(diary, "first"));
    chain.addResponder(b, claiming(diary, "b"));

    chain.addResponder(a, claiming(diary, "second"));

    EXPECT_EQ(TestAccess::responderCount(chain), 2U);
    EXPECT_TRUE(chain.send("go"));
    EXPECT_THAT(diary, ElementsAre("second asked", "second does go"));
}

TEST(ResponderChain, KnowsAResponderThroughAnyInterface)
{
    struct Left {
        virtual ~Left() = default;
        int left = 1;
    };
    struct Right {
        virtual ~Right() = default;
        int right = 2;
    };
    struct Both : Left, Right {};
    auto diary = Diary();
    const auto both = std::make_shared<Both>();
    auto chain = Chain();
    chain.addResponder(Ref<Left>(both), claiming(diary, "left"));
    chain.addResponder(Ref<const Right>(both), claiming(diary, "right"));

    EXPECT_EQ(TestAccess::responderCount(chain), 1U);
    EXPECT_TRUE(chain.send("go"));
    EXPECT_THAT(diary, ElementsAre("right asked", "right does go"));
}

TEST(ResponderChain, RemovesOneResponder)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    auto chain = Chain();
    chain.addResponder(a, claiming(diary, "a")).addResponder(b, claiming(diary, "b"));

    chain.removeResponder(a);
    chain.removeResponder(a);

    EXPECT_TRUE(chain.send("go"));
    EXPECT_THAT(diary, ElementsAre("b asked", "b does go"));
}

TEST(ResponderChain, RemovingAStrangerOrNobodyChangesNothing)
{
    auto diary = Diary();
    const auto a = someone();
    auto chain = Chain();
    chain.addResponder(a, claiming(diary, "a"));

    chain.removeResponder(someone());
    chain.removeResponder(Ref<int>());

    EXPECT_TRUE(chain.send("go"));
}

TEST(ResponderChain, RemovesAll)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    auto chain = Chain();
    chain.addResponder(a, claiming(diary, "a")).addResponder(b, claiming(diary, "b"));

    chain.removeAll();

    EXPECT_EQ(TestAccess::responderCount(chain), 0U);
    EXPECT_FALSE(chain.send("go"));
    EXPECT_THAT(diary, IsEmpty());
}
