#pragma once

/// @file
/// Whether the program is a test.

#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// Tells code whether it runs under unit tests.
///
/// Safe to use from several threads.
class TestingInfo {
public:
    /// Always false, in unit tests too: what runs there is what the application runs.
    static constexpr bool isUnitTesting() noexcept { return false; }
};

} // namespace orrenby
