#include "Remote/FetchWorker.hpp"

#include "Orrenby/Utilities/Log/Entries.hpp"
#include "Report/ReportDecoding.hpp"
#include "Terminal/Text.hpp"
#include "Upload/ReportRequests.hpp"
#include <algorithm>
#include <chrono>
#include <utility>
#include <variant>

namespace fieldbook {

FetchWorker::FetchWorker(Session& session)
    : m_session(session)
{}

FetchWorker::~FetchWorker() = default;

orrenby::Streams::AnyPublisher<FeedNews, FolderLost> FetchWorker::news() const
{
    return m_news.eraseToAnyPublisher();
}

void FetchWorker::didStart()
{
    m_session.trace.step("FetchWorker starts");
    m_supply.emplace(servicePrefix, m_session.remembered);
}

void FetchWorker::willStop()
{
    m_session.trace.step("FetchWorker stops");
    m_whenDone = nullptr;
    m_timer = {};
    m_exchange = {};
    m_attempt = 0;
    m_remote = nullptr;
}

void FetchWorker::refresh()
{
    if (!isWorking())
        return;
    m_exchange = {};
    m_attempt = 0;
    m_retry.setCount(0);
    attempt();
}

void FetchWorker::waitForAnswer(orrenby::UniqueFunction<void()> whenDone)
{
    if (m_attempt == 0)
        return whenDone();
    m_whenDone = std::move(whenDone);
}

void FetchWorker::attempt()
{
    m_timer = {};
    if (!m_remote)
        m_remote = RemoteService::of(m_session);
    const auto address = m_remote->address();
    if (!address)
        return end();
    if (++m_attempt > 1)
        say("attempt " + std::to_string(m_attempt));
    // The worker drops the subscription before it goes.
    m_exchange = m_remote->transport()
                     .send(requestTo(*address, "/reports"), {})
                     .sink([this](const Transport::News::Payload& payload) {
                         if (payload.isError())
                             hear(failureOf(*payload.asError()));
                         else if (const auto* const answer = std::get_if<Answer>(payload.asValue()))
                             hear(*answer);
                     });
}

void FetchWorker::hear(const Answer& answer)
{
    if (!isDone(answer.status))
        return hear(failureOf(answer));
    take(answer.body);
    end();
}

void FetchWorker::hear(const AttemptFailure& failure)
{
    const auto planned = failure.isPassing ? m_retry.nextInterval() : std::nullopt;
    if (planned && failure.atLeast <= AttemptFailure::longestWait) {
        const auto seconds = std::max(*planned, failure.atLeast);
        say(failure.reason + "; attempt " + std::to_string(m_attempt + 1) + " in "
            + std::to_string(static_cast<int>(seconds)) + " s");
        const auto milliseconds = static_cast<long>(seconds * m_session.secondLength * 1000);
        m_timer = m_session.loop.after(std::chrono::milliseconds(milliseconds), [this] { attempt(); });
        return;
    }
    complain(failure.isPassing ? "given up after " + counted(static_cast<std::size_t>(m_attempt), "attempt")
                + ": " + failure.reason
                               : "refused: " + failure.reason);
    end();
}

void FetchWorker::take(const std::string& list)
{
    const auto outcome = decodedReports(list);
    if (const auto problem = outcome.error())
        return complain("no list of reports: " + *problem);
    const auto decoded = outcome.unwrap();
    const auto all = decoded.reports.size();
    const auto good = static_cast<std::size_t>(std::count_if(decoded.reports.begin(), decoded.reports.end(),
        [](const std::optional<Report>& report) { return report.has_value(); }));
    say((good < all ? std::to_string(good) + " of " : "") + counted(all, "report") + " came in");
    for (auto& news : m_supply->take(decoded.reports))
        m_news.send(std::move(news));
    for (const auto& problem : decoded.problems) {
        orrenby::Log::warning([&] { return "service: " + problem; });
        complain(problem);
    }
}

void FetchWorker::say(std::string text) { m_news.send(FeedNews(ServiceSays{std::move(text)})); }

void FetchWorker::complain(std::string problem) { m_news.send(FeedNews(ServiceGarbled{std::move(problem)})); }

void FetchWorker::end()
{
    m_attempt = 0;
    if (m_whenDone)
        std::exchange(m_whenDone, nullptr)();
}

} // namespace fieldbook
