#include "Service/ServiceServer.hpp"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <httplib.h>
#include <sys/socket.h>
#include <system_error>
#include <thread>
#include <utility>

namespace fieldbook {

namespace {

constexpr std::size_t bodyLimit = 32UL * 1024 * 1024;
constexpr std::size_t threadCount = 2; // as many reports as the application sends at once

std::string lowered(std::string text)
{
    for (auto& character : text)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return text;
}

ServiceRequest requestFrom(const httplib::Request& arrived)
{
    ServiceRequest request{arrived.method, arrived.path, {}, arrived.body, {}};
    for (const auto& [name, value] : arrived.headers)
        request.headers.emplace(lowered(name), value);
    for (const auto& [name, part] : arrived.files)
        request.parts.push_back({name, part.filename, part.content_type, part.content});
    return request;
}

} // namespace

struct ServiceServer::Sockets {
    httplib::Server server;
    std::thread thread;
    std::atomic<bool> hasEnded = false;
};

ServiceServer::ServiceServer(std::unique_ptr<Sockets> sockets, int port)
    : m_sockets(std::move(sockets))
    , m_port(port)
{}

orrenby::Result<std::unique_ptr<ServiceServer>, std::string> ServiceServer::start(Handler handler, int port)
{
    using Outcome = orrenby::Result<std::unique_ptr<ServiceServer>, std::string>;
    auto sockets = std::make_unique<Sockets>();
    auto& server = sockets->server;
    server.set_payload_max_length(bodyLimit);
    server.new_task_queue = [] { return new httplib::ThreadPool(threadCount); };
    // Without this it would share a port that is taken.
    server.set_socket_options([](socket_t socket) {
        const int isOn = 1;
        ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &isOn, sizeof isOn);
    });
    // Nobody asks twice on one connection, and an idle one would hold up the end.
    server.set_keep_alive_max_count(1);
    const auto answer = [handler = std::move(handler)](
                            const httplib::Request& arrived, httplib::Response& response) {
        const auto answered = handler(requestFrom(arrived));
        response.status = answered.status;
        response.set_content(answered.body, "application/json");
    };
    server.Get(".*", answer).Post(".*", answer).Put(".*", answer).Patch(".*", answer).Delete(".*", answer);

    errno = 0;
    const std::string host = "127.0.0.1";
    const bool isBound = port == 0 || server.bind_to_port(host, port);
    const int boundPort = port == 0 ? server.bind_to_any_port(host) : port;
    if (!isBound || boundPort <= 0)
        return Outcome::failure("cannot listen on " + host + ": " + std::generic_category().message(errno));

    sockets->thread = std::thread([sockets = sockets.get()] {
        sockets->server.listen_after_bind();
        sockets->hasEnded = true;
    });
    // Stopping has no effect before the server runs. Connections wait since it was bound.
    while (!server.is_running() && !sockets->hasEnded)
        std::this_thread::yield();
    return Outcome::success(std::unique_ptr<ServiceServer>(new ServiceServer(std::move(sockets), boundPort)));
}

ServiceServer::~ServiceServer()
{
    m_sockets->server.stop();
    m_sockets->thread.join();
}

} // namespace fieldbook
