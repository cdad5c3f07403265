#pragma once

/// @file
/// Questions about the calling thread.

#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// The calling thread. Starts none.
///
/// Safe to use from several threads.
class Thread {
public:
    Thread() = delete;

    /// Whether the calling thread is the one that began the process, or that called `fork` for a forked
    /// child.
    ///
    /// The system is asked once per thread; afterwards the answer is a load.
    ORRENBY_EXPORT static bool isMainThread() noexcept;
};

} // namespace orrenby
