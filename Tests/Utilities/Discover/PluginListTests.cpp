#include "Orrenby/Utilities/Discover/PluginList.hpp"

#include "Tests/Utilities/Discover/PluginParts.hpp"
#include <gmock/gmock.h>
#include <memory>

using namespace orrenby;
using orrenby::testing::Kitchen;
using orrenby::testing::NotingPlugin;
using orrenby::testing::Questions;
using orrenby::testing::threePlugins;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Dishes = PluginList<Kitchen, std::string, int>;
using Stateless = PluginList<Kitchen, std::string, Void>;

/// Gives the plugins it was made with, and counts how often it is asked.
class Menu : public Dishes {
public:
    explicit Menu(Plugins plugins)
        : PluginList(Kitchen{"inn"})
        , m_plugins(std::move(plugins))
    {}

    Plugins plugins(const Kitchen& kitchen) const override
    {
        kitchens.push_back(kitchen.name);
        return m_plugins;
    }

    mutable std::vector<std::string> kitchens;

private:
    Plugins m_plugins;
};

class Door : public Plugin<Kitchen, std::string, Void> {
public:
    using Plugin::Plugin;
    bool isEnabled(const Kitchen& kitchen, const Void&) const override { return kitchen.name != "cellar"; }
    std::string build(const Kitchen& kitchen) const override { return kitchen.name; }
};

