#pragma once

/// @file
/// The worker that takes the station's response.

#include "Application/Counted.hpp"
#include "Application/EventLoop.hpp"
#include "Application/Session.hpp"
#include "Feed/FeedNews.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"
#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include "Station/Station.hpp"
#include <string>

namespace fieldbook {

/// Reads the session's response once it has started, and hands each member to what it is for: the settings
/// to the settings of the session, everything else to the feed.
///
/// Reports that are remembered from an earlier run are no news; those that the station no longer has are
/// told as removed.
///
/// A member that is malformed is missed, and the others arrive. The decoder makes a critical log entry of
/// it; the feed tells everything that is wrong with the response, and where.
///
/// Without a response in the session it has nothing to do. Started again, it tells everything anew.
///
/// @snippet Examples/Fieldbook/Tests/Station/StationWorkerTests.cpp Taking a response
///
/// Not synchronised.
class StationWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    explicit StationWorker(Session& session);
    ~StationWorker() override;

    /// What it tells from now on. It never fails: the failure is that of the feed which it is part of.
    orrenby::Streams::AnyPublisher<FeedNews, FolderLost> news() const;

protected:
    void didStart() override;
    void willStop() override;

private:
    void greet(const User& user);
    void apply(const ChosenSettings& settings);
    void add(const StationReports& reports);
    void announce(const Announcements& announcements);

    void receive();
    void take(const std::string& response);
    void tell(FeedNews news);

    Session& m_session;
    orrenby::ServiceDecoder m_services;
    orrenby::Streams::PassthroughSubject<FeedNews, FolderLost> m_news;
    EventLoop::Watch m_response;
};

} // namespace fieldbook
