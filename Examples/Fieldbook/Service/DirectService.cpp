#include "Service/DirectService.hpp"

#include "Orrenby/Platform/Net/BodyStreamError.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Utilities/Streams/More/Create.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include "Service/Multipart.hpp"
#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace fieldbook {

struct DirectService::State {
    EventLoop& loop;
    Handler handler = {}; ///< Empty while nobody listens.
    int life = 0;         ///< Which start it listens since.
};

namespace {

using Subject = orrenby::Streams::PassthroughSubject<TransportNews, TransportFailure>;
using Kind = TransportFailure::Kind;
using State = DirectService::State;

constexpr std::size_t pieceSize = 16 * 1024;
constexpr auto pieceTime = std::chrono::milliseconds(50);

std::string lowered(std::string text)
{
    for (auto& character : text)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return text;
}

ServiceRequest arrived(const orrenby::URLRequest& request, std::string body)
{
    ServiceRequest result{request.httpMethod(), std::string(request.url().path()), {}, {}, {}};
    for (const auto& [name, value] : request.httpHeaders())
        result.headers.emplace(lowered(name), value);
    if (auto parts = partsIn(body, result.header("content-type")))
        result.parts = *std::move(parts);
    else
        result.body = std::move(body);
    return result;
}

/// One request on its way.
class Exchange : public std::enable_shared_from_this<Exchange> {
public:
    Exchange(std::shared_ptr<State> state, orrenby::URLRequest request, orrenby::BodyStream body)
        : m_state(std::move(state))
        , m_request(std::move(request))
        , m_body(std::move(body))
    {
        if (auto own = m_request.takeHTTPBody(); own && m_body.length() == 0)
            m_body.append(*std::move(own));
    }

    void begin(Subject subject)
    {
        m_subject = std::move(subject);
        m_life = m_state->life;
        const bool isHeard = static_cast<bool>(m_state->handler);
        later({}, isHeard ? &Exchange::sendPiece : &Exchange::findNobody);
    }

    void breakOff()
    {
        m_timer = {};
        m_subject.reset(); // it keeps this exchange
    }

private:
    void later(std::chrono::milliseconds delay, void (Exchange::*next)())
    {
        // Held by the subscription alone; while it acts, it stays.
        m_timer = m_state->loop.after(delay, [weak = weak_from_this(), next] {
            if (const auto self = weak.lock())
                (*self.*next)();
        });
    }

    void fail(Kind kind, std::string reason)
    {
        if (const auto subject = m_subject)
            subject->send(orrenby::Streams::failure(TransportFailure{kind, std::move(reason)}));
    }

    /// Whoever hears it may break this off.
    void tell(TransportNews news)
    {
        if (const auto subject = m_subject)
            subject->send(std::move(news));
    }

    void findNobody() { fail(Kind::noConnection, "nobody listens"); }

    bool isConnected() const { return m_state->handler && m_state->life == m_life; }
    void loseConnection() { fail(Kind::brokenOff, "the connection was closed"); }

    void sendPiece()
    {
        if (!isConnected())
            return loseConnection();
        std::array<char, pieceSize> piece{};
        const auto outcome = m_body.tryRead(std::as_writable_bytes(std::span(piece)));
        if (const auto problem = outcome.error())
            return fail(Kind::bodyUnreadable, problem->description());
        m_bytes.append(piece.data(), outcome.unwrap());
        // Asked for before anybody is told: who hears of it may drop everything.
        if (m_body.isAtEnd())
            later({}, &Exchange::ask);
        else
            later(pieceTime, &Exchange::sendPiece);
        if (outcome.unwrap() > 0)
            tell(BytesSent{m_body.offset(), m_body.length()});
    }

    void ask()
    {
        if (!isConnected())
            return loseConnection();
        m_response = m_state->handler(arrived(m_request, std::move(m_bytes)));
        later(std::chrono::milliseconds(static_cast<long>(m_response.latency * 1000)), &Exchange::answer);
    }

    void answer()
    {
        if (!isConnected() || m_response.isCut)
            return loseConnection();
        tell(Answer{m_response.status, std::move(m_response.body), std::move(m_response.headers)});
    }

    std::shared_ptr<State> m_state;
    orrenby::URLRequest m_request;
    orrenby::BodyStream m_body;
    std::optional<Subject> m_subject;
    int m_life = 0;
    std::string m_bytes;
    ServiceResponse m_response;
    EventLoop::Watch m_timer;
};

class DirectTransport : public Transport {
public:
    explicit DirectTransport(std::shared_ptr<State> state)
        : m_state(std::move(state))
    {}

    News send(orrenby::URLRequest request, orrenby::BodyStream body) override
    {
        const auto exchange = std::make_shared<Exchange>(m_state, std::move(request), std::move(body));
        return orrenby::Streams::create<TransportNews, TransportFailure>([exchange](Subject subject) {
            exchange->begin(std::move(subject));
            return [exchange] { exchange->breakOff(); };
        });
    }

private:
    std::shared_ptr<State> m_state;
};

} // namespace

DirectService::DirectService(EventLoop& loop)
    : m_state(std::make_shared<State>(State{loop}))
{}

DirectService::~DirectService() { kill(); }

void DirectService::start(Handler handler)
{
    ++m_state->life;
    m_state->handler = std::move(handler);
}

void DirectService::kill() { m_state->handler = {}; }

std::unique_ptr<Transport> DirectService::transport() { return std::make_unique<DirectTransport>(m_state); }

} // namespace fieldbook
