#include "Orrenby/Platform/Net/URLRequest.hpp"

#include <initializer_list>

namespace orrenby::inline ORRENBY_ABI {

namespace {

std::string counted(std::size_t count, std::string_view thing)
{
    return std::to_string(count) + " " + std::string(thing) + (count == 1 ? "" : "s");
}

} // namespace

URLRequest::URLRequest(URL url, double timeoutInterval)
    : m_url(std::move(url))
    , m_timeoutInterval(timeoutInterval)
{}

void URLRequest::setHTTPHeader(std::string_view name, std::optional<std::string_view> value)
{
    if (value)
        m_httpHeaders.set(name, *value);
    else
        m_httpHeaders.erase(name);
}

void URLRequest::setHTTPBody(std::optional<Data> body) noexcept { m_httpBody = std::move(body); }

std::optional<Data> URLRequest::takeHTTPBody() noexcept { return std::exchange(m_httpBody, std::nullopt); }

std::string URLRequest::description() const
{
    auto text = m_httpMethod + " " + m_url.absoluteString();
    if (!m_httpHeaders.empty())
        text += ", " + counted(m_httpHeaders.size(), "header field");
    if (m_httpBody)
        text += ", body of " + counted(m_httpBody->size(), "byte");
    return text;
}

std::size_t URLRequest::hash() const noexcept
{
    const auto body = m_httpBody
        ? std::string_view(reinterpret_cast<const char*>(m_httpBody->data()), m_httpBody->size())
        : std::string_view();
    std::size_t hash = m_httpBody ? 1 : 0;
    for (const std::size_t next :
        {std::hash<URL>()(m_url), std::hash<std::string>()(m_httpMethod), m_httpHeaders.hash(),
            std::hash<std::string_view>()(body), std::hash<double>()(m_timeoutInterval)})
        hash = (hash ^ next) * 0x9E3779B97F4A7C15U;
    return hash;
}

} // namespace orrenby
