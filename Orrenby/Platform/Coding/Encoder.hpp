#pragma once

/// @file
/// What a value encodes itself to.

#include "Orrenby/Platform/Coding/CodingKey.hpp"
#include "Orrenby/Platform/Coding/EncodingError.hpp"
#include "Orrenby/Platform/Coding/EncodingSession.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

template <CodingKeyType Key> class KeyedEncodingContainer;
class SingleValueEncodingContainer;
class UnkeyedEncodingContainer;

/// Where one value is encoded.
///
/// A type of one's own has a `void encode(const Encoder&) const`. It asks for the container that fits its
/// form: keyed for an object, unkeyed for a list, single-value for everything else. Asking again for the same
/// form goes on with it; another form is a programming error. A value that asks for none becomes an empty
/// object. Including Encodable.hpp brings them all.
///
/// @snippet Tests/Platform/Coding/EncodableTests.cpp Encoding by hand
///
/// A handle that is good during the call that it was passed to, and so are its containers. Not synchronised.
class Encoder {
public:
    explicit Encoder(detail::EncodingSlot& slot) noexcept
        : m_slot(&slot)
    {}

    /// The way to this value from the root.
    std::vector<CodingKey> codingPath() const { return detail::codingPath(m_slot->place().path); }

    /// What the caller of the encode operation passes to the types.
    const Dictionary& userInfo() const noexcept { return m_slot->place().session->options().userInfo; }

    /// Makes the value an object, or goes on with it. Of a member written twice the last value counts.
    template <CodingKeyType Key = CodingKey> KeyedEncodingContainer<Key> container() const;

    /// Makes the value a list, or goes on with it behind its last element.
    UnkeyedEncodingContainer unkeyedContainer() const;

    /// For a value that is neither object nor list. It takes one value.
    SingleValueEncodingContainer singleValueContainer() const;

    detail::EncodingSlot& slot() const noexcept { return *m_slot; }

private:
    detail::EncodingSlot* m_slot;
};

/// Customisation point: `static void write(const T&, const detail::EncodingPlace&)` writes a `T`. There is
/// one for every standard kind (see Encodable.hpp), for types with an `encode(const Encoder&) const`, and in
/// AggregateCoding.hpp and DescribedCoding.hpp for types that say nothing about coding.
template <class T> struct Encodable {};

/// A type that can be encoded.
template <class T>
concept EncodableType = requires(const T& value, const detail::EncodingPlace& place)
{
    Encodable<T>::write(value, place);
};

namespace detail {

template <class T> void encodeAt(const T& value, const EncodingPlace& place)
{
    static_assert(EncodableType<T>,
        "T cannot be encoded: give it an encode(const Encoder&) const, or include AggregateCoding.hpp or "
        "DescribedCoding.hpp");
    Encodable<T>::write(value, place);
}

} // namespace detail

} // namespace orrenby
