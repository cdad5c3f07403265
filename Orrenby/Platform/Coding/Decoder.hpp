#pragma once

/// @file
/// What a value decodes itself from.

#include "Orrenby/Platform/Coding/CodingKey.hpp"
#include "Orrenby/Platform/Coding/DecodingError.hpp"
#include "Orrenby/Platform/Coding/DecodingSession.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <cstdint>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

template <CodingKeyType Key> class KeyedDecodingContainer;
class SingleValueDecodingContainer;
class UnkeyedDecodingContainer;

/// One value of a document that is being decoded, which a type turns into itself.
///
/// A type of one's own has a static `T init(const Decoder&)`. It asks for the container that fits its form:
/// keyed for an object, unkeyed for a list, single-value for everything else. Including Decodable.hpp brings
/// them all.
///
/// @snippet Tests/Platform/Coding/DecodableTests.cpp Decoding by hand
///
/// A handle that is good during the call that it was passed to, and so are its containers. Not synchronised.
class ORRENBY_EXPORT Decoder {
public:
    explicit Decoder(const detail::DecodingPlace& place) noexcept
        : m_place(place)
    {}

    /// The way to this value from the root.
    std::vector<CodingKey> codingPath() const { return detail::codingPath(m_place.path); }

    /// What the caller of the decode operation passes to the types.
    const Dictionary& userInfo() const noexcept { return m_place.session->options().userInfo; }

    /// The kind of the value, for types that decode from several kinds: no kind has to be tried.
    JSONKind kind() const noexcept { return m_place.kind(); }

    /// The members of an object. Throws `typeMismatch` or `valueNotFound` for anything else.
    template <CodingKeyType Key = CodingKey> KeyedDecodingContainer<Key> container() const;

    /// The elements of a list. Throws `typeMismatch` or `valueNotFound` for anything else.
    UnkeyedDecodingContainer unkeyedContainer() const;

    /// The value itself.
    SingleValueDecodingContainer singleValueContainer() const;

    /// The path and the place in the text, for an error about this value.
    DecodingError::Context errorContext(std::string_view debugDescription) const
    {
        return m_place.context(debugDescription);
    }

    const detail::DecodingPlace& place() const noexcept { return m_place; }

private:
    detail::DecodingPlace m_place;
};

/// Customisation point: `static T decode(const Decoder&)` makes a `T`. There is one for every standard kind
/// (see Decodable.hpp), for types with an `init(const Decoder&)`, and in AggregateCoding.hpp and
/// DescribedCoding.hpp for types that say nothing about coding.
template <class T> struct Decodable {};

namespace detail {

/// From what a type that holds others is decoded, for those who have to look at each of them: a
/// `Decodable<T>` that is done in one of these ways says so in `form`, one with fields has `visitFields` too.
enum class DecodedForm : std::uint8_t { Nullable, List, Array, Map, Fields };

} // namespace detail

/// A type that can be decoded.
template <class T>
concept DecodableType = requires(const Decoder& decoder)
{
    Decodable<T>::decode(decoder);
};

namespace detail {

template <class T> T decodeAt(const DecodingPlace& place)
{
    static_assert(DecodableType<T>,
        "T cannot be decoded: give it a static init(const Decoder&), or include AggregateCoding.hpp or "
        "DescribedCoding.hpp");
    return Decodable<T>::decode(Decoder(place));
}

} // namespace detail

} // namespace orrenby
