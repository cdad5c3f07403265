#include "Feed/AnalyticsWorker.hpp"

#include <utility>
#include <variant>

namespace fieldbook {

AnalyticsWorker::AnalyticsWorker(Session& session, News news)
    : m_session(session)
    , m_news(std::move(news))
{}

AnalyticsWorker::~AnalyticsWorker() = default;

void AnalyticsWorker::didStart()
{
    m_session.trace.step("AnalyticsWorker starts");
    // The worker's own set keeps the subscription, and stopping the worker ends it.
    m_news
        .sink([this](const News::Payload& payload) {
            if (const auto* news = payload.asValue())
                count(*news);
        })
        .store(*this);
}

void AnalyticsWorker::willStop() { m_session.trace.step("AnalyticsWorker stops"); }

void AnalyticsWorker::count(const FeedNews& news)
{
    if (const auto* remembered = std::get_if<Remembered>(&news)) {
        put(remembered->file, remembered->report); // it happened before this session
    } else if (const auto* added = std::get_if<Added>(&news)) {
        ++m_tally.added;
        put(added->file, added->report);
    } else if (const auto* changed = std::get_if<Changed>(&news)) {
        ++m_tally.changed;
        put(changed->file, changed->report);
    } else if (const auto* removed = std::get_if<Removed>(&news)) {
        ++m_tally.removed;
        take(removed->file);
    } else if (const auto* unreadable = std::get_if<Unreadable>(&news)) {
        ++m_tally.unreadable;
        take(unreadable->file);
        m_tally.unreadableFiles.insert(unreadable->file);
    } else
        return;
    m_session.tally.send(m_tally);
}

void AnalyticsWorker::put(const std::string& file, const Report& report)
{
    take(file);
    m_tally.put(report);
    m_reports.insert_or_assign(file, report);
    m_session.catalogue.put(file, report);
}

void AnalyticsWorker::take(const std::string& file)
{
    m_tally.unreadableFiles.erase(file);
    if (const auto before = m_reports.extract(file)) {
        m_tally.take(before.mapped());
        m_session.catalogue.take(file);
    }
}

} // namespace fieldbook
