#pragma once

/// @file
/// How a thread passes a moment until another one is done.

#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Waits a little longer each time: processor pauses at first, then turns given to other threads, then short
/// sleeps.
///
/// For waits of a few instructions to a few microseconds that must not allocate or need a system call in the
/// common case.
class ORRENBY_EXPORT Backoff {
public:
    void pause() noexcept;

    /// Whether the microseconds in which a short delivery would have ended are over.
    bool isLong() const noexcept { return m_count >= spinCount; }

private:
    static constexpr int spinCount = 64;
    int m_count = 0;
};

} // namespace orrenby::detail
