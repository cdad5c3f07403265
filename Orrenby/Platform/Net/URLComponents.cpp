#include "Orrenby/Platform/Net/URLComponents.hpp"

#include "Orrenby/Platform/Net/URLEscapes.hpp"
#include "Orrenby/Platform/Net/URLPieces.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

using detail::URLPart;
using Text = std::optional<std::string>;
using View = std::optional<std::string_view>;

Text copied(const View& text) { return text ? Text(std::in_place, *text) : std::nullopt; }

Text decoded(const Text& text) { return text ? Text(detail::unescapedFromURL(*text)) : std::nullopt; }

Text encoded(const View& text, URLPart part)
{
    return text ? Text(detail::escapedForURL(*text, part)) : std::nullopt;
}

/// Whether the text was allowed and is now the part's.
bool setIf(bool isAllowed, Text& part, const View& text)
{
    if (isAllowed)
        part = copied(text);
    return isAllowed;
}

bool setEncoded(Text& part, const View& text, URLPart kind)
{
    return setIf(!text || detail::isURLPart(*text, kind), part, text);
}

} // namespace

URLComponents::URLComponents(const URL& url)
{
    const auto pieces = detail::splitURL(url.absoluteString());
    m_scheme = copied(pieces.scheme);
    m_user = copied(pieces.user);
    m_password = copied(pieces.password);
    m_host = copied(pieces.host);
    m_port = copied(pieces.port);
    m_path = pieces.path;
    m_query = copied(pieces.query);
    m_fragment = copied(pieces.fragment);
}

std::optional<URLComponents> URLComponents::make(std::string_view text)
{
    const auto url = URL::make(text);
    return url ? std::optional<URLComponents>(*url) : std::nullopt;
}

std::optional<std::string> URLComponents::string() const
{
    const bool hasAuthority = m_user || m_password || m_host || m_port;
    if (hasAuthority ? !m_path.empty() && !m_path.starts_with('/') : m_path.starts_with("//"))
        return std::nullopt;
    if (!m_scheme && !hasAuthority && m_path.find(':') < m_path.find('/'))
        return std::nullopt;

    std::string text;
    if (m_scheme)
        text += *m_scheme + ":";
    if (hasAuthority) {
        text += "//" + m_user.value_or("");
        if (m_password)
            text += ":" + *m_password;
        if (m_user || m_password)
            text += "@";
        text += m_host.value_or("");
        if (m_port)
            text += ":" + *m_port;
    }
    text += m_path;
    if (m_query)
        text += "?" + *m_query;
    if (m_fragment)
        text += "#" + *m_fragment;
    return text;
}

std::optional<URL> URLComponents::url() const
{
    const auto text = string();
    return text ? URL::make(*text) : std::nullopt;
}

std::optional<URL> URLComponents::url(const URL& relativeTo) const
{
    const auto text = string();
    return text ? URL::make(*text, relativeTo) : std::nullopt;
}

bool URLComponents::setScheme(View scheme)
{
    return setIf(!scheme || detail::isURLScheme(*scheme), m_scheme, scheme);
}

Text URLComponents::user() const { return decoded(m_user); }
void URLComponents::setUser(View user) { m_user = encoded(user, URLPart::User); }
bool URLComponents::setPercentEncodedUser(View user) { return setEncoded(m_user, user, URLPart::User); }

Text URLComponents::password() const { return decoded(m_password); }
void URLComponents::setPassword(View password) { m_password = encoded(password, URLPart::Password); }
bool URLComponents::setPercentEncodedPassword(View password)
{
    return setEncoded(m_password, password, URLPart::Password);
}

Text URLComponents::host() const
{
    if (m_host && m_host->starts_with('['))
        return m_host->substr(1, m_host->size() - 2);
    return decoded(m_host);
}

void URLComponents::setHost(View host)
{
    if (host && host->find(':') != std::string_view::npos) {
        const auto address = host->starts_with('[') ? std::string(*host) : "[" + std::string(*host) + "]";
        if (setPercentEncodedHost(address))
            return;
    }
    m_host = encoded(host, URLPart::Host);
}

bool URLComponents::setPercentEncodedHost(View host)
{
    return setIf(!host || detail::isURLHost(*host), m_host, host);
}

std::optional<std::uint16_t> URLComponents::port() const noexcept
{
    return m_port ? detail::portNumber(*m_port) : std::nullopt;
}

void URLComponents::setPort(std::optional<std::uint16_t> port)
{
    m_port = port ? Text(std::to_string(*port)) : std::nullopt;
}

std::string URLComponents::path() const { return detail::unescapedFromURL(m_path); }
void URLComponents::setPath(std::string_view path) { m_path = detail::escapedForURL(path, URLPart::Path); }
bool URLComponents::setPercentEncodedPath(std::string_view path)
{
    const bool isAllowed = detail::isURLPart(path, URLPart::Path);
    if (isAllowed)
        m_path = path;
    return isAllowed;
}

Text URLComponents::query() const { return decoded(m_query); }
void URLComponents::setQuery(View query) { m_query = encoded(query, URLPart::Query); }
bool URLComponents::setPercentEncodedQuery(View query) { return setEncoded(m_query, query, URLPart::Query); }

std::optional<std::vector<URLQueryItem>> URLComponents::queryItems() const
{
    auto items = percentEncodedQueryItems();
    if (!items)
        return std::nullopt;
    for (auto& [name, value] : *items) {
        name = detail::unescapedFromURL(name);
        value = decoded(value);
    }
    return items;
}

std::optional<std::vector<URLQueryItem>> URLComponents::percentEncodedQueryItems() const
{
    if (!m_query)
        return std::nullopt;
    return detail::splitQuery(*m_query);
}

void URLComponents::setQueryItems(const std::optional<std::vector<URLQueryItem>>& items)
{
    if (!items) {
        m_query = std::nullopt;
        return;
    }
    std::string query;
    for (const auto& [name, value] : *items) {
        if (&name != &items->front().name)
            query += '&';
        query += detail::escapedForURL(name, URLPart::Query, "&=");
        if (value)
            query += "=" + detail::escapedForURL(*value, URLPart::Query, "&=");
    }
    m_query = std::move(query);
}

Text URLComponents::fragment() const { return decoded(m_fragment); }
void URLComponents::setFragment(View fragment) { m_fragment = encoded(fragment, URLPart::Query); }
bool URLComponents::setPercentEncodedFragment(View fragment)
{
    return setEncoded(m_fragment, fragment, URLPart::Query);
}

std::size_t URLComponents::hash() const noexcept
{
    std::size_t result = std::hash<std::string>()(m_path);
    for (const auto* part : {&m_scheme, &m_user, &m_password, &m_host, &m_port, &m_query, &m_fragment})
        result = result * 31 + std::hash<std::optional<std::string>>()(*part);
    return result;
}

} // namespace orrenby
