#pragma once

/// @file
/// How the standard kinds are encoded.

#include "Orrenby/Platform/Coding/EncodableCollections.hpp"
#include "Orrenby/Platform/Coding/Encoder.hpp"
#include "Orrenby/Platform/Coding/KeyedEncodingContainer.hpp"
#include "Orrenby/Platform/Coding/ScalarEncoding.hpp"
#include "Orrenby/Platform/Coding/SingleValueEncodingContainer.hpp"
#include "Orrenby/Platform/Coding/UnkeyedEncodingContainer.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include "Orrenby/Platform/Objects/RawRepresentable.hpp"
#include "Orrenby/Platform/Objects/StaticText.hpp"
#include <concepts>
#include <string>
#include <string_view>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

// The same kinds as in Decodable.hpp, in the same forms. What JSON cannot hold is
// `EncodingError::invalidValue`: infinities and "not a number" unless the encoder has texts for them, text
// that is not valid UTF-8, more than 512 nested lists and objects.

namespace detail {

template <class T>
concept EncodesItself = requires(const T& value, const Encoder& encoder)
{
    {
        value.encode(encoder)
        } -> std::same_as<void>;
};

template <class T>
concept EncodesByRawValue = RawRepresentable<T> && !EncodesItself<T>;

template <class T>
concept EncodedInteger = std::is_integral_v<T> && OtherThan<T, bool> && !Character<T>;

} // namespace detail

template <detail::EncodesItself T> struct Encodable<T> {
    static void write(const T& value, const detail::EncodingPlace& place)
    {
        detail::EncodingSlot slot(place);
        value.encode(Encoder(slot));
        slot.close();
    }
};

template <> struct Encodable<bool> {
    static void write(bool value, const detail::EncodingPlace& place)
    {
        place.text().append(value ? std::string_view("true") : std::string_view("false"));
    }
};

template <detail::EncodedInteger T> struct Encodable<T> {
    static void write(T value, const detail::EncodingPlace& place)
    {
        if constexpr (std::is_signed_v<T>)
            detail::encodeSigned(value, place);
        else
            detail::encodeUnsigned(value, place);
    }
};

template <> struct Encodable<double> {
    static void write(double value, const detail::EncodingPlace& place)
    {
        detail::encodeDouble(value, place);
    }
};

template <> struct Encodable<float> {
    static void write(float value, const detail::EncodingPlace& place) { detail::encodeFloat(value, place); }
};

template <detail::OneOf<std::string, std::string_view, StaticText> T> struct Encodable<T> {
    static void write(std::string_view value, const detail::EncodingPlace& place)
    {
        detail::encodeText(value, place);
    }
};

template <> struct Encodable<Date> {
    static void write(Date value, const detail::EncodingPlace& place) { detail::encodeDate(value, place); }
};

template <> struct Encodable<Data> {
    static void write(const Data& value, const detail::EncodingPlace& place)
    {
        detail::encodeData(value, place);
    }
};

template <> struct Encodable<UUID> {
    static void write(const UUID& value, const detail::EncodingPlace& place)
    {
        detail::encodeUUID(value, place);
    }
};

template <> struct Encodable<URL> {
    static void write(const URL& value, const detail::EncodingPlace& place)
    {
        detail::encodeURL(value, place);
    }
};

template <detail::EncodesByRawValue T> struct Encodable<T> {
    static void write(const T& value, const detail::EncodingPlace& place)
    {
        detail::encodeAt<std::remove_cvref_t<typename RawRepresentation<T>::RawValue>>(
            RawRepresentation<T>::rawValue(value), place);
    }
};

} // namespace orrenby
