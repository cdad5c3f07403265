#include "SettingsWorker.hpp"

#include "FeedPrinter.hpp"

namespace fieldbook {

using orrenby::keyPath;

SettingsWorker::SettingsWorker(Session& session)
    : m_session(session)
{}

SettingsWorker::~SettingsWorker() = default;

void SettingsWorker::didStart()
{
    m_session.trace.step("SettingsWorker starts");
    m_notifications.emplace(orrenby::NotificationCenter::defaultCenter());
    m_notifications->observe(
        {.name = feedShouldSort}, [this](const auto& notification) { take(notification); });

    m_changes = orrenby::make<orrenby::KeyPathObserver<Settings>>(m_session.settings);
    m_changes->observe(keyPath<&Settings::sortOrder>(), [this](const auto& observation) {
        if (observation.isChange())
            list(observation.value());
    });
    m_changes->observe(keyPath<&Settings::isDetailed>(), [this](const auto& observation) {
        if (observation.isChange())
            say(observation.value() ? "cards show everything" : "cards are short");
    });
}

void SettingsWorker::willStop()
{
    m_session.trace.step("SettingsWorker stops");
    m_changes.reset();
    m_notifications.reset();
}

void SettingsWorker::take(const orrenby::Notification& notification)
{
    const auto* const order = notification.userInfo().find(orderKey);
    for (const auto possible : orrenby::allCases<SortOrder>)
        if (order && *order == orrenby::Any(nameOf(possible)))
            m_session.settings->sortOrder = possible;
}

void SettingsWorker::list(SortOrder order)
{
    say("by " + std::string(nameOf(order)));
    for (const auto& [number, report] : m_session.catalogue.sorted(order))
        m_session.terminal.print("  #" + std::to_string(number) + ' '
            + m_session.terminal.styled(styleOf(report.severity), padded(nameOf(report.severity)))
            + report.title + ", " + report.place);
}

void SettingsWorker::say(const std::string& text)
{
    m_session.terminal.print(m_session.terminal.styled(Style::faint, "= " + text));
}

} // namespace fieldbook
