#include "Service/ServiceServer.hpp"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <httplib.h>
#include <mutex>
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

/// Announces the whole body and sends the first half. Then the connection is closed.
void cut(httplib::Response& response, const std::string& body)
{
    response.set_content_provider(body.size(), "application/json",
        [half = body.substr(0, body.size() / 2)](std::size_t, std::size_t, httplib::DataSink& sink) {
            sink.write(half.data(), half.size());
            return false;
        });
}

} // namespace

struct ServiceServer::Sockets {
    /// Waits, unless the server is about to end.
    void wait(double seconds)
    {
        std::unique_lock lock(mutex);
        wakes.wait_for(lock, std::chrono::duration<double>(seconds), [this] { return isToEnd; });
    }

    void wake()
    {
        const std::lock_guard lock(mutex);
        isToEnd = true;
        wakes.notify_all();
    }

    httplib::Server server;
    std::thread thread;
    std::atomic<bool> hasEnded = false;
    std::mutex mutex;
    std::condition_variable wakes;
    bool isToEnd = false;
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
    const auto answer = [handler = std::move(handler), sockets = sockets.get()](
                            const httplib::Request& arrived, httplib::Response& response) {
        const auto answered = handler(requestFrom(arrived));
        if (answered.latency > 0)
            sockets->wait(answered.latency);
        response.status = answered.status;
        for (const auto& [name, value] : answered.headers)
            response.set_header(name, value);
        if (answered.isCut)
            cut(response, answered.body);
        else
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
    m_sockets->wake();
    m_sockets->server.stop();
    m_sockets->thread.join();
}

} // namespace fieldbook