class Doors : public Stateless {
public:
    using PluginList::PluginList;
    Plugins plugins(const Kitchen& kitchen) const override
    {
        return {std::make_shared<Door>(Kitchen{"cellar"}), std::make_shared<Door>(Kitchen{"attic"}),
            std::make_shared<Door>(kitchen)};
    }
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

TEST(PluginList, GathersTheProductsOfEnabledPlugins)
{
    //! [Writing a plugin list]
    struct Account {
        bool isPremium = false;
    };
    using ToolbarPlugin = Plugin<Account, std::string, Void>;

    class ShareButton : public ToolbarPlugin {
    public:
        using Plugin::Plugin;
        bool isEnabled(const Account&, const Void&) const override { return true; }
        std::string build(const Account&) const override { return "share"; }
    };
    class OfflineButton : public ToolbarPlugin {
    public:
        using Plugin::Plugin;
        bool isEnabled(const Account& account, const Void&) const override { return account.isPremium; }
        std::string build(const Account&) const override { return "keep offline"; }
    };
    class Toolbar : public PluginList<Account, std::string, Void> {
    public:
        using PluginList::PluginList;
        Plugins plugins(const Account& account) const override
        {
            return {std::make_shared<OfflineButton>(account), std::make_shared<ShareButton>(account)};
        }
    };

    const auto buttons = Toolbar(Account()).createAll();                         // share
    const auto premiumButtons = Toolbar(Account{.isPremium = true}).createAll(); // keep offline, share
    const auto firstButton = Toolbar(Account{.isPremium = true}).create();       // keep offline
    //! [Writing a plugin list]

    EXPECT_THAT(buttons, ElementsAre("share"));
    EXPECT_THAT(premiumButtons, ElementsAre("keep offline", "share"));
    EXPECT_EQ(firstButton, "keep offline");
}

TEST(PluginList, LeavesOutDisabledPluginsAndKeepsTheOrder)
{
    auto questions = Questions();
    const auto menu = Menu(threePlugins(questions));

    EXPECT_THAT(menu.createAll(1), ElementsAre("bread of kitchen", "cake of kitchen"));
    EXPECT_THAT(questions,
        ElementsAre(
            "soup enabled at 1?", "bread enabled at 1?", "build bread", "cake enabled at 1?", "build cake"));
}

TEST(PluginList, CreatesTheFirstProductAndStillAsksEveryPlugin)
{
    auto questions = Questions();
    const auto menu = Menu(threePlugins(questions));

    EXPECT_EQ(menu.create(1), "bread of kitchen");
    EXPECT_THAT(questions,
        ElementsAre(
            "soup enabled at 1?", "bread enabled at 1?", "build bread", "cake enabled at 1?", "build cake"));
}

TEST(PluginList, CreatesNothingIfNoPluginIsEnabled)
{
    auto questions = Questions();
    const auto menu = Menu(threePlugins(questions));

    EXPECT_EQ(menu.create(0), std::nullopt);
    EXPECT_THAT(menu.createAll(0), IsEmpty());
    EXPECT_EQ(questions.size(), 6U);
}

TEST(PluginList, CreatesNothingWithoutPlugins)
{
    const auto menu = Menu({});

    EXPECT_EQ(menu.create(1), std::nullopt);
    EXPECT_THAT(menu.createAll(1), IsEmpty());
}

TEST(PluginList, AsksForItsPluginsOncePerCallWithItsComponent)
{
    auto questions = Questions();
    const auto menu = Menu(threePlugins(questions));

    (void)menu.createAll(1);
    EXPECT_THAT(menu.kitchens, ElementsAre("inn"));

    (void)menu.create(1);
    EXPECT_THAT(menu.kitchens, ElementsAre("inn", "inn"));
    EXPECT_EQ(menu.component().name, "inn");
}

TEST(PluginList, AsksAPluginThatStandsTwiceTwice)
{
    auto questions = Questions();
    const auto cake = std::make_shared<NotingPlugin>(questions, "cake", 1);
    const auto menu = Menu({cake, cake});

    EXPECT_THAT(menu.createAll(1), ElementsAre("cake of kitchen", "cake of kitchen"));
}

TEST(PluginList, NeedsNoStateWhereTheStateIsVoid)
{
    const auto doors = Doors(Kitchen{"house"});

    EXPECT_THAT(doors.createAll(), ElementsAre("attic", "house"));
    EXPECT_EQ(doors.create(), "attic");
}

TEST(PluginList, NeedsAStateWhereItIsNotVoid)
{
    EXPECT_TRUE(CreatesWithoutState<Stateless>);
    EXPECT_TRUE(CreatesAllWithoutState<Stateless>);
    EXPECT_FALSE(CreatesWithoutState<Dishes>);
    EXPECT_FALSE(CreatesAllWithoutState<Dishes>);
}

TEST(PluginList, CreatesTheFirstOfWhatAnOverrideOfCreateAllGives)
{
    class Reversed : public Menu {
    public:
        using Menu::Menu;
        std::vector<std::string> createAll(const int& state) const override
        {
            auto products = Menu::createAll(state);
            return {products.rbegin(), products.rend()};
        }
    };
    auto questions = Questions();
    const auto menu = Reversed(threePlugins(questions));

    EXPECT_EQ(menu.create(1), "cake of kitchen");
}

TEST(PluginList, CreatesWhatAnOverrideOfCreateOptionalGives)
{
    class Fixed : public Doors {
    public:
        using Doors::Doors;
        std::optional<std::string> createOptional(const Void&) const override { return "gate"; }
    };
    const auto list = Fixed(Kitchen());

    EXPECT_EQ(list.create(), "gate");
    EXPECT_EQ(list.create(Void()), "gate");
}

TEST(PluginList, GathersWhatCannotBeCopied)
{
    using Single = Plugin<int, std::unique_ptr<int>, Void>;
    class Number : public Single {
    public:
        using Single::Single;
        bool isEnabled(const int&, const Void&) const override { return true; }
        std::unique_ptr<int> build(const int& component) const override
        {
            return std::make_unique<int>(component);
        }
    };
    class Numbers : public PluginList<int, std::unique_ptr<int>, Void> {
    public:
        using PluginList::PluginList;
        Plugins plugins(const int& component) const override
        {
            return {std::make_shared<Number>(component), std::make_shared<Number>(component + 1)};
        }
    };
    const auto list = Numbers(4);

    const auto all = list.createAll();
    const auto first = list.create();

    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(*all[1], 5);
    EXPECT_EQ(**first, 4);
}

TEST(PluginListDeathTest, NeedsToNameItsPlugins)
{
    const auto list = Stateless(Kitchen());
    const auto message = "^Fatal error: Method in abstract base class must be overridden: "
                         "file Utilities/Discover, line 182\n$";

    EXPECT_DEATH((void)list.plugins(Kitchen()), message);
    EXPECT_DEATH((void)list.createAll(), message);
    EXPECT_DEATH((void)list.create(), message);
}

TEST(PluginListDeathTest, TakesNoEmptyReferenceAsAPlugin)
{
    const auto menu = Menu({nullptr});

    EXPECT_DEATH((void)menu.createAll(1),
        "^Fatal error: Empty reference in place of a plugin: file Utilities/Discover\n$");
}

} // namespace
