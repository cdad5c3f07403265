#include "Orrenby/Utilities/Discover/ResponderChain.hpp"

#include "Tests/Utilities/Discover/ResponderChainParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

using namespace orrenby;
using orrenby::testing::Chain;
using orrenby::testing::claiming;
using orrenby::testing::Diary;
using orrenby::testing::passing;
using orrenby::testing::someone;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
