#include "Orrenby/Platform/Net/URLEscapes.hpp"
#include "Orrenby/Platform/Net/URLPieces.hpp"
#include "Orrenby/Platform/Text/DataDetectorLinks.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

void appendPart(
    std::string& url, std::string_view sign, const std::optional<std::string_view>& part, URLPart kind)
{
    if (part) {
        url += sign;
        url += mendedForURL(*part, kind);
    }
}

/// A port that is no number belongs to the name of the host, and brackets stand around an address only.
void appendHost(std::string& url, std::string_view host, const std::optional<std::string_view>& port)
{
    if (port && !isURLPort(*port)) {
        url += mendedForURL(std::string(host) + ":" + std::string(*port), URLPart::Host);
        return;
    }
    url += isURLHost(host) ? std::string(host) : mendedForURL(host, URLPart::Host);
    if (port)
        url += ":" + std::string(*port);
}

} // namespace

std::optional<URL> linkURL(std::string_view prefix, std::string_view text)
{
    const auto whole = std::string(prefix) + std::string(text);
    const auto pieces = splitURL(whole);
    std::string url(pieces.scheme.value_or(""));
    url += ':';
    if (pieces.authority) {
        url += "//";
        appendPart(url, "", pieces.user, URLPart::User);
        appendPart(url, ":", pieces.password, URLPart::Password);
        if (pieces.user)
            url += '@';
        appendHost(url, *pieces.host, pieces.port);
    }
    appendPart(url, "", pieces.path, URLPart::Path);
    appendPart(url, "?", pieces.query, URLPart::Query);
    appendPart(url, "#", pieces.fragment, URLPart::Query);
    return URL::make(url);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
