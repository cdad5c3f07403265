#pragma once

/// @file
/// The context of the feed.

#include "Application/Counted.hpp"
#include "Application/Session.hpp"
#include "Feed/AnalyticsWorker.hpp"
#include "Feed/FeedScreen.hpp"
#include "Folder/FolderWorker.hpp"
#include "Orrenby/Utilities/Discover/AbstractPresentableContext.hpp"
#include "Remote/FetchWorker.hpp"
#include "SignIn/SignInWorker.hpp"
#include "Station/StationWorker.hpp"
#include "Store/KeepingWorker.hpp"
#include "Store/RecallWorker.hpp"

namespace fieldbook {

/// Shows what is remembered and the news of a folder, of a station, of a service and of who signs in on a
/// screen, as long as it is active.
class FeedContext : public orrenby::AbstractPresentableContext<AnalyticsWorker, orrenby::Ref<FeedScreen>>,
                    Counted<Part::context> {
public:
    /// Whose news it shows.
    struct Sources {
        orrenby::Ref<RecallWorker> recall;
        orrenby::Ref<StationWorker> station;
        orrenby::Ref<SignInWorker> signIn;
        orrenby::Ref<FolderWorker> folder;
        orrenby::Ref<FetchWorker> service;
    };
    using News = orrenby::Streams::AnyPublisher<FeedNews, FolderLost>;

    /// @param session  Outlives the context.
    FeedContext(Session& session, orrenby::Ref<FeedScreen> screen, Sources sources);
    ~FeedContext() override;

    /// The news that it shows, for whoever else wants to know.
    News news() const;

protected:
    void didBecomeActive() override;
    void willResignActive() override;

private:
    FeedContext(Session& session, orrenby::Ref<FeedScreen> screen, const Sources& sources, News news);

    Session& m_session;
    News m_news;
};

} // namespace fieldbook
