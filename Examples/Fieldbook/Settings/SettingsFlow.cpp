#include "Settings/SettingsFlow.hpp"

#include "Orrenby/Platform/Time/Locale.hpp"
#include <string>

namespace fieldbook {

using orrenby::keyPath;

SettingsFlow::SettingsFlow(Session& session)
    : AbstractFlow(orrenby::make<ScreenContext>(session, "settings"), orrenby::Void())
    , m_session(session)
{}

SettingsFlow::~SettingsFlow() = default;

void SettingsFlow::didStart()
{
    show("user", m_session.user ? m_session.user->stringValue() : "nobody");
    show("language", orrenby::Locale::current().identifier());
    m_changes = orrenby::make<orrenby::KeyPathObserver<Settings>>(m_session.settings);
    // Each callable hears of the value at once.
    m_changes->observe(keyPath<&Settings::sortOrder>(),
        [this](const auto& observation) { show("order", nameOf(observation.value())); });
    m_changes->observe(keyPath<&Settings::isDetailed>(),
        [this](const auto& observation) { show("details", observation.value() ? "on" : "off"); });
}

void SettingsFlow::show(std::string_view name, std::string_view value)
{
    m_session.terminal.print("| " + std::string(name) + ": " + std::string(value));
}

} // namespace fieldbook
