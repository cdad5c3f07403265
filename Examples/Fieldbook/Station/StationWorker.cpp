#include "Station/StationWorker.hpp"

#include "Feed/ReportSupply.hpp"
#include "Folder/SmallFile.hpp"
#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Utilities/Log/Entries.hpp"
#include "Orrenby/Utilities/ServiceDecoder/DecodeReport.hpp"
#include "Report/DecodingProblem.hpp"
#include "Report/ReportDecoding.hpp"
#include "Terminal/Text.hpp"
#include <chrono>
#include <utility>

namespace fieldbook {

StationWorker::StationWorker(Session& session)
    : m_session(session)
{
    m_services.jsonDecoder().setDateDecodingStrategy(datesOfReports());
    m_services.register_([this](const User& user) { greet(user); });
    m_services.register_([this](const ChosenSettings& settings) { apply(settings); });
    m_services.register_(reportsKey, [this](const StationReports& reports) { add(reports); });
    m_services.register_(
        announcementsKey, [this](const Announcements& announcements) { announce(announcements); });
}

StationWorker::~StationWorker() = default;

orrenby::Streams::AnyPublisher<FeedNews, FolderLost> StationWorker::news() const
{
    return m_news.eraseToAnyPublisher();
}

void StationWorker::didStart()
{
    m_session.trace.step("StationWorker starts");
    if (m_session.station)
        m_response = m_session.loop.after(std::chrono::milliseconds(0), [this] { receive(); });
}

void StationWorker::willStop()
{
    m_session.trace.step("StationWorker stops");
    m_response = {};
}

void StationWorker::greet(const User& user)
{
    tell(StationSays{user.name.text + " is signed in at " + user.post.text});
}

void StationWorker::apply(const ChosenSettings& settings)
{
    // Whoever shows them observes them.
    if (settings.sortOrder)
        m_session.settings->sortOrder = *settings.sortOrder;
    if (settings.isDetailed)
        m_session.settings->isDetailed = *settings.isDetailed;
}

void StationWorker::add(const StationReports& reports)
{
    tell(StationSays{counted(reports.size(), "report") + " came in"});
    auto supply = ReportSupply(stationPrefix, m_session.remembered);
    for (auto& news : supply.take({reports.begin(), reports.end()}))
        tell(std::move(news));
}

void StationWorker::announce(const Announcements& announcements)
{
    for (const auto& announcement : announcements)
        tell(StationSays{announcement.text});
}

void StationWorker::receive()
{
    const auto& file = *m_session.station;
    const auto content = readFile(file);
    const auto problem = content ? content->error() : "no such file";
    if (!problem)
        return take(content->unwrap());
    orrenby::Log::error([&] { return "the station does not answer: " + file.string() + ": " + *problem; });
    tell(StationGarbled{"no answer: " + file.string() + ": " + *problem});
}

void StationWorker::take(const std::string& response)
{
    // Every member that fits arrives in its callable, and the decoder makes a log entry of each other one.
    if (const auto error = m_services.tryDecode(response).error())
        orrenby::Log::error([&] { return "the station's answer is unreadable: " + error->description(); });
    for (const auto& failure : orrenby::decodeReport(m_services, response).failures)
        if (const auto* error = failure.error.cast<orrenby::DecodingError>())
            tell(StationGarbled{explain(*error)});
}

void StationWorker::tell(FeedNews news) { m_news.send(std::move(news)); }

} // namespace fieldbook
