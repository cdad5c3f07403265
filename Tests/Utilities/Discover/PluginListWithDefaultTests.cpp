#include "Orrenby/Utilities/Discover/PluginListWithDefault.hpp"

#include "Tests/Utilities/Discover/PluginParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <type_traits>

using namespace orrenby;
using orrenby::testing::Kitchen;
using orrenby::testing::Questions;
using orrenby::testing::threePlugins;
using ::testing::ElementsAre;

namespace {

using Dishes = PluginListWithDefault<Kitchen, std::string, int>;
using Stateless = PluginListWithDefault<Kitchen, std::string, Void>;

class Menu : public Dishes {
public:
    explicit Menu(Questions& questions)
        : PluginListWithDefault(Kitchen{"inn"})
        , m_questions(&questions)
    {}

    Plugins plugins(const Kitchen& kitchen) const override
    {
        m_questions->push_back("plugins of " + kitchen.name + "?");
        return threePlugins(*m_questions);
    }

    std::string default_(const Kitchen& kitchen) const override
    {
        m_questions->push_back("default of " + kitchen.name + "?");
        return "water of " + kitchen.name;
    }

private:
    Questions* m_questions;
};

/// A list without a state and without plugins.
class Bare : public Stateless {
public:
    using PluginListWithDefault::PluginListWithDefault;
    Plugins plugins(const Kitchen&) const override { return {}; }
    std::string default_(const Kitchen& kitchen) const override { return "water of " + kitchen.name; }
};

template <class Any>
concept CreatesWithoutState = requires(const Any& list)
{
    list.create();
};

template <class Any>
concept CreatesAllWithoutState = requires(const Any& list)
{
    list.createAll();
};

TEST(PluginListWithDefault, AlwaysHasAProduct)
{
    //! [Writing a plugin list with a default]
    struct Account {
        std::string name = "Ada";
    };
    class Badge : public Plugin<Account, std::string, int> {
    public:
        using Plugin::Plugin;
        bool isEnabled(const Account&, const int& visits) const override { return visits >= 100; }
        std::string build(const Account& account) const override { return account.name + ", our friend"; }
    };
    class Titles : public PluginListWithDefault<Account, std::string, int> {
    public:
        using PluginListWithDefault::PluginListWithDefault;
        Plugins plugins(const Account& account) const override { return {std::make_shared<Badge>(account)}; }
        std::string default_(const Account& account) const override { return account.name; }
    };

    const auto titles = Titles(Account());
    const auto all = titles.createAll(100); // Ada; Ada, our friend
    const auto title = titles.create(100);  // Ada
    //! [Writing a plugin list with a default]

    EXPECT_THAT(all, ElementsAre("Ada", "Ada, our friend"));
    EXPECT_EQ(title, "Ada");
}

TEST(PluginListWithDefault, CreatesTheDefaultAheadOfThePlugins)
{
    auto questions = Questions();
    const auto menu = Menu(questions);

    EXPECT_THAT(menu.createAll(1), ElementsAre("water of inn", "bread of kitchen", "cake of kitchen"));
}

TEST(PluginListWithDefault, AsksForTheDefaultFirst)
{
    auto questions = Questions();
    const auto menu = Menu(questions);

    (void)menu.createAll(0);

    EXPECT_THAT(questions,
        ElementsAre("default of inn?", "plugins of inn?", "soup enabled at 0?", "bread enabled at 0?",
            "cake enabled at 0?"));
}

TEST(PluginListWithDefault, CreatesTheDefaultAndAsksNoPlugin)
{
    auto questions = Questions();
    const auto menu = Menu(questions);

    EXPECT_EQ(menu.create(3), "water of inn");
    EXPECT_THAT(questions, ElementsAre("default of inn?"));
}

TEST(PluginListWithDefault, CreatesTheDefaultAsAPluginListToo)
{
    auto questions = Questions();
    const auto menu = Menu(questions);
    const PluginList<Kitchen, std::string, int>& list = menu;

    EXPECT_EQ(list.create(3), "water of inn");
    EXPECT_THAT(questions, ElementsAre("default of inn?"));
    EXPECT_THAT(list.createAll(1), ElementsAre("water of inn", "bread of kitchen", "cake of kitchen"));
}

TEST(PluginListWithDefault, GivesAPlainProduct)
{
    auto questions = Questions();
    const auto menu = Menu(questions);

    EXPECT_TRUE((std::is_same_v<decltype(menu.create(1)), std::string>));
    EXPECT_TRUE((std::is_same_v<decltype(Bare(Kitchen()).create()), std::string>));
}

TEST(PluginListWithDefault, HasTheDefaultAloneWithoutPlugins)
{
    const auto bare = Bare(Kitchen());

    EXPECT_THAT(bare.createAll(Void()), ElementsAre("water of kitchen"));
}

TEST(PluginListWithDefault, NeedsNoStateWhereTheStateIsVoid)
{
    const auto bare = Bare(Kitchen{"attic"});
    const PluginList<Kitchen, std::string, Void>& list = bare;

    EXPECT_EQ(bare.create(), "water of attic");
    EXPECT_THAT(bare.createAll(), ElementsAre("water of attic"));
    EXPECT_EQ(list.create(), "water of attic");
    EXPECT_THAT(list.createAll(), ElementsAre("water of attic"));
}

TEST(PluginListWithDefault, NeedsAStateWhereItIsNotVoid)
{
    EXPECT_TRUE(CreatesWithoutState<Stateless>);
    EXPECT_TRUE(CreatesAllWithoutState<Stateless>);
    EXPECT_FALSE(CreatesWithoutState<Dishes>);
    EXPECT_FALSE(CreatesAllWithoutState<Dishes>);
}

TEST(PluginListWithDefault, CreatesWhatCannotBeCopied)
{
    class Single : public PluginListWithDefault<int, std::unique_ptr<int>, Void> {
    public:
        using PluginListWithDefault::PluginListWithDefault;
        Plugins plugins(const int&) const override { return {}; }
        std::unique_ptr<int> default_(const int& component) const override
        {
            return std::make_unique<int>(component);
        }
    };
    const auto single = Single(8);

    const auto all = single.createAll();

    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(*all.front(), 8);
    EXPECT_EQ(*single.create(), 8);
}

TEST(PluginListWithDefaultDeathTest, NeedsADefault)
{
    const auto list = Stateless(Kitchen());
    const PluginList<Kitchen, std::string, Void>& base = list;
    const auto message = "^Fatal error: Method in abstract base class must be overridden: "
                         "file Utilities/Discover, line 209\n$";

    EXPECT_DEATH((void)list.default_(Kitchen()), message);
    EXPECT_DEATH((void)list.createAll(), message);
    EXPECT_DEATH((void)list.create(), message);
    EXPECT_DEATH((void)list.create(Void()), message);
    EXPECT_DEATH((void)base.create(), message);
}

TEST(PluginListWithDefaultDeathTest, NeedsPluginsForTheWholeListOnly)
{
    class DefaultOnly : public Stateless {
    public:
        using PluginListWithDefault::PluginListWithDefault;
        std::string default_(const Kitchen&) const override { return "water"; }
    };
    const auto list = DefaultOnly(Kitchen());

    EXPECT_EQ(list.create(), "water");
    EXPECT_DEATH((void)list.createAll(),
        "^Fatal error: Method in abstract base class must be overridden: "
        "file Utilities/Discover, line 182\n$");
}

} // namespace
