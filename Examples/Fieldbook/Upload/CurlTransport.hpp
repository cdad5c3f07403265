#pragma once

/// @file
/// Requests over sockets.

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Upload/Transport.hpp"

namespace fieldbook {

/// Sends requests by HTTP. It waits on threads of a queue, never on the main one.
///
/// Follows no redirections. An answer above 1 MiB is a failure. The timeout of the request is how long it
/// waits for anything to happen. Use from the main thread.
class CurlTransport : public Transport {
public:
    CurlTransport();
    /// Waits for what still sends, about a second at most once its subscriptions are gone.
    ~CurlTransport() override;

    News send(orrenby::URLRequest request, orrenby::BodyStream body) override;

private:
    orrenby::DispatchQueue m_queue;
};

} // namespace fieldbook
