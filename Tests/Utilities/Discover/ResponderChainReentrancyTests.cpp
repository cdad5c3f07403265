#include "Orrenby/Utilities/Discover/ResponderChain.hpp"

#include "Orrenby/Testing/TestAccess.hpp"
#include "Tests/Utilities/Discover/ResponderChainParts.hpp"
#include <gmock/gmock.h>
#include <stdexcept>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::Chain;
using orrenby::testing::claiming;
using orrenby::testing::Diary;
using orrenby::testing::passing;
using orrenby::testing::sendingAgain;
using orrenby::testing::someone;
using orrenby::testing::TestAccess;
using orrenby::testing::TwoChains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ResponderChain, NeverAsksAResponderThatGoesDuringTheWalk)
{
    auto diary = Diary();
    const auto a = someone();
    auto b = someone();
    auto chain = Chain();
    chain.addResponder(a, [&](const std::string&) -> Chain::Action {
        b.reset();
        return nullptr;
    });
    chain.addResponder(b, claiming(diary, "b"));

    EXPECT_FALSE(chain.send("go"));
    EXPECT_THAT(diary, IsEmpty());
}

TEST(ResponderChain, LetsAnActionChangeTheChain)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    auto chain = Chain();
    chain.addResponder(a, [&](const std::string&) -> Chain::Action {
        return [&](const std::string&) {
            chain.removeAll();
            chain.addResponder(b, claiming(diary, "b"));
        };
    });

    EXPECT_TRUE(chain.send("first"));
    EXPECT_TRUE(chain.send("second"));
    EXPECT_THAT(diary, ElementsAre("b asked", "b does second"));
}

TEST(ResponderChain, LetsAnActionSendAgain)
{
    auto diary = Diary();
    const auto a = someone();
    auto chain = Chain();
    chain.addResponder(a, [&](const std::string&) -> Chain::Action {
        return [&](const std::string& message) {
            diary.push_back(message);
            if (message.size() < 3) {
                EXPECT_TRUE(chain.send(message + "!"));
            }
        };
    });

    EXPECT_TRUE(chain.send("a"));
    EXPECT_THAT(diary, ElementsAre("a", "a!", "a!!"));
}

TEST(ResponderChain, LetsAHandlerSendAnotherMessage)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    auto chain = Chain();
    chain.addResponder(a, [&](const std::string& message) -> Chain::Action {
        if (message == "go") {
            EXPECT_TRUE(chain.send("ready?"));
        }
        return nullptr;
    });
    chain.addResponder(b, claiming(diary, "b"));

    EXPECT_TRUE(chain.send("go"));
    EXPECT_THAT(diary, ElementsAre("b asked", "b does ready?", "b asked", "b does go"));
}

TEST(ResponderChain, AsksAllAnewForTheReceivedMessageThatAHandlerSends)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    auto chain = Chain();
    chain.addResponder(a, sendingAgain(diary, "a", chain)).addResponder(b, claiming(diary, "b"));

    EXPECT_TRUE(chain.send("go"));
    EXPECT_THAT(diary, ElementsAre("a asked", "a asked", "b asked", "b does go", "b asked", "b does go"));
}

TEST(ResponderChain, AsksTheOuterChainAnewForTheReceivedMessageThatAHandlerOfAnInnerOneSends)
{
    auto [diary, a, b, inner, outer] = TwoChains();
    inner->addResponder(a, sendingAgain(diary, "a", outer));
    outer.addResponder(inner).addResponder(b, claiming(diary, "b"));

    EXPECT_TRUE(outer.send("go"));
    EXPECT_THAT(diary, ElementsAre("a asked", "a asked", "b asked", "b does go", "b asked", "b does go"));
}

TEST(ResponderChain, LetsAnActionSendTheReceivedMessageAgain)
{
    auto diary = Diary();
    const auto a = someone();
    auto chain = Chain();
    chain.addResponder(a, [&](const std::string&) -> Chain::Action {
        return [&](const std::string& message) {
            diary.push_back(message);
            if (diary.size() < 3) {
                EXPECT_TRUE(chain.send(message));
            }
        };
    });

    EXPECT_TRUE(chain.send("a"));
    EXPECT_THAT(diary, ElementsAre("a", "a", "a"));
}

TEST(ResponderChain, EndsItsWalkAsItBeganWhateverAHandlerChanges)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    const auto c = someone();
    auto chain = Chain();
    chain.addResponder(a, [&](const std::string&) -> Chain::Action {
        chain.removeAll();
        chain.addResponder(c, claiming(diary, "c"));
        return nullptr;
    });
    chain.addResponder(b, passing(diary, "b"));

    EXPECT_FALSE(chain.send("first"));
    EXPECT_TRUE(chain.send("second"));
    EXPECT_THAT(diary, ElementsAre("b asked", "c asked", "c does second"));
}

TEST(ResponderChain, LetsErrorsPassAndGoesOn)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    auto chain = Chain();
    auto fails = true;
    chain.addResponder(a, [&](const std::string&) -> Chain::Action {
        return fails ? throw std::runtime_error("handler") : nullptr;
    });
    chain.addResponder(b, [&](const std::string&) -> Chain::Action {
        return [](const std::string&) { throw std::out_of_range("action"); };
    });
    const auto message = std::string("go");

    EXPECT_THROW((void)chain.send(message), std::runtime_error);
    fails = false;
    EXPECT_THROW((void)chain.send(message), std::out_of_range);
}

TEST(ResponderChain, LetsGoOfARemovedHandlerWhenTheChangeIsMade)
{
    auto chain = Chain();
    auto counts = std::vector<std::size_t>();
    const auto a = someone();
    const auto note = [&] {
        return Ref<void>(nullptr, [&](void*) { counts.push_back(TestAccess::responderCount(chain)); });
    };
    const auto add = [&] {
        chain.addResponder(a, [held = note()](const std::string&) -> Chain::Action { return nullptr; });
    };

    add();
    chain.removeResponder(a);
    add();
    chain.removeAll();

    EXPECT_THAT(counts, ElementsAre(0U, 0U));
}
