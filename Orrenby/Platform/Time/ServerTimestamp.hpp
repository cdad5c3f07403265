#pragma once

/// @file
/// The timestamps that services exchange, without tables. Not in the umbrella header: `DateFormatter` does
/// the same and more.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// What is written as `2020-01-02T03:04:05.678Z`, where ICU would do the same: from the first day of the
/// Gregorian calendar, 1582-10-15, to the end of the year 9999, in milliseconds since 1970.
struct ORRENBY_EXPORT ServerTimestamp {
    static constexpr std::string_view format = "yyyy-MM-dd'T'HH:mm:ss.SSS'Z'";
    static constexpr std::size_t length = 24;
    static constexpr std::int64_t earliest = -12'219'292'800'000;
    static constexpr std::int64_t latest = 253'402'300'799'999;

    /// Fractions of a millisecond are cut off downward, before 1970 too. False, and nothing written, outside
    /// the range.
    static bool write(double milliseconds, char* text) noexcept;

    /// Nothing for everything else than a text of exactly this form whose fields all exist: whoever asks
    /// decides about that.
    static std::optional<std::int64_t> read(std::string_view text) noexcept;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
