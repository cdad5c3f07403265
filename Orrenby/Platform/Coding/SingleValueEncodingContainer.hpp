#pragma once

/// @file
/// A value that is encoded as one piece.

#include "Orrenby/Platform/Coding/Encoder.hpp"
#include "Orrenby/Platform/Coding/UnkeyedEncodingContainer.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// Takes one value, which stands for the whole. A second one is a programming error.
///
/// A handle that is good as long as its encoder. Not synchronised.
class ORRENBY_EXPORT SingleValueEncodingContainer {
public:
    explicit SingleValueEncodingContainer(detail::EncodingSlot& slot) noexcept
        : m_slot(&slot)
    {}

    /// The way to this value from the root.
    std::vector<CodingKey> codingPath() const { return detail::codingPath(m_slot->place().path); }

    /// Writes the one value. Throws what encoding it throws; a second value is a programming error.
    template <class T> void encode(const T& value)
    {
        m_slot->attempt([&] {
            start();
            detail::encodeAt(value, m_slot->place());
        });
    }

    /// Texts, without a copy.
    void encode(std::string_view text);
    void encode(const char* text) { encode(std::string_view(text)); }

    /// Writes null.
    void encodeNil()
    {
        start();
        m_slot->place().text().append("null");
    }

private:
    void start() { m_slot->become(detail::EncodingSlot::Form::Single); }

    detail::EncodingSlot* m_slot;
};

inline UnkeyedEncodingContainer Encoder::unkeyedContainer() const
{
    return UnkeyedEncodingContainer(*m_slot);
}

inline SingleValueEncodingContainer Encoder::singleValueContainer() const
{
    return SingleValueEncodingContainer(*m_slot);
}

} // namespace orrenby
