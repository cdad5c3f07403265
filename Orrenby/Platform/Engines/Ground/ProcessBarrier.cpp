#include "Orrenby/Platform/Engines/Ground/ProcessBarrier.hpp"

#include <linux/membarrier.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {
bool membarrier(int command) noexcept { return syscall(SYS_membarrier, command, 0, 0) == 0; }
}

bool processBarrier() noexcept
{
    static const bool isRegistered = membarrier(MEMBARRIER_CMD_REGISTER_PRIVATE_EXPEDITED);
    return isRegistered && membarrier(MEMBARRIER_CMD_PRIVATE_EXPEDITED);
}

} // namespace orrenby::detail
