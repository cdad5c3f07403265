#pragma once

/// @file
/// The worker that turns a folder into a stream.

#include "Application/Counted.hpp"
#include "Application/EventLoop.hpp"
#include "Application/Session.hpp"
#include "Feed/FeedNews.hpp"
#include "Folder/FolderWatch.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"
#include <map>
#include <memory>
#include <string>

namespace fieldbook {

/// Tells what comes, changes and goes in the folder of the session, as long as it works.
///
/// The first look is taken in the turn of the loop after the start, when everything else has started as well.
/// A file that says what it said before is no news, also where that was in an earlier run. An unreadable one
/// makes a warning in the log, too.
///
/// Started again, it tells everything anew; subscribers that came in between begin with the last news of
/// before.
///
/// @snippet Examples/Fieldbook/Tests/Folder/FolderWorkerTests.cpp Following a folder
///
/// Not synchronised.
class FolderWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    explicit FolderWorker(Session& session);
    ~FolderWorker() override;

    /// The news, the last one first. The failure says that the folder is lost; nothing follows it.
    orrenby::Streams::AnyPublisher<FeedNews, FolderLost> news() const;

protected:
    void didStart() override;
    void willStop() override;

private:
    using Known = orrenby::Result<Report, std::string>;

    void begin();
    void remember();
    void follow();
    void handle(const FolderChange& change);
    bool lookAtAll();
    void lookAt(const std::string& file);
    void take(const std::string& file, Report report);
    void refuse(const std::string& file, std::string problem);
    void forget(const std::string& file);
    void forgetAllBut(const std::vector<std::string>& files);
    void lose(std::string reason);

    Session& m_session;
    orrenby::Streams::CurrentValueSubject<FeedNews, FolderLost> m_news;
    std::shared_ptr<FolderWatch> m_watch;
    EventLoop::Watch m_firstLook;
    EventLoop::Watch m_changes;
    std::map<std::string, Known> m_known; ///< By the name of the file.
};

} // namespace fieldbook
