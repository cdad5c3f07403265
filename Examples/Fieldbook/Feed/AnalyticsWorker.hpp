#pragma once

/// @file
/// The worker that counts.

#include "Application/Counted.hpp"
#include "Application/Session.hpp"
#include "Feed/FeedNews.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"
#include <map>
#include <string>

namespace fieldbook {

/// Keeps the tally of the session up to date from the news of its folder.
class AnalyticsWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    using News = orrenby::Streams::AnyPublisher<FeedNews, FolderLost>;

    /// @param session  Outlives the worker.
    AnalyticsWorker(Session& session, News news);
    ~AnalyticsWorker() override;

protected:
    void didStart() override;
    void willStop() override;

private:
    void count(const FeedNews& news);
    void put(const std::string& file, const Report& report);
    void take(const std::string& file);

    Session& m_session;
    News m_news;
    Tally m_tally;
    std::map<std::string, Report> m_reports; ///< Those that the tally counts, by the name of the file.
};

} // namespace fieldbook
