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
    for (const auto possible : orrenby::allCases<SortOrder>) {
        if (!order || *order != orrenby::Any(nameOf(possible)))
            continue;
        // Whoever asks gets an answer, also where nothing changes.
        if (m_session.settings->sortOrder.get() == possible)
            list(possible);
        m_session.settings->sortOrder = possible;
    }
}

void SettingsWorker::list(SortOrder order)
{
    const auto reports = m_session.catalogue.sorted(order);
    say((reports.empty() ? "reports will be listed by " : "by ") + std::string(nameOf(order)));
    for (const auto& [number, report] : reports)
        m_session.terminal.print("  #" + std::to_string(number) + ' '
            + m_session.terminal.styled(styleOf(report.severity), padded(nameOf(report.severity)))
            + report.title.text + ", " + report.place.text);
}

void SettingsWorker::say(const std::string& text)
{
    m_session.terminal.print(m_session.terminal.styled(Style::faint, "= " + text));
}

} // namespace fieldbook
