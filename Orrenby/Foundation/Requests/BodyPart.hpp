#pragma once

/// @file
/// One part of a multipart body, as it is passed to the operations that write it.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// A view of bytes, or of a text's bytes, or of nothing.
///
/// What it was made from must outlive it. Not synchronised.
class ORRENBY_EXPORT BodyPartValue {
public:
    /// Nothing.
    constexpr BodyPartValue(std::nullopt_t = std::nullopt) noexcept {}

    // A header that makes a view of each of these costs whoever includes it as much as all else of requests.

    /// The bytes of a text, without a NUL at its end.
    BodyPartValue(std::string_view text) noexcept;
    BodyPartValue(const std::string& text) noexcept;
    BodyPartValue(const char* text) noexcept;

    /// Bytes as they are.
    BodyPartValue(std::span<const std::byte> data) noexcept;
    BodyPartValue(const Data& data) noexcept;

    /// An empty optional is nothing; an empty text is not.
    BodyPartValue(const std::optional<std::string_view>& text) noexcept;
    BodyPartValue(const std::optional<std::string>& text) noexcept;
    BodyPartValue(const std::optional<Data>& data) noexcept;

    /// What it refers to, or nothing.
    constexpr std::optional<std::span<const std::byte>> bytes() const noexcept { return m_bytes; }

private:
    std::optional<std::span<const std::byte>> m_bytes;
};

/// What `addingBodyPart` writes. All of it is views: what they refer to must outlive the operation.
///
/// Key, boundary and type are written as they are, without escaping: a quotation mark or a line break in them
/// ends what they stand in.
struct BodyPart {
    std::string_view key = {}; ///< The name of the field.
    /// Bytes or a text; with neither, nothing at all is written.
    BodyPartValue value = std::nullopt;
    std::string_view boundary = {}; ///< The text between parts, without the hyphens in front of it.
    /// "text/plain" exactly makes a part without a file name.
    std::string_view contentType = {};
};

} // namespace orrenby
