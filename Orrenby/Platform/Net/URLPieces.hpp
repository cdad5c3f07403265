#pragma once

/// @file
/// Where the parts of a URL stand in its text. Not in the umbrella header: part of the URLs' own workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URLQueryItem.hpp"
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The parts of a URL as they are written, without the signs that set them apart.
struct URLPieces {
    std::optional<std::string_view> scheme{};
    std::optional<std::string_view> authority{};
    std::optional<std::string_view> user{};
    std::optional<std::string_view> password{};
    /// With the brackets of an IP address of version 6.
    std::optional<std::string_view> host{};
    std::optional<std::string_view> port{};
    std::string_view path{};
    std::optional<std::string_view> query{};
    std::optional<std::string_view> fragment{};
};

/// Takes what follows the first such sign off the end of the text, and the sign.
std::optional<std::string_view> takeBehind(std::string_view& text, char sign) noexcept;

/// The parts of any text; the grammar accepts the whole when it accepts each of them. Linear.
URLPieces splitURL(std::string_view text) noexcept;

/// The number of a port; nothing for a text without digits and for more than 16 bits.
std::optional<std::uint16_t> portNumber(std::string_view digits) noexcept;

/// The pieces of a query as they are written; none for an empty one. Linear.
std::vector<URLQueryItem> splitQuery(std::string_view query);

/// The path without its "." and ".." segments.
std::string removingDotSegments(std::string_view path);

/// The text of a reference in a document at `base`, which has a scheme. Both were accepted by the grammar.
std::string resolvedURL(std::string_view base, std::string_view reference);

} // namespace orrenby::inline ORRENBY_ABI::detail
