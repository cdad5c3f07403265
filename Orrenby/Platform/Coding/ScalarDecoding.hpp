#pragma once

/// @file
/// Decoding of values that hold no others. Not in the umbrella header: part of Decodable.hpp.

#include "Orrenby/Platform/Coding/Decoder.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

ORRENBY_EXPORT bool decodeBool(const Decoder& decoder);
/// `width` is the number of bytes of the wanted type, whose range is kept to.
ORRENBY_EXPORT std::int64_t decodeSigned(const Decoder& decoder, std::size_t width);
ORRENBY_EXPORT std::uint64_t decodeUnsigned(const Decoder& decoder, std::size_t width);
ORRENBY_EXPORT double decodeDouble(const Decoder& decoder);
ORRENBY_EXPORT float decodeFloat(const Decoder& decoder);
/// Good as long as the document.
ORRENBY_EXPORT std::string_view decodeText(const Decoder& decoder);
ORRENBY_EXPORT Date decodeDate(const Decoder& decoder);
ORRENBY_EXPORT Data decodeData(const Decoder& decoder);
ORRENBY_EXPORT UUID decodeUUID(const Decoder& decoder);
ORRENBY_EXPORT URL decodeURL(const Decoder& decoder);

/// Throws `dataCorrupted`: the raw value stands for no value of the type.
[[noreturn]] ORRENBY_EXPORT void throwNoValueFor(
    const Decoder& decoder, std::string_view typeName, std::string_view rawValue);

} // namespace orrenby::inline ORRENBY_ABI::detail
