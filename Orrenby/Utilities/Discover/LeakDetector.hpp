#pragma once

/// @file
/// The place where leak checks of flows would go.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// Is told about objects that should soon be gone. It does nothing with them.
///
/// Safe to use from several threads.
struct LeakDetector {
    LeakDetector() = delete;

    /// Without any effect: `object` is neither kept nor looked at, and nothing is scheduled.
    ///
    /// @param after  Seconds until the object should be gone.
    template <class T>
    static constexpr void detect(
        [[maybe_unused]] const Ref<T>& object, [[maybe_unused]] double after) noexcept
    {}
};

} // namespace orrenby
