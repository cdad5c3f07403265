#include "Orrenby/Utilities/Discover/ResponderChain.hpp"

#include "Orrenby/Testing/TestAccess.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

using namespace orrenby;
using orrenby::testing::TestAccess;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Chain = ResponderChain<std::string>;
using Diary = std::vector<std::string>;

Ref<int> someone() { return std::make_shared<int>(); }

/// Claims every message.
Chain::Handler claiming(Diary& diary, const std::string& name)
{
    return [&diary, name](const std::string&) -> Chain::Action {
        diary.push_back(name + " asked");
        return [&diary, name](const std::string& message) { diary.push_back(name + " does " + message); };
    };
}

/// Claims no message.
Chain::Handler passing(Diary& diary, const std::string& name)
{
    return [&diary, name](const std::string&) -> Chain::Action {
        diary.push_back(name + " asked");
        return nullptr;
    };
}

TEST(ResponderChain, DeliversToTheResponderThatClaims)
{
    auto opened = std::vector<std::string>();

    //! [Sending along a chain]
    class Browser {
    public:
        explicit Browser(std::vector<std::string>& opened)
            : m_opened(&opened)
        {}
        void open(const std::string& link) { m_opened->push_back(link); }

    private:
        std::vector<std::string>* m_opened;
    };

    using Links = ResponderChain<std::string>;
    auto browser = std::make_shared<Browser>(opened);
    auto links = Links();
    // The plain pointer is safe: a handler is asked while its responder lives.
    links.addResponder(browser, [browser = browser.get()](const std::string& link) -> Links::Action {
        if (!link.starts_with("https:"))
            return nullptr;
        return [browser](const std::string& claimed) { browser->open(claimed); };
    });

    const auto isOpened = links.send("https://orrenby.example");    // true
    const auto isMailed = links.send("mailto:ada@orrenby.example"); // false: nobody claims it
    //! [Sending along a chain]

    EXPECT_TRUE(isOpened);
    EXPECT_FALSE(isMailed);
    EXPECT_THAT(opened, ElementsAre("https://orrenby.example"));
}

TEST(ResponderChain, WithoutRespondersClaimsNothing)
{
    auto chain = Chain();

    EXPECT_FALSE(chain.send("go"));
}

TEST(ResponderChain, AsksInOrderUntilOneClaims)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    const auto c = someone();
    auto chain = Chain();
    chain.addResponder(a, passing(diary, "a"))
        .addResponder(b, claiming(diary, "b"))
        .addResponder(c, claiming(diary, "c"));

    EXPECT_TRUE(chain.send("go"));
    EXPECT_THAT(diary, ElementsAre("a asked", "b asked", "b does go"));
}

TEST(ResponderChain, AsksAllAndRunsNothingWhenNobodyClaims)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    auto chain = Chain();
    chain.addResponder(a, passing(diary, "a")).addResponder(b, passing(diary, "b"));

    EXPECT_FALSE(chain.send("go"));
    EXPECT_THAT(diary, ElementsAre("a asked", "b asked"));
}

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

TEST(ResponderChain, AnswersForAChainInIt)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    const auto c = someone();
    const auto inner = std::make_shared<Chain>();
    auto outer = Chain();
    inner->addResponder(b, claiming(diary, "b"));
    outer.addResponder(a, passing(diary, "a")).addResponder(inner).addResponder(c, claiming(diary, "c"));

    EXPECT_TRUE(outer.send("go"));
    EXPECT_THAT(diary, ElementsAre("a asked", "b asked", "b does go"));
}

TEST(ResponderChain, GoesOnAfterAChainThatClaimsNothing)
{
    auto diary = Diary();
    const auto a = someone();
    const auto b = someone();
    const auto inner = std::make_shared<Chain>();
    auto outer = Chain();
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

TEST(ResponderChain, CarriesMessagesThatCannotBeCopied)
{
    using Letters = ResponderChain<std::unique_ptr<int>>;
    auto sum = 0;
    const auto a = someone();
    auto letters = Letters();
    letters.addResponder(a, [&](const std::unique_ptr<int>&) -> Letters::Action {
        return [&](const std::unique_ptr<int>& letter) { sum += *letter; };
    });

    EXPECT_TRUE(letters.send(std::make_unique<int>(5)));
    EXPECT_EQ(sum, 5);
}

TEST(ResponderChain, ReportsWhoComesAndGoesInTheDiagnosticBuild)
{
    static std::vector<std::tuple<Trace::Kind, std::string, std::string>> traced;
    traced.clear();
    auto diary = Diary();
    const auto a = someone();
    auto chain = Chain();
    Trace::onEvent([](const Trace::Event& event) {
        traced.emplace_back(event.kind, event.subject, event.site.function());
    });

    chain.addResponder(a, passing(diary, "a"));
    chain.removeResponder(a);
    chain.removeResponder(a);
    Trace::onEvent(nullptr);

#ifdef ORRENBY_DIAGNOSTICS
    EXPECT_THAT(traced,
        ElementsAre(std::tuple(Trace::Kind::Attach, typeName<int>(), "TestBody"),
            std::tuple(Trace::Kind::Detach, typeName<int>(), "TestBody")));
#else
    EXPECT_THAT(traced, IsEmpty());
#endif
}

TEST(ResponderChainDeathTest, NeedsAResponder)
{
    auto diary = Diary();
    auto chain = Chain();

    EXPECT_DEATH(chain.addResponder(Ref<int>(), claiming(diary, "nobody")),
        "^Fatal error: Empty reference in place of a responder: file Utilities/Discover\n$");
    EXPECT_DEATH(chain.addResponder(Ref<Chain>()),
        "^Fatal error: Empty reference in place of a responder: file Utilities/Discover\n$");
}

TEST(ResponderChainDeathTest, NeedsAHandler)
{
    auto chain = Chain();

    EXPECT_DEATH(chain.addResponder(someone(), nullptr),
        "^Fatal error: Empty callable in place of a handler: file Utilities/Discover\n$");
}

} // namespace
