#pragma once

/// @file
/// Values of any kind, decoded by the kinds of JSON. Not in the umbrella header: part of the coders' own
/// workings.

#include "Orrenby/Platform/Coding/DecodingSession.hpp"
#include "Orrenby/Platform/Coding/JSONDocument.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <optional>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The value at `place`, as typed decoding gives it: a number is an `Int` when it or the nearest double is
/// exactly one, else a `Double`, and nothing that casts to the other.
///
/// Nothing when there is a null in it, or a number beyond the largest `Double`; `refused` then says where.
ORRENBY_EXPORT std::optional<Any> decodeAny(const DecodingPlace& place, JSONDocument::Node& refused);
/// The members of the object at `place`; nothing for anything else, too.
ORRENBY_EXPORT std::optional<Dictionary> decodeAnyMembers(
    const DecodingPlace& place, JSONDocument::Node& refused);

} // namespace orrenby::inline ORRENBY_ABI::detail
