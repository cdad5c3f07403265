#pragma once

/// @file
/// Random numbers in a range that a seed text decides.

#include "Orrenby/Platform/Digest/ARC4RandomSource.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include <cstdint>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Both bounds belong to the range.
struct SeededRandomNumberBounds {
    std::int64_t min = 0;           ///< The least number that may come.
    std::int64_t max = 0xFFFF'FFFF; ///< The greatest number that may come.
};

/// Gives the same numbers whenever it is made with the same seed and bounds.
///
/// For sample data and tests; no source of secrets. Its numbers fill its range and not 64 bits, so it is no
/// generator for the standard library's distributions.
///
/// @snippet Tests/Utilities/SeededRandomNumberGeneratorTests.cpp Drawing sample data
///
/// A value whose copies share one source: each draw of one advances all. Not synchronised.
class ORRENBY_EXPORT SeededRandomNumberGenerator {
public:
    /// The seed is taken as its bytes; it may be empty.
    ///
    /// A negative `min` is corrected to 0, and a `max` below the `min` that was given to that `min`; each
    /// correction logs a warning. With a negative `min` the range can therefore end up empty: −5 and −2 give
    /// 0 and −2. Then draws are 0 or end the process.
    explicit SeededRandomNumberGenerator(std::string_view seed, SeededRandomNumberBounds bounds = {});

    /// The next number of the range, all equally likely. A range of 2^63 numbers or more ends the process.
    std::uint64_t next();

    /// The least number that may come, after the correction.
    std::int64_t min() const noexcept { return m_min; }

    /// The greatest number that may come, after the correction.
    std::int64_t max() const noexcept { return m_max; }

    /// The source that all copies draw from; drawing from it advances them, too.
    const Ref<ARC4RandomSource>& source() const noexcept { return m_source; }

private:
    Ref<ARC4RandomSource> m_source;
    std::int64_t m_min;
    std::int64_t m_max;
};

} // namespace orrenby
