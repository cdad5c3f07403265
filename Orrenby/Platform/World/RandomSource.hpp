#pragma once

/// @file
/// Where chance comes from.

#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <memory>

namespace orrenby::inline ORRENBY_ABI {

/// Draws whole numbers. Reproducible sequences are no business of it, unless a test puts such a source in its
/// place.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT RandomSource {
public:
    RandomSource(const RandomSource&) = delete;
    RandomSource& operator=(const RandomSource&) = delete;
    virtual ~RandomSource();

    /// Any of the numbers 0 … bound − 1, all equally likely; 0 when `bound` is 0 or 1.
    virtual std::uint32_t below(std::uint32_t bound) = 0;

    /// 64 bits, all equally likely to be set.
    virtual std::uint64_t word() = 0;

    /// The platform's source, fit for secrets.
    static std::shared_ptr<RandomSource> system();

protected:
    RandomSource() = default;
};

} // namespace orrenby
