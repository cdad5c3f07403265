#pragma once

/// @file
/// The order of stored values. Not in the umbrella header: fetching orders with it.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <cstdint>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Negative, 0 or positive, as the store orders two values of one attribute: null first, texts, bytes and
/// UUIDs by their bytes.
ORRENBY_EXPORT int compareValues(const Any& first, const Any& second);

/// Permanent keys in their order, then temporary ones in the order in which they were made.
constexpr bool comesBefore(std::int64_t first, std::int64_t second) noexcept
{
    if ((first < 0) != (second < 0))
        return second < 0;
    return first < 0 ? first > second : first < second;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
