#include "Orrenby/Platform/Net/URL.hpp"

#include "Orrenby/Platform/Net/URLGrammar.hpp"
#include "Orrenby/Platform/Net/URLPieces.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

std::optional<URL> URL::make(std::string_view text)
{
    if (!detail::isURLReference(text))
        return std::nullopt;
    return URL(std::string(text));
}

std::optional<URL> URL::make(std::string_view text, const URL& relativeTo)
{
    auto url = make(text);
    if (!url || url->scheme())
        return url;
    if (!relativeTo.scheme())
        return std::nullopt;
    return URL(detail::resolvedURL(relativeTo.m_text, text));
}

std::optional<std::string_view> URL::scheme() const noexcept { return detail::splitURL(m_text).scheme; }

std::optional<std::string_view> URL::user() const noexcept { return detail::splitURL(m_text).user; }

std::optional<std::string_view> URL::password() const noexcept { return detail::splitURL(m_text).password; }

std::optional<std::string_view> URL::host() const noexcept
{
    auto host = detail::splitURL(m_text).host;
    if (host && host->starts_with('['))
        host = host->substr(1, host->size() - 2);
    return host;
}

std::optional<std::uint16_t> URL::port() const noexcept
{
    return detail::portNumber(detail::splitURL(m_text).port.value_or(""));
}

std::string_view URL::path() const noexcept { return detail::splitURL(m_text).path; }

std::optional<std::string_view> URL::query() const noexcept { return detail::splitURL(m_text).query; }

std::optional<std::string_view> URL::fragment() const noexcept { return detail::splitURL(m_text).fragment; }

inline namespace literals {

URL operator""_url(const char* text, std::size_t length)
{
    auto url = URL::make({text, length});
    if (!url)
        fatalError("No URL: " + std::string(text, length), "Platform/Net/URL", 61);
    return *std::move(url);
}

} // namespace literals

} // namespace orrenby
