#pragma once

/// @file
/// The worker that tells what is remembered.

#include "Application/Counted.hpp"
#include "Application/EventLoop.hpp"
#include "Application/Session.hpp"
#include "Feed/FeedNews.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"

namespace fieldbook {

/// Tells the reports that the session remembers, once it has started, in the order of their numbers. So
/// there is something to see before anybody has looked at the folder. Nothing where none is remembered.
///
/// Not synchronised.
class RecallWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    explicit RecallWorker(Session& session);
    ~RecallWorker() override;

    /// What it tells from now on. It never fails: the failure is that of the feed which it is part of.
    orrenby::Streams::AnyPublisher<FeedNews, FolderLost> news() const;

protected:
    void didStart() override;
    void willStop() override;

private:
    void tell();

    Session& m_session;
    orrenby::Streams::PassthroughSubject<FeedNews, FolderLost> m_news;
    EventLoop::Watch m_beginning;
};

} // namespace fieldbook
