#pragma once

/// @file
/// How loose JSON is coded. Not in the umbrella header: part of AnyJSONValue.cpp and JSONObject.cpp.

#include "Orrenby/Platform/Coding/AnyDecoding.hpp"
#include "Orrenby/Platform/Coding/Decoder.hpp"
#include "Orrenby/Platform/Coding/Encoder.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// The path of the decoder's value, and the position of what was refused in it.
DecodingError::Context contextOfRefusal(
    const Decoder& decoder, JSONDocument::Node refused, std::string_view debugDescription);

/// Values and dictionaries whose kinds are looked at while they are written.
struct HeldJSONValue {
    const Any& value;
};
struct HeldJSONObject {
    const Dictionary& value;
};

} // namespace detail

template <> struct Encodable<detail::HeldJSONValue> {
    static void write(const detail::HeldJSONValue& held, const detail::EncodingPlace& place);
};
template <> struct Encodable<detail::HeldJSONObject> {
    static void write(const detail::HeldJSONObject& held, const detail::EncodingPlace& place);
};

} // namespace orrenby
