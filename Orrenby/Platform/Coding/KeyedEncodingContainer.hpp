#pragma once

/// @file
/// An object that is being encoded.

#include "Orrenby/Platform/Coding/Encoder.hpp"
#include "Orrenby/Platform/Coding/KeyArgument.hpp"
#include "Orrenby/Platform/Coding/UnkeyedEncodingContainer.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <optional>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

ORRENBY_EXPORT void encodeMemberText(EncodingSlot& slot, std::string_view key, std::string_view text);
ORRENBY_EXPORT void encodeMemberNull(EncodingSlot& slot, std::string_view key);
ORRENBY_EXPORT EncodingSlot& detachedMember(EncodingSlot& slot, std::string_view key);

} // namespace detail

/// Takes the members of an object. Of members with one key the last value counts.
///
/// @snippet Tests/Platform/Coding/EncodableTests.cpp Encoding by hand
///
/// A handle that is good as long as its encoder. Not synchronised.
template <CodingKeyType Key = CodingKey> class KeyedEncodingContainer {
public:
    /// Text literals serve for `CodingKey`; other key types are taken as they are.
    using Argument = detail::KeyArgument<Key>;

    explicit KeyedEncodingContainer(detail::EncodingSlot& slot)
        : m_slot(&slot)
    {
        slot.become(detail::EncodingSlot::Form::Keyed);
    }

    /// The way to this object from the root.
    std::vector<CodingKey> codingPath() const { return detail::codingPath(m_slot->place().path); }

    /// Writes a member, an empty optional as null. Throws what encoding the value throws.
    template <class T> void encode(const T& value, const Argument& key)
    {
        const detail::CodingStep step{m_slot->place().path, detail::codingKeyText(key), -1};
        m_slot->attempt([&] { detail::encodeAt(value, m_slot->member(&step)); });
    }
    void encode(std::string_view text, const Argument& key)
    {
        detail::encodeMemberText(*m_slot, detail::codingKeyText(key), text);
    }
    void encode(const char* text, const Argument& key) { encode(std::string_view(text), key); }

    /// Writes the member as null.
    void encodeNil(const Argument& key) { detail::encodeMemberNull(*m_slot, detail::codingKeyText(key)); }

    /// No member where there is no value.
    template <class T> void encodeIfPresent(const std::optional<T>& value, const Argument& key)
    {
        if (value)
            encode(*value, key);
    }

    /// A container inside the object that may be filled until the value around it is complete.
    template <CodingKeyType Nested = CodingKey>
    KeyedEncodingContainer<Nested> nestedContainer(const Argument& key)
    {
        return KeyedEncodingContainer<Nested>(detached(key));
    }
    UnkeyedEncodingContainer nestedUnkeyedContainer(const Argument& key)
    {
        return UnkeyedEncodingContainer(detached(key));
    }

    /// An encoder for the member `super`, or for the member with this key, good as long as the value around
    /// it.
    Encoder superEncoder() { return Encoder(detail::detachedMember(*m_slot, "super")); }
    Encoder superEncoder(const Argument& key) { return Encoder(detached(key)); }

private:
    detail::EncodingSlot& detached(const Argument& key)
    {
        return detail::detachedMember(*m_slot, detail::codingKeyText(key));
    }

    detail::EncodingSlot* m_slot;
};

template <CodingKeyType Key> KeyedEncodingContainer<Key> Encoder::container() const
{
    return KeyedEncodingContainer<Key>(*m_slot);
}

} // namespace orrenby
