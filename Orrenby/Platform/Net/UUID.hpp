#pragma once

/// @file
/// Universally unique identifiers.

#include "Orrenby/Platform/Export.hpp"
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// A 16-byte identifier that nobody else hands out.
///
/// Any 16 bytes are accepted: neither the version nor the variant bits are checked.
///
/// @snippet Tests/Platform/Net/UUIDTests.cpp Naming things
///
/// A plain value. Not synchronised.
class UUID {
public:
    /// The 128 bits, in the order of the text form.
    using Bytes = std::array<std::uint8_t, 16>;

    /// All bits zero.
    constexpr UUID() noexcept = default;

    /// @param bytes  In the order of the text form.
    constexpr explicit UUID(const Bytes& bytes) noexcept
        : m_bytes(bytes)
    {}

    /// Reads the text form, digits of either case; nothing for any other text, braces and blanks around it
    /// included.
    ORRENBY_EXPORT static std::optional<UUID> make(std::string_view text);

    /// A new one of version 4 from the current world's source.
    ORRENBY_EXPORT static UUID random();

    /// In the order of the text form.
    constexpr const Bytes& bytes() const noexcept { return m_bytes; }

    /// 36 characters, upper-case digits in groups of 8-4-4-4-12.
    ORRENBY_EXPORT std::string uuidString() const;

    /// The same as `uuidString()`.
    std::string description() const { return uuidString(); }

    friend constexpr bool operator==(const UUID&, const UUID&) noexcept = default;

    /// By bytes, which is also the order of the texts.
    friend constexpr std::strong_ordering operator<=>(const UUID&, const UUID&) noexcept = default;

private:
    Bytes m_bytes = {};
};

} // namespace orrenby

template <> struct std::hash<orrenby::UUID> {
    std::size_t operator()(const orrenby::UUID& uuid) const noexcept
    {
        const auto& bytes = uuid.bytes();
        return std::hash<std::string_view>()({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }
};
