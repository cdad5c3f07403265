#pragma once

/// @file
/// A service of the same process.

#include "Application/EventLoop.hpp"
#include "Service/ServiceRequest.hpp"
#include "Upload/Transport.hpp"
#include <functional>
#include <memory>

namespace fieldbook {

/// Answers requests without sockets, at the time of an event loop: in a virtual world no answer takes longer
/// than the test says.
///
/// Bodies go out in pieces of 16 KiB, twenty in a second. An answer comes as late as it says, or is missing
/// where it is cut. Who kills the service breaks everything off that is on its way.
///
/// @snippet Examples/Fieldbook/Tests/Service/DirectServiceTests.cpp Asking without sockets
///
/// Use from the main thread. Its transports may outlive it: then nobody listens.
class DirectService {
public:
    using Handler = std::function<ServiceResponse(const ServiceRequest&)>;

    /// Nobody listens yet.
    /// @param loop  Outlives the transports.
    explicit DirectService(EventLoop& loop);
    ~DirectService();
    DirectService(const DirectService&) = delete;
    DirectService& operator=(const DirectService&) = delete;

    /// Listens. A service that ran already is killed first.
    void start(Handler handler);
    void kill();

    /// A way to the service, whether it listens or not.
    std::unique_ptr<Transport> transport();

    struct State; ///< What the service and its transports share.

private:
    std::shared_ptr<State> m_state;
};

} // namespace fieldbook
