#pragma once

/// @file
/// Which thread this is, in one instruction.

#include "Orrenby/Platform/Export.hpp"
#include <cstdint>

#if !defined(__x86_64__) && !defined(__aarch64__)
#include <pthread.h>
#endif

namespace orrenby::inline ORRENBY_ABI::detail {

/// A number that no other living thread has, never 0. A later thread may get the number of one that has
/// ended.
inline std::uintptr_t threadToken() noexcept
{
#if defined(__x86_64__) || defined(__aarch64__)
    return reinterpret_cast<std::uintptr_t>(__builtin_thread_pointer());
#else
    return static_cast<std::uintptr_t>(pthread_self());
#endif
}

} // namespace orrenby::detail
