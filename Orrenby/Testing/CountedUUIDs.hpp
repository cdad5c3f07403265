#pragma once

/// @file
/// Identifiers that a test can foretell.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/World/UUIDSource.hpp"
#include <atomic>
#include <cstdint>

namespace orrenby::inline ORRENBY_ABI::testing {

/// Counts: `00000000-0000-4000-8000-000000000001` is the first. In form they are identifiers of version 4.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT CountedUUIDs final : public UUIDSource {
public:
    UUID next() override;

private:
    std::atomic<std::uint64_t> m_count = 0;
};

} // namespace orrenby::testing
