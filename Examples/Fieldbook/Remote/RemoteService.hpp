#pragma once

/// @file
/// The service of a session, and the way to it.

#include "Application/Session.hpp"
#include "Service/ReportService.hpp"
#include "Service/ServiceServer.hpp"
#include "Upload/Transport.hpp"
#include <memory>
#include <optional>

namespace fieldbook {

/// What everybody shares who asks the service. It goes with the last one who holds it.
///
/// The service is the one that the session names. Where it names none, there is one of its own on this
/// machine, in a mood, with two reports to tell; it starts when its address is asked for.
///
/// Use from the main thread.
class RemoteService {
public:
    /// The one of the session: made for the first who asks.
    /// @param session  Outlives it.
    static std::shared_ptr<RemoteService> of(Session& session);

    /// @param session  Outlives it.
    explicit RemoteService(Session& session);
    RemoteService(const RemoteService&) = delete;
    RemoteService& operator=(const RemoteService&) = delete;
    /// Waits for what is on its way.
    ~RemoteService();

    /// Nothing where a service of its own cannot start; then it says why.
    std::optional<orrenby::URL> address();

    Transport& transport();

private:
    /// Starts a service of its own unless it has; gives whether it listens.
    bool start();

    Session& m_session;
    ReportService m_service;
    std::unique_ptr<ServiceServer> m_server; ///< Only where the service is its own.
    std::unique_ptr<Transport> m_transport;
};

} // namespace fieldbook
