#include "Orrenby/Utilities/Log/CaptureHandler.hpp"

#include <algorithm>
#include <mutex>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::Log {

struct CaptureHandler::Contents {
    std::mutex mutex;
    std::vector<Entry> entries;
    std::vector<CriticalError> criticalErrors;
};

CaptureHandler::CaptureHandler()
    : m_contents(std::make_shared<Contents>())
{}

void CaptureHandler::operator()(Level level, const DeferredEvent& event) const
{
    // Made before the lock is taken: what is logged may log itself.
    auto entry = Entry{level, event()};
    const auto lock = std::lock_guard(m_contents->mutex);
    m_contents->entries.push_back(std::move(entry));
}

void CaptureHandler::operator()(const Event& event, const NSError& error) const
{
    const auto lock = std::lock_guard(m_contents->mutex);
    m_contents->criticalErrors.push_back({event, error});
}

std::vector<CaptureHandler::Entry> CaptureHandler::entries() const
{
    const auto lock = std::lock_guard(m_contents->mutex);
    return m_contents->entries;
}

std::vector<CaptureHandler::CriticalError> CaptureHandler::criticalErrors() const
{
    const auto lock = std::lock_guard(m_contents->mutex);
    return m_contents->criticalErrors;
}

std::size_t CaptureHandler::count() const
{
    const auto lock = std::lock_guard(m_contents->mutex);
    return m_contents->entries.size();
}

std::size_t CaptureHandler::count(Level level) const { return messages(level).size(); }

std::vector<std::string> CaptureHandler::messages() const
{
    std::vector<std::string> messages;
    for (const Entry& entry : entries())
        messages.push_back(entry.event.message());
    return messages;
}

std::vector<std::string> CaptureHandler::messages(Level level) const
{
    std::vector<std::string> messages;
    for (const Entry& entry : entries())
        if (entry.level == level)
            messages.push_back(entry.event.message());
    return messages;
}

bool CaptureHandler::contains(Level level, std::string_view message) const
{
    const auto messages = this->messages(level);
    return std::find(messages.begin(), messages.end(), message) != messages.end();
}

void CaptureHandler::clear() const
{
    // Released after the lock: the properties may own anything.
    std::vector<Entry> entries;
    std::vector<CriticalError> criticalErrors;
    const auto lock = std::lock_guard(m_contents->mutex);
    std::swap(entries, m_contents->entries);
    std::swap(criticalErrors, m_contents->criticalErrors);
}

} // namespace orrenby::Log
