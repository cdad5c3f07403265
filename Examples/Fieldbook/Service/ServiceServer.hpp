#pragma once

/// @file
/// A service on a socket of this machine.

#include "Orrenby/Platform/Objects/Result.hpp"
#include "Service/ServiceRequest.hpp"
#include <functional>
#include <memory>
#include <string>

namespace fieldbook {

/// Listens on 127.0.0.1, hands each request to a function, and sends what it returns: later or in part, if it
/// says so. Nobody from another machine can reach it.
///
/// It runs on threads of its own, so the function is called on those, several at once. Requests above 32 MiB
/// are answered with 413. Its owner makes, asks and ends it on one thread.
class ServiceServer {
public:
    using Handler = std::function<ServiceResponse(const ServiceRequest&)>;

    /// A server that listens, or why there is none: one line.
    /// @param port  0 for any that is free.
    static orrenby::Result<std::unique_ptr<ServiceServer>, std::string> start(Handler handler, int port = 0);

    /// Waits for requests that are being answered. What was to be sent later is sent now.
    ~ServiceServer();
    ServiceServer(const ServiceServer&) = delete;
    ServiceServer& operator=(const ServiceServer&) = delete;

    int port() const { return m_port; }

    /// `http://127.0.0.1:40123`
    std::string address() const { return "http://127.0.0.1:" + std::to_string(m_port); }

private:
    struct Sockets;

    ServiceServer(std::unique_ptr<Sockets> sockets, int port);

    std::unique_ptr<Sockets> m_sockets;
    int m_port;
};

} // namespace fieldbook
