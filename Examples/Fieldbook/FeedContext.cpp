#include "FeedContext.hpp"

#include "Orrenby/Utilities/Streams/More/Merge.hpp"
#include "SettingsWorker.hpp"
#include <utility>

namespace fieldbook {

// The station comes first, so that its response is told before the folder's files.
FeedContext::FeedContext(Session& session, orrenby::Ref<FeedScreen> screen, orrenby::Ref<FolderWorker> folder,
    orrenby::Ref<StationWorker> station, orrenby::Ref<SignInWorker> signIn)
    : FeedContext(session, std::move(screen),
        orrenby::Workers{station, signIn, folder, orrenby::make<SettingsWorker>(session)},
        orrenby::Streams::merge(folder->news(), station->news(), signIn->news()))
{}

FeedContext::FeedContext(
    Session& session, orrenby::Ref<FeedScreen> screen, orrenby::Workers workers, News news)
    : AbstractPresentableContext(
        std::move(screen), std::move(workers), orrenby::make<AnalyticsWorker>(session, news))
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
