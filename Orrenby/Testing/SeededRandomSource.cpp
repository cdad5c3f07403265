#include "Orrenby/Testing/SeededRandomSource.hpp"

namespace orrenby::inline ORRENBY_ABI::testing {

std::uint32_t SeededRandomSource::below(std::uint32_t bound)
{
    if (bound < 2)
        return 0;
    constexpr auto range = std::uint64_t(1) << 32;
    // What is left of the range behind the last whole multiple would favour small numbers.
    const auto end = range - range % bound;
    for (;;)
        if (const auto drawn = word() >> 32; drawn < end)
            return static_cast<std::uint32_t>(drawn % bound);
}

/// SplitMix64: a counter in steps of 2^64 divided by the golden ratio, and the mixing constants that its
/// authors found to pass the usual tests.
std::uint64_t SeededRandomSource::word()
{
    const auto lock = std::lock_guard(m_mutex);
    auto mixed = m_state += 0x9E3779B97F4A7C15;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    return mixed ^ (mixed >> 31);
}

} // namespace orrenby::testing
