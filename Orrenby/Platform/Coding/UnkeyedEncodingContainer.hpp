#pragma once

/// @file
/// A list that is being encoded.

#include "Orrenby/Platform/Coding/Encoder.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// Takes the elements of a list, one after the other.
///
/// A handle that is good as long as its encoder. Not synchronised.
class ORRENBY_EXPORT UnkeyedEncodingContainer {
public:
    explicit UnkeyedEncodingContainer(detail::EncodingSlot& slot)
        : m_slot(&slot)
    {
        slot.become(detail::EncodingSlot::Form::Unkeyed);
    }

    /// The way to this list from the root.
    std::vector<CodingKey> codingPath() const { return detail::codingPath(m_slot->place().path); }

    /// The elements so far.
    std::size_t count() const noexcept { return m_slot->count(); }

    /// Writes one more element behind the others. Throws what encoding it throws.
    template <class T> void encode(const T& value)
    {
        const auto step = nextStep();
        m_slot->attempt([&] { detail::encodeAt(value, m_slot->element(&step)); });
    }

    /// Texts, without a copy.
    void encode(std::string_view text);
    void encode(const char* text) { encode(std::string_view(text)); }

    /// Writes null as one more element.
    void encodeNil();

    /// A container inside the list that may be filled until the value around it is complete.
    template <CodingKeyType Nested = CodingKey> KeyedEncodingContainer<Nested> nestedContainer()
    {
        return KeyedEncodingContainer<Nested>(detached());
    }
    UnkeyedEncodingContainer nestedUnkeyedContainer() { return UnkeyedEncodingContainer(detached()); }

    /// An encoder for the next element, good as long as the value around it.
    Encoder superEncoder() { return Encoder(detached()); }

private:
    detail::CodingStep nextStep() const noexcept
    {
        return {m_slot->place().path, {}, static_cast<std::int64_t>(count())};
    }
    detail::EncodingSlot& detached();

    detail::EncodingSlot* m_slot;
};

} // namespace orrenby
