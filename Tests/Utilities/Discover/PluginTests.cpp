#include "Orrenby/Utilities/Discover/Plugin.hpp"

#include "Tests/Utilities/Discover/PluginParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>

using namespace orrenby;
using orrenby::testing::Kitchen;
using orrenby::testing::NotingPlugin;
using orrenby::testing::Questions;
using ::testing::ElementsAre;

namespace {

/// A plugin without a state, enabled in every kitchen but one.
class Lamp : public Plugin<Kitchen, std::string, Void> {
public:
    using Plugin::isEnabled;
    using Plugin::Plugin;

    bool isEnabled(const Kitchen& kitchen, const Void&) const override { return kitchen.name != "cellar"; }
    std::string build(const Kitchen& kitchen) const override { return "lamp of " + kitchen.name; }
};

template <class Any>
concept CreatesWithoutState = requires(const Any& plugin)
{
    plugin.create();
};

template <class Any>
concept AnswersWithoutState = requires(const Any& plugin, Kitchen kitchen)
{
    plugin.isEnabled(kitchen);
};

TEST(Plugin, BuildsOnlyWhereItIsEnabled)
{
    //! [Writing a plugin]
    struct Account {
        bool isPremium = false;
    };
    enum class Screen { Home, Player };

    class OfflineButton : public Plugin<Account, std::string, Screen> {
    public:
        using Plugin::Plugin;

        bool isEnabled(const Account& account, const Screen& screen) const override
        {
            return account.isPremium && screen == Screen::Player;
        }
        std::string build(const Account&) const override { return "keep offline"; }
    };

    const auto plugin = OfflineButton(Account{.isPremium = true});
    const auto onPlayer = plugin.create(Screen::Player); // "keep offline"
    const auto onHome = plugin.create(Screen::Home);     // nothing
    //! [Writing a plugin]

    EXPECT_EQ(onPlayer, "keep offline");
    EXPECT_EQ(onHome, std::nullopt);
}

TEST(Plugin, KeepsItsComponent)
{
    const auto kitchen = std::make_shared<Kitchen>();
    const auto plugin = Plugin<Ref<Kitchen>, int, int>(kitchen);

    EXPECT_EQ(plugin.component(), kitchen);
}

TEST(Plugin, HandsItsComponentToBothOperations)
{
    const auto cellar = Lamp(Kitchen{"cellar"});
    const auto attic = Lamp(Kitchen{"attic"});

    EXPECT_EQ(cellar.create(), std::nullopt);
    EXPECT_EQ(attic.create(), "lamp of attic");
}

TEST(Plugin, AsksFirstAndBuildsThen)
{
    auto questions = Questions();
    const auto plugin = NotingPlugin(questions, "soup", 3);

    EXPECT_EQ(plugin.create(3), "soup of kitchen");
    EXPECT_THAT(questions, ElementsAre("soup enabled at 3?", "build soup"));
}

TEST(Plugin, BuildsNothingWhileItIsNotEnabled)
{
    auto questions = Questions();
    const auto plugin = NotingPlugin(questions, "soup", 3);

    EXPECT_EQ(plugin.create(2), std::nullopt);
    EXPECT_THAT(questions, ElementsAre("soup enabled at 2?"));
}

TEST(Plugin, DecidesAndBuildsAnewEachTime)
{
    auto questions = Questions();
    const auto plugin = NotingPlugin(questions, "soup", 3);

    (void)plugin.create(3);
    (void)plugin.create(2);
    (void)plugin.create(3);

    EXPECT_THAT(questions,
        ElementsAre(
            "soup enabled at 3?", "build soup", "soup enabled at 2?", "soup enabled at 3?", "build soup"));
}

TEST(Plugin, BuildsWhenAskedDirectlyEvenIfItIsNotEnabled)
{
    auto questions = Questions();
    const auto plugin = NotingPlugin(questions, "soup", 3);

    EXPECT_EQ(plugin.build(Kitchen{"ship"}), "soup of ship");
    EXPECT_THAT(questions, ElementsAre("build soup"));
}

TEST(Plugin, NeedsNoStateWhereTheStateIsVoid)
{
    const auto lamp = Lamp(Kitchen());

    EXPECT_EQ(lamp.create(), lamp.create(Void()));
    EXPECT_TRUE(lamp.isEnabled(Kitchen{"attic"}));
    EXPECT_FALSE(lamp.isEnabled(Kitchen{"cellar"}));
}

TEST(Plugin, NeedsAStateWhereItIsNotVoid)
{
    EXPECT_TRUE(CreatesWithoutState<Lamp>);
    EXPECT_TRUE(AnswersWithoutState<Lamp>);
    EXPECT_FALSE((CreatesWithoutState<Plugin<Kitchen, std::string, int>>));
    EXPECT_FALSE((AnswersWithoutState<Plugin<Kitchen, std::string, int>>));
}

TEST(Plugin, WithoutAStateStillGoesThroughAnOverrideOfCreate)
{
    class Candle : public Lamp {
    public:
        using Lamp::create;
        using Lamp::Lamp;
        std::optional<std::string> create(const Void&) const override { return "candle"; }
    };
    const auto candle = Candle(Kitchen{"cellar"});

    EXPECT_EQ(candle.create(), "candle");
}

TEST(Plugin, BuildsWhatCannotBeCopied)
{
    class Single : public Plugin<int, std::unique_ptr<int>, Void> {
    public:
        using Plugin::Plugin;
        bool isEnabled(const int&, const Void&) const override { return true; }
        std::unique_ptr<int> build(const int& component) const override
        {
            return std::make_unique<int>(component);
        }
    };
    const auto plugin = Single(7);

    const auto product = plugin.create();

    ASSERT_TRUE(product.has_value());
    EXPECT_EQ(**product, 7);
}

TEST(Plugin, LetsErrorsPass)
{
    class Failing : public Lamp {
    public:
        using Lamp::Lamp;
        std::string build(const Kitchen&) const override { throw std::runtime_error("no bulb"); }
    };
    const auto failing = Failing(Kitchen());

    EXPECT_THROW((void)failing.create(), std::runtime_error);
}

TEST(PluginDeathTest, NeedsToKnowWhetherItIsEnabled)
{
    const auto plugin = Plugin<Kitchen, std::string, Void>(Kitchen());
    const auto message = "^Fatal error: Method in abstract base class must be overridden: "
                         "file Utilities/Discover, line 145\n$";

    EXPECT_DEATH((void)plugin.isEnabled(Kitchen(), Void()), message);
    EXPECT_DEATH((void)plugin.isEnabled(Kitchen()), message);
    EXPECT_DEATH((void)plugin.create(), message);
}

TEST(PluginDeathTest, NeedsToKnowHowToBuild)
{
    class AlwaysEnabled : public Plugin<Kitchen, std::string, int> {
    public:
        using Plugin::Plugin;
        bool isEnabled(const Kitchen&, const int&) const override { return true; }
    };
    const auto plugin = AlwaysEnabled(Kitchen());
    const auto message = "^Fatal error: Method in abstract base class must be overridden: "
                         "file Utilities/Discover, line 150\n$";

    EXPECT_DEATH((void)plugin.build(Kitchen()), message);
    EXPECT_DEATH((void)plugin.create(1), message);
}

} // namespace
