#pragma once

/// @file
/// A value that is decoded as one piece.

#include "Orrenby/Platform/Coding/Decoder.hpp"
#include "Orrenby/Platform/Coding/UnkeyedDecodingContainer.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// The value of a decoder, to be decoded as another type.
///
/// A handle that is good as long as its decoder. Not synchronised.
class SingleValueDecodingContainer {
public:
    explicit SingleValueDecodingContainer(const detail::DecodingPlace& place) noexcept
        : m_place(place)
    {}

    /// The way to this value from the root.
    std::vector<CodingKey> codingPath() const { return detail::codingPath(m_place.path); }

    /// The kind of the value: what it can be decoded as needs no trying.
    JSONKind kind() const noexcept { return m_place.kind(); }

    /// Whether the value is null.
    bool decodeNil() const noexcept { return kind() == JSONKind::Null; }

    /// The value as a `T`. Throws what decoding a `T` throws.
    template <class T> T decode() const { return detail::decodeAt<T>(m_place); }

    /// The path and the place in the text, for an error about this value.
    DecodingError::Context errorContext(std::string_view debugDescription) const
    {
        return m_place.context(debugDescription);
    }

private:
    detail::DecodingPlace m_place;
};

inline UnkeyedDecodingContainer Decoder::unkeyedContainer() const
{
    return UnkeyedDecodingContainer(m_place);
}

inline SingleValueDecodingContainer Decoder::singleValueContainer() const
{
    return SingleValueDecodingContainer(m_place);
}

} // namespace orrenby
