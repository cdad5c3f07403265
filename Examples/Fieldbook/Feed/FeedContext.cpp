#include "Feed/FeedContext.hpp"

#include "Orrenby/Utilities/Streams/More/Merge.hpp"
#include "Settings/SettingsWorker.hpp"
#include <utility>

namespace fieldbook {

FeedContext::FeedContext(Session& session, orrenby::Ref<FeedScreen> screen, Sources sources)
    : FeedContext(session, std::move(screen), sources,
        orrenby::Streams::merge(sources.folder->news(), sources.recall->news(), sources.station->news(),
            sources.signIn->news(), sources.service->news()))
{}

// The workers stand in the order in which they tell: what is remembered, then the station's response, then
// the folder's files, then the service's reports. Whoever keeps the news hears all of it.
FeedContext::FeedContext(Session& session, orrenby::Ref<FeedScreen> screen, const Sources& sources, News news)
    : AbstractPresentableContext(std::move(screen),
        orrenby::Workers{sources.recall, sources.station, sources.signIn, sources.folder, sources.service,
            orrenby::make<SettingsWorker>(session), orrenby::make<KeepingWorker>(session, news)},
        orrenby::make<AnalyticsWorker>(session, news))
    , m_session(session)
    , m_news(std::move(news))
{}

FeedContext::~FeedContext() { m_session.trace.step("FeedContext goes"); }

FeedContext::News FeedContext::news() const { return m_news; }

void FeedContext::didBecomeActive()
{
    m_session.trace.step("FeedContext is active");
    m_news
        .sink([this](const News::Payload& payload) {
            if (const auto* news = payload.asValue())
                presentable()->show(*news);
            else
                presentable()->show(*payload.asError());
        })
        .store(*this);
}

void FeedContext::willResignActive() { m_session.trace.step("FeedContext resigns"); }

} // namespace fieldbook
