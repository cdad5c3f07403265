#pragma once

/// @file
/// Random numbers that a test can repeat.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/World/RandomSource.hpp"
#include <cstdint>
#include <mutex>

namespace orrenby::inline ORRENBY_ABI::testing {

/// Draws the same numbers for the same seed, on every machine. Not for secrets.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT SeededRandomSource final : public RandomSource {
public:
    /// The same seed gives the same numbers on every machine.
    explicit SeededRandomSource(std::uint64_t seed) noexcept
        : m_state(seed)
    {}

    std::uint32_t below(std::uint32_t bound) override;
    std::uint64_t word() override;

private:
    std::mutex m_mutex;
    std::uint64_t m_state;
};

} // namespace orrenby::testing
