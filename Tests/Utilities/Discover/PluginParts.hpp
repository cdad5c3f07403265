#pragma once

/// @file
/// Plugins that write down what they are asked.

#include "Orrenby/Utilities/Discover/PluginList.hpp"
#include <string>
#include <utility>
#include <vector>

namespace orrenby::testing {

using Questions = std::vector<std::string>;

/// What the plugins' products are made of.
struct Kitchen {
    std::string name = "kitchen";
};

/// Builds the text "name of kitchen", from the state on that it is given.
class NotingPlugin : public Plugin<Kitchen, std::string, int> {
public:
    NotingPlugin(Questions& questions, std::string name, int enabledFrom)
        : Plugin(Kitchen())
        , m_questions(&questions)
        , m_name(std::move(name))
        , m_enabledFrom(enabledFrom)
    {}

    bool isEnabled(const Kitchen&, const int& state) const override
    {
        m_questions->push_back(m_name + " enabled at " + std::to_string(state) + "?");
        return state >= m_enabledFrom;
    }

    std::string build(const Kitchen& kitchen) const override
    {
        m_questions->push_back("build " + m_name);
        return m_name + " of " + kitchen.name;
    }

private:
    Questions* m_questions;
    std::string m_name;
    int m_enabledFrom;
};

/// Three plugins: the first enabled from 3 on, the others from 1 on.
inline PluginList<Kitchen, std::string, int>::Plugins threePlugins(Questions& questions)
{
    return {std::make_shared<NotingPlugin>(questions, "soup", 3),
        std::make_shared<NotingPlugin>(questions, "bread", 1),
        std::make_shared<NotingPlugin>(questions, "cake", 1)};
}

} // namespace orrenby::testing
