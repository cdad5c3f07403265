#pragma once

/// @file
/// The context of the feed.

#include "AnalyticsWorker.hpp"
#include "Counted.hpp"
#include "FeedScreen.hpp"
#include "FolderWorker.hpp"
#include "Orrenby/Utilities/Discover/AbstractPresentableContext.hpp"
#include "Session.hpp"
#include "SignInWorker.hpp"
#include "StationWorker.hpp"

namespace fieldbook {

/// Shows the news of a folder, of a station and of who signs in on a screen, as long as it is active.
class FeedContext : public orrenby::AbstractPresentableContext<AnalyticsWorker, orrenby::Ref<FeedScreen>>,
                    Counted<Part::context> {
public:
    using News = orrenby::Streams::AnyPublisher<FeedNews, FolderLost>;

    /// @param session  Outlives the context.
    FeedContext(Session& session, orrenby::Ref<FeedScreen> screen, orrenby::Ref<FolderWorker> folder,
        orrenby::Ref<StationWorker> station, orrenby::Ref<SignInWorker> signIn);
    ~FeedContext() override;

    /// The news that it shows, for whoever else wants to know.
    News news() const;

protected:
    void didBecomeActive() override;
    void willResignActive() override;

private:
    FeedContext(Session& session, orrenby::Ref<FeedScreen> screen, orrenby::Workers workers, News news);

    Session& m_session;
    News m_news;
};

} // namespace fieldbook
