#include "Orrenby/Platform/Net/URLGrammar.hpp"

#include "Orrenby/Platform/Net/URLPieces.hpp"
#include "Orrenby/Platform/Text/HexadecimalDigits.hpp"
#include <algorithm>
#include <arpa/inet.h>
#include <array>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr bool isLetter(char character) noexcept
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

constexpr bool isDigit(char character) noexcept { return character >= '0' && character <= '9'; }

bool isHexadecimal(char character) noexcept { return hexadecimalDigit(character) >= 0; }

bool isAddressOfVersion6(std::string_view text) noexcept
{
    std::array<char, INET6_ADDRSTRLEN> terminated{};
    if (text.size() >= terminated.size() || text.find('\0') != std::string_view::npos)
        return false;
    std::copy(text.begin(), text.end(), terminated.begin());
    in6_addr address;
    return inet_pton(AF_INET6, terminated.data(), &address) == 1;
}

/// "v", a version, a point, and an address in a form that nobody knows yet.
bool isAddressOfTheFuture(std::string_view text) noexcept
{
    if (!text.starts_with('v') && !text.starts_with('V'))
        return false;
    const auto point = text.find('.');
    if (point == std::string_view::npos || point < 2 || point + 1 == text.size())
        return false;
    const auto version = text.substr(1, point - 1);
    const auto address = text.substr(point + 1);
    return std::all_of(version.begin(), version.end(), isHexadecimal)
        && address.find('%') == std::string_view::npos && isURLPart(address, URLPart::Password);
}

} // namespace

bool isURLPart(std::string_view text, URLPart part) noexcept
{
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (isOfURLPart(text[place], part))
            continue;
        if (text[place] != '%' || text.size() - place < 3 || !isHexadecimal(text[place + 1])
            || !isHexadecimal(text[place + 2]))
            return false;
        place += 2;
    }
    return true;
}

bool isURLScheme(std::string_view text) noexcept
{
    return !text.empty() && isLetter(text.front())
        && std::all_of(
            text.begin(), text.end(), [](char character) { return isOfURLPart(character, URLPart::Scheme); });
}

bool isURLHost(std::string_view text) noexcept
{
    if (!text.starts_with('['))
        return isURLPart(text, URLPart::Host);
    if (text.size() < 2 || !text.ends_with(']'))
        return false;
    const auto address = text.substr(1, text.size() - 2);
    return isAddressOfVersion6(address) || isAddressOfTheFuture(address);
}

bool isURLPort(std::string_view text) noexcept { return std::all_of(text.begin(), text.end(), isDigit); }

bool isURLReference(std::string_view text) noexcept
{
    const auto pieces = splitURL(text);
    return (!pieces.scheme || isURLScheme(*pieces.scheme))
        && isURLPart(pieces.user.value_or(""), URLPart::User)
        && isURLPart(pieces.password.value_or(""), URLPart::Password) && isURLHost(pieces.host.value_or(""))
        && isURLPort(pieces.port.value_or("")) && isURLPart(pieces.path, URLPart::Path)
        && isURLPart(pieces.query.value_or(""), URLPart::Query)
        && isURLPart(pieces.fragment.value_or(""), URLPart::Query);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
