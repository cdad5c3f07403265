#include "Orrenby/Platform/Net/URLPieces.hpp"

#include <algorithm>
#include <charconv>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

void splitAuthority(URLPieces& pieces, std::string_view authority) noexcept
{
    if (const auto at = authority.find('@'); at != std::string_view::npos) {
        auto user = authority.substr(0, at);
        pieces.password = takeBehind(user, ':');
        pieces.user = user;
        authority.remove_prefix(at + 1);
    }
    // The colons of an address of version 6 stand inside its brackets.
    const auto brackets = authority.starts_with('[') ? authority.find(']') : 0;
    const auto hostEnd = brackets == std::string_view::npos ? brackets : authority.find(':', brackets);
    if (hostEnd != std::string_view::npos)
        pieces.port = authority.substr(hostEnd + 1);
    pieces.host = authority.substr(0, hostEnd);
}

/// The base's path up to its last slash, then the reference's.
std::string mergedPath(const URLPieces& base, std::string_view path)
{
    if (base.authority && base.path.empty())
        return "/" + std::string(path);
    const auto slash = base.path.rfind('/');
    const auto folder = slash == std::string_view::npos ? std::string_view() : base.path.substr(0, slash + 1);
    return std::string(folder) + std::string(path);
}

void appendPart(std::string& text, std::string_view sign, const std::optional<std::string_view>& part)
{
    if (part) {
        text += sign;
        text += *part;
    }
}

} // namespace

std::optional<std::string_view> takeBehind(std::string_view& text, char sign) noexcept
{
    const auto place = text.find(sign);
    if (place == std::string_view::npos)
        return std::nullopt;
    const auto taken = text.substr(place + 1);
    text = text.substr(0, place);
    return taken;
}

URLPieces splitURL(std::string_view text) noexcept
{
    URLPieces pieces;
    pieces.fragment = takeBehind(text, '#');
    pieces.query = takeBehind(text, '?');
    // In the first segment of a relative path no colon may stand.
    if (const auto end = text.find_first_of(":/"); end != std::string_view::npos && text[end] == ':') {
        pieces.scheme = text.substr(0, end);
        text.remove_prefix(end + 1);
    }
    if (text.starts_with("//")) {
        const auto end = std::min(text.find('/', 2), text.size());
        pieces.authority = text.substr(2, end - 2);
        splitAuthority(pieces, *pieces.authority);
        text.remove_prefix(end);
    }
    pieces.path = text;
    return pieces;
}

std::optional<std::uint16_t> portNumber(std::string_view digits) noexcept
{
    std::uint16_t number = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return result.ec == std::errc() ? std::optional(number) : std::nullopt;
}

std::vector<URLQueryItem> splitQuery(std::string_view query)
{
    std::vector<URLQueryItem> items;
    if (query.empty())
        return items;
    for (std::optional<std::string_view> rest = query; rest;) {
        auto name = *rest;
        rest = takeBehind(name, '&');
        const auto value = takeBehind(name, '=');
        items.push_back({std::string(name), value ? std::optional<std::string>(*value) : std::nullopt});
    }
    return items;
}

std::string removingDotSegments(std::string_view path)
{
    // Segment by segment as in RFC 3986, section 5.2.4. What is written never grows beyond what is read.
    std::string result;
    result.reserve(path.size());
    while (!path.empty()) {
        if (path.starts_with("../"))
            path.remove_prefix(3);
        else if (path.starts_with("./") || path.starts_with("/./"))
            path.remove_prefix(2);
        else if (path == "/.")
            path = "/";
        else if (path.starts_with("/../") || path == "/..") {
            const auto slash = result.rfind('/');
            result.erase(slash == std::string::npos ? 0 : slash);
            path = path.size() == 3 ? std::string_view("/") : path.substr(3);
        } else if (path == "." || path == "..")
            path = {};
        else {
            const auto end = std::min(path.find('/', 1), path.size());
            result += path.substr(0, end);
            path.remove_prefix(end);
        }
    }
    return result;
}

std::string resolvedURL(std::string_view base, std::string_view reference)
{
    const auto to = splitURL(base);
    auto pieces = splitURL(reference);
    if (pieces.scheme)
        return std::string(reference);

    std::string path;
    if (pieces.authority)
        path = removingDotSegments(pieces.path);
    else {
        pieces.authority = to.authority;
        if (pieces.path.empty()) {
            path = to.path;
            if (!pieces.query)
                pieces.query = to.query;
        } else
            path = removingDotSegments(
                pieces.path.starts_with('/') ? std::string(pieces.path) : mergedPath(to, pieces.path));
    }

    auto text = std::string(*to.scheme) + ":";
    appendPart(text, "//", pieces.authority);
    if (!pieces.authority && path.starts_with("//"))
        text += "/."; // or its first segment would be read as a host
    text += path;
    appendPart(text, "?", pieces.query);
    appendPart(text, "#", pieces.fragment);
    return text;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
