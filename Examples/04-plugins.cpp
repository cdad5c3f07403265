// Step 4: plugins offer what a screen may show; a builder makes what they need and asks them.

#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Utilities/Discover/Builder.hpp"
#include "Orrenby/Utilities/Discover/PluginListWithDefault.hpp"
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

using namespace orrenby;

struct Account {
    std::string user;
    bool isPremium = false;
};
enum class Screen { Home, Player };
using Buttons = std::vector<std::string>;

class ShareButton : public Plugin<Account, std::string, Screen> {
public:
    using Plugin::Plugin;
    bool isEnabled(const Account&, const Screen& screen) const override { return screen == Screen::Player; }
    std::string build(const Account& account) const override { return "share as " + account.user; }
};

class OfflineButton : public Plugin<Account, std::string, Screen> {
public:
    using Plugin::Plugin;
    bool isEnabled(const Account& account, const Screen&) const override { return account.isPremium; }
    std::string build(const Account&) const override { return "keep offline"; }
};

class Toolbar : public PluginListWithDefault<Account, std::string, Screen> { // knows the plugins, alone
public:
    using PluginListWithDefault::PluginListWithDefault;
    Plugins plugins(const Account& account) const override
    {
        return {std::make_shared<ShareButton>(account), std::make_shared<OfflineButton>(account)};
    }
    std::string default_(const Account&) const override { return "back"; } // always there, and first
};

// Makes the account of a user, and with it the buttons of a screen.
class ToolbarBuilder : public Builder<Account, Buttons, Screen, std::string> {
public:
    using Builder::Builder;
    Buttons buildWithComponent(const Account& account, Screen screen) const override
    {
        return Toolbar(account).createAll(screen);
    }
};

int main()
{
    const auto builder = ToolbarBuilder([](const std::string& user) { return Account{user, user == "Ada"}; });
    std::printf("Ada, home: %s\n", describe(builder.build(Screen::Home, "Ada")).c_str());
    std::printf("Ada, player: %s\n", describe(builder.build(Screen::Player, "Ada")).c_str());
    return builder.build(Screen::Player, "Ben") == Buttons{"back", "share as Ben"} ? 0 : 1; // no premium
}
