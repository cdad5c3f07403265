#pragma once

/// @file
/// The worker that asks the service for its reports.

#include "Application/Counted.hpp"
#include "Application/EventLoop.hpp"
#include "Application/Session.hpp"
#include "Feed/FeedNews.hpp"
#include "Feed/ReportSupply.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Orrenby/Utilities/Retry.hpp"
#include "Orrenby/Utilities/Streams/AnyCancellable.hpp"
#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include "Remote/RemoteService.hpp"
#include "Upload/AttemptFailure.hpp"
#include <memory>
#include <optional>
#include <string>

namespace fieldbook {

/// Asks the service for its list of reports whenever somebody wants it, and tells what is different since the
/// last time. Each report is taken on its own: of one that is malformed the feed tells everything that is
/// wrong with it, and where; the others arrive.
///
/// A service that does not answer, or is busy, is asked again after 2, 4 and 8 seconds, or when it says
/// itself that it wants to be asked; the feed tells that, too.
///
/// @snippet Examples/Fieldbook/Tests/Remote/FetchWorkerTests.cpp Asking for the list
///
/// Use from the main thread.
class FetchWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    explicit FetchWorker(Session& session);
    ~FetchWorker() override;

    /// What it tells from now on. It never fails: the failure is that of the feed which it is part of.
    orrenby::Streams::AnyPublisher<FeedNews, FolderLost> news() const;

    /// Asks now. What was asked before is broken off, and its schedule begins anew. On a worker that does not
    /// work it does nothing.
    void refresh();

    /// Calls `whenDone` once no answer is waited for: at once, if none is. One waits at a time: whoever
    /// waited before is not called any more, and nobody is once the worker has stopped.
    void waitForAnswer(orrenby::UniqueFunction<void()> whenDone);

protected:
    void didStart() override;
    void willStop() override;

private:
    void attempt();
    void hear(const Answer& answer);
    void hear(const AttemptFailure& failure);
    void take(const std::string& list);
    void say(std::string text);
    void complain(std::string problem);
    void end();

    Session& m_session;
    orrenby::Streams::PassthroughSubject<FeedNews, FolderLost> m_news;
    std::optional<ReportSupply> m_supply;
    std::shared_ptr<RemoteService> m_remote; ///< From the first question on.
    orrenby::Retry m_retry{2, 3, orrenby::Retry::Exponential{2}};
    int m_attempt = 0; ///< 0 while no answer is waited for.
    EventLoop::Watch m_timer;
    orrenby::Streams::AnyCancellable m_exchange;
    orrenby::UniqueFunction<void()> m_whenDone;
};

} // namespace fieldbook
