#include "Orrenby/Platform/Scheduling/Backoff.hpp"

#include <ctime>
#include <sched.h>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {
constexpr int yieldCount = 1024; // after which sleeping costs the waiter less than it costs everybody else

void relax() noexcept
{
#if defined(__x86_64__) || defined(__i386__)
    __builtin_ia32_pause();
#endif
}
}

void Backoff::pause() noexcept
{
    if (m_count < spinCount)
        relax();
    else if (m_count < yieldCount)
        sched_yield();
    else {
        const timespec fiftyMicroseconds{0, 50'000};
        nanosleep(&fiftyMicroseconds, nullptr);
        return;
    }
    ++m_count;
}

} // namespace orrenby::detail
