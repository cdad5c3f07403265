#pragma once

/// @file
/// What a data detector finds.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"
#include "Orrenby/Platform/Text/NSRange.hpp"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Kinds of data in a text. Several are added with `|`.
enum class DataKind : std::uint32_t {
    None = 0,
    /// A postal address.
    Address = 16,
    /// A link to the web or to anything else that has a URL, or a mail address.
    Link = 32,
    PhoneNumber = 2048,
    All = Address | Link | PhoneNumber,
};

/// All kinds that are in one of the two.
constexpr DataKind operator|(DataKind left, DataKind right) noexcept
{
    return static_cast<DataKind>(static_cast<std::uint32_t>(left) | static_cast<std::uint32_t>(right));
}

/// Whether a kind is among these.
constexpr bool hasKind(DataKind kinds, DataKind kind) noexcept
{
    return (static_cast<std::uint32_t>(kinds) & static_cast<std::uint32_t>(kind)) != 0;
}

/// `Link`, or `Address | Link`; `None` for no kind.
ORRENBY_EXPORT std::string description(DataKind kinds);

/// A link, telephone number or address in a text.
///
/// A plain value that keeps nothing of the text but its URL. Not synchronised.
struct DataMatch {
    DataKind kind = DataKind::None; ///< One of them, never several.
    /// Where it stands, in UTF-16 units.
    NSRange range{};
    /// Where it begins and how long it is, in bytes of the UTF-8 text.
    std::size_t byteOffset = 0;
    std::size_t byteCount = 0; ///< In bytes of the UTF-8 text, as the offset.
    /// Of a link: its URL, with a scheme always, and escapes for what a URL cannot hold. Other kinds have
    /// none.
    std::optional<URL> url{};

    /// What stands there in the text that was searched.
    std::string_view in(std::string_view text) const { return text.substr(byteOffset, byteCount); }

    /// The scheme of the URL as it is spelled, without the colon; empty when there is no URL.
    std::string_view scheme() const noexcept
    {
        return url ? url->scheme().value_or(std::string_view()) : std::string_view();
    }

    /// `Link {4, 11}: http://a.example`; without a URL, `PhoneNumber {4, 11}`. The range is in UTF-16 units.
    ORRENBY_EXPORT std::string description() const;

    friend bool operator==(const DataMatch&, const DataMatch&) = default;
};

} // namespace orrenby

/// Of all that `==` compares.
template <> struct std::hash<orrenby::DataMatch> {
    ORRENBY_EXPORT std::size_t operator()(const orrenby::DataMatch& match) const noexcept;
};
