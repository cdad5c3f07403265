#pragma once

/// @file
/// The worker that keeps what is to outlive the run.

#include "Application/Counted.hpp"
#include "Application/EventLoop.hpp"
#include "Application/Session.hpp"
#include "Feed/FeedNews.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"
#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"
#include <map>
#include <optional>
#include <string>

namespace fieldbook {

/// Writes into the session's memory what the feed tells and what the user chooses: all that came in one turn
/// of the loop, in one transaction, before the next turn. A run that is killed loses no more than that turn,
/// and of the reports nothing at all, because the folder has them.
///
/// Where writing fails it says so once, and tries again with the next change. Not synchronised.
class KeepingWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    using News = orrenby::Streams::AnyPublisher<FeedNews, FolderLost>;

    /// @param session  Outlives the worker.
    KeepingWorker(Session& session, News news);
    ~KeepingWorker() override;

protected:
    void didStart() override;
    void willStop() override;

private:
    void note(const FeedNews& news);
    void noteReport(const std::string& file, std::optional<Report> report);
    void noteSetting(const char* name, std::string text);
    void observeSettings();
    void writeSoon();
    void write();

    Session& m_session;
    News m_news;
    std::map<std::string, std::optional<Report>> m_reports; ///< To be written, by file.
    std::map<std::string, std::string> m_settings;          ///< To be written, by name.
    orrenby::Ref<orrenby::KeyPathObserver<Settings>> m_changes;
    EventLoop::Watch m_writing;
    bool m_hasFailed = false;
};

} // namespace fieldbook
