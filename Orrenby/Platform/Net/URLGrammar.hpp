#pragma once

/// @file
/// Which texts are parts of URLs (RFC 3986, appendix A). Not in the umbrella header: part of the URLs' own
/// workings.

#include "Orrenby/Platform/Export.hpp"
#include <array>
#include <cstdint>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The parts of a URL that characters may stand in as they are.
enum class URLPart : std::uint8_t {
    Scheme = 1,
    User = 2,
    Password = 4,
    Host = 8,
    Path = 16,
    /// Also of a fragment.
    Query = 32,
};

/// For each byte the parts that it may stand in.
constexpr std::array<std::uint8_t, 256> urlParts()
{
    constexpr std::uint8_t behindScheme = 2 | 4 | 8 | 16 | 32;
    std::array<std::uint8_t, 256> parts{};
    const auto add = [&](std::string_view characters, unsigned where) {
        for (const char character : characters) {
            auto& entry = parts[static_cast<unsigned char>(character)];
            entry = static_cast<std::uint8_t>(entry | where);
        }
    };
    add("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-.", behindScheme | 1);
    add("+", behindScheme | 1);
    add("_~!$&'()*,;=", behindScheme);
    add(":", 4 | 16 | 32);
    add("@/", 16 | 32);
    add("?", 32);
    return parts;
}

/// Whether the character may stand in the part as it is.
inline bool isOfURLPart(char character, URLPart part) noexcept
{
    static constexpr auto parts = urlParts();
    return (parts[static_cast<unsigned char>(character)] & static_cast<std::uint8_t>(part)) != 0;
}

/// Whether the text may stand in the part: allowed characters, and "%" with two digits. Linear.
bool isURLPart(std::string_view text, URLPart part) noexcept;

/// Whether the text may stand before the first colon.
bool isURLScheme(std::string_view text) noexcept;

/// Whether the text may stand where a host does: a name, or an address, with its brackets if it has some.
bool isURLHost(std::string_view text) noexcept;

/// Whether the text consists of digits. The empty one does.
bool isURLPort(std::string_view text) noexcept;

/// Whether the grammar accepts the whole. Linear.
bool isURLReference(std::string_view text) noexcept;

} // namespace orrenby::inline ORRENBY_ABI::detail
