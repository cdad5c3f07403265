#pragma once

/// @file
/// Encoding of values that hold no others. Not in the umbrella header: part of Encodable.hpp.

#include "Orrenby/Platform/Coding/EncodingSession.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstdint>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

ORRENBY_EXPORT void encodeSigned(std::int64_t value, const EncodingPlace& place);
ORRENBY_EXPORT void encodeUnsigned(std::uint64_t value, const EncodingPlace& place);
ORRENBY_EXPORT void encodeDouble(double value, const EncodingPlace& place);
ORRENBY_EXPORT void encodeFloat(float value, const EncodingPlace& place);
ORRENBY_EXPORT void encodeText(std::string_view value, const EncodingPlace& place);
ORRENBY_EXPORT void encodeDate(Date value, const EncodingPlace& place);
ORRENBY_EXPORT void encodeData(const Data& value, const EncodingPlace& place);
ORRENBY_EXPORT void encodeUUID(const UUID& value, const EncodingPlace& place);
ORRENBY_EXPORT void encodeURL(const URL& value, const EncodingPlace& place);

} // namespace orrenby::inline ORRENBY_ABI::detail
