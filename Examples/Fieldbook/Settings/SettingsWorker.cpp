#include "Settings/SettingsWorker.hpp"

#include "Terminal/Text.hpp"

namespace fieldbook {

using orrenby::keyPath;

SettingsWorker::SettingsWorker(Session& session)
    : m_session(session)
{}

SettingsWorker::~SettingsWorker() = default;

void SettingsWorker::didStart()
{
    m_session.trace.step("SettingsWorker starts");
    m_listing.emplace(m_session.terminal, m_session.catalogue);
    m_notifications.emplace(orrenby::NotificationCenter::defaultCenter());
    m_notifications->observe(
        {.name = feedShouldSort}, [this](const auto& notification) { take(notification); });
    m_notifications->observe({.name = feedIsTold}, [this](const auto&) { keepPromise(); });

    m_changes = orrenby::make<orrenby::KeyPathObserver<Settings>>(m_session.settings);
    m_changes->observe(keyPath<&Settings::sortOrder>(), [this](const auto& observation) {
        if (observation.isChange())
            sort(observation.value());
    });
    m_changes->observe(keyPath<&Settings::isDetailed>(), [this](const auto& observation) {
        if (observation.isChange())
            say(observation.value() ? "cards show everything" : "cards are short");
    });

    // The tally changes when the catalogue has.
    m_session.tally.asPublisher().bind([this](const Tally&) { tellNews(); }).store(*this);
}

void SettingsWorker::willStop()
{
    m_session.trace.step("SettingsWorker stops");
    m_changes.reset();
    m_notifications.reset();
    m_listing.reset();
    m_hasPromised = false;
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
    const auto rows = m_listing->all(order);
    m_hasPromised = rows.empty() && !m_isTold;
    say((rows.empty() ? "reports will be listed by " : "by ") + std::string(nameOf(order)));
    print(rows);
}

void SettingsWorker::sort(SortOrder order)
{
    if (!m_listing->isShown() || m_hasPromised)
        return list(order);
    const auto rows = m_listing->sorted(order);
    const auto moved = rows.empty() ? "no row" : counted(rows.size(), "row");
    say("by " + std::string(nameOf(order)) + ": " + moved + " moved");
    print(rows);
}

void SettingsWorker::keepPromise()
{
    m_isTold = true;
    if (m_hasPromised && !m_session.catalogue.isEmpty())
        list(m_session.settings->sortOrder.get());
    m_hasPromised = false;
}

void SettingsWorker::tellNews()
{
    if (!m_hasPromised)
        print(m_listing->news());
}

void SettingsWorker::print(const std::vector<std::string>& lines)
{
    for (const auto& line : lines)
        m_session.terminal.print(line);
}

void SettingsWorker::say(const std::string& text)
{
    m_session.terminal.print(m_session.terminal.styled(Style::faint, "= " + text));
}

} // namespace fieldbook
