#include "Remote/RemoteService.hpp"

#include "Report/SampleReports.hpp"
#include "Upload/CurlTransport.hpp"
#include <utility>

namespace fieldbook {

namespace {

ReportServiceOptions optionsOfItsOwn()
{
    return {.mood = isTakenWhenMoody, .feed = SampleReports("heath").next(2)};
}

} // namespace

std::shared_ptr<RemoteService> RemoteService::of(Session& session)
{
    auto service = session.remote.lock();
    if (!service)
        session.remote = service = std::make_shared<RemoteService>(session);
    return service;
}

RemoteService::RemoteService(Session& session)
    : m_session(session)
    , m_service(optionsOfItsOwn())
{}

RemoteService::~RemoteService() = default;

std::optional<orrenby::URL> RemoteService::address()
{
    if (m_session.service)
        return m_session.service;
    return start() ? orrenby::URL::make(m_server->address()) : std::nullopt;
}

Transport& RemoteService::transport()
{
    if (!m_transport)
        m_transport = m_session.makeTransport ? m_session.makeTransport() : std::make_unique<CurlTransport>();
    return *m_transport;
}

bool RemoteService::start()
{
    if (m_server)
        return true;
    auto& terminal = m_session.terminal;
    auto started = ServiceServer::start(
        [this](const ServiceRequest& request) { return m_service.handle(request); });
    if (const auto problem = started.error()) {
        terminal.print(terminal.styled(Style::red, "! no service: " + *problem));
        return false;
    }
    m_server = std::move(started).unwrap();
    if (terminal.isInteractive())
        terminal.print(terminal.styled(Style::faint, "= a service listens at " + m_server->address()));
    return true;
}

} // namespace fieldbook
