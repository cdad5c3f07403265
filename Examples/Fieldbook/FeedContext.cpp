#include "FeedContext.hpp"

#include "SettingsWorker.hpp"
#include <utility>

namespace fieldbook {

FeedContext::FeedContext(Session& session, orrenby::Ref<FeedScreen> screen, orrenby::Ref<FolderWorker> folder)
    : AbstractPresentableContext(std::move(screen),
        orrenby::Workers{folder, orrenby::make<SettingsWorker>(session)},
        orrenby::make<AnalyticsWorker>(session, folder->news()))
    , m_session(session)
    , m_news(folder->news())
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
