#pragma once

/// @file
/// How the standard kinds are decoded.

#include "Orrenby/Platform/Coding/DecodableCollections.hpp"
#include "Orrenby/Platform/Coding/Decoder.hpp"
#include "Orrenby/Platform/Coding/KeyedDecodingContainer.hpp"
#include "Orrenby/Platform/Coding/ScalarDecoding.hpp"
#include "Orrenby/Platform/Coding/SingleValueDecodingContainer.hpp"
#include "Orrenby/Platform/Coding/UnkeyedDecodingContainer.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/RawRepresentable.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <concepts>
#include <cstdint>
#include <string>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

// | type | JSON | what is refused |
// |---|---|---|
// | `bool` | true, false | numbers |
// | integers | a number that is exactly one of the type's, `1.0` and `1e3` included | booleans, `1.5`, what
// does not fit | | `double`, `float` | any number up to the largest; the nearest value | booleans | |
// `std::string` | text | | | `Date`, `Data` | as the decoder's strategies say | | | `UUID`, `URL` | their
// text forms | other texts | | `RawRepresentable` types | their raw value | raw values that stand for nothing
// | | optionals and pointers | null, or what they hold | | | vectors, arrays, sets | a list; an array one of
// its length | | | maps from text or integers | an object | keys that are no such integers |
//
// Null is refused by all but optionals, with `valueNotFound`; another kind with `typeMismatch`; a value that
// is not allowed with `dataCorrupted`.

namespace detail {

template <class T>
concept CodedInteger = std::is_integral_v<T> && OtherThan<T, bool> && !Character<T>;

template <class T>
concept DecodesItself = requires(const Decoder& decoder)
{
    {
        T::init(decoder)
        } -> std::convertible_to<T>;
};

template <class T>
concept DecodesByRawValue = RawRepresentable<T> && !DecodesItself<T>;

} // namespace detail

template <detail::DecodesItself T> struct Decodable<T> {
    static T decode(const Decoder& decoder) { return T::init(decoder); }
};

template <> struct Decodable<bool> {
    static bool decode(const Decoder& decoder) { return detail::decodeBool(decoder); }
};

template <detail::CodedInteger T> struct Decodable<T> {
    static T decode(const Decoder& decoder)
    {
        if constexpr (std::is_signed_v<T>)
            return static_cast<T>(detail::decodeSigned(decoder, sizeof(T)));
        else
            return static_cast<T>(detail::decodeUnsigned(decoder, sizeof(T)));
    }
};

template <> struct Decodable<double> {
    static double decode(const Decoder& decoder) { return detail::decodeDouble(decoder); }
};

template <> struct Decodable<float> {
    static float decode(const Decoder& decoder) { return detail::decodeFloat(decoder); }
};

template <> struct Decodable<std::string> {
    static std::string decode(const Decoder& decoder) { return std::string(detail::decodeText(decoder)); }
};

template <> struct Decodable<Date> {
    static Date decode(const Decoder& decoder) { return detail::decodeDate(decoder); }
};

template <> struct Decodable<Data> {
    static Data decode(const Decoder& decoder) { return detail::decodeData(decoder); }
};

template <> struct Decodable<UUID> {
    static UUID decode(const Decoder& decoder) { return detail::decodeUUID(decoder); }
};

template <> struct Decodable<URL> {
    static URL decode(const Decoder& decoder) { return detail::decodeURL(decoder); }
};

template <detail::DecodesByRawValue T> struct Decodable<T> {
    static T decode(const Decoder& decoder)
    {
        using RawValue = typename RawRepresentation<T>::RawValue;
        auto raw = Decodable<RawValue>::decode(decoder);
        if (auto value = RawRepresentation<T>::make(raw))
            return *std::move(value);
        detail::throwNoValueFor(decoder, typeName<T>(), debugDescribe(raw));
    }
};

} // namespace orrenby
