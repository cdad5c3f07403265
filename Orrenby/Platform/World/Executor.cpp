#include "Orrenby/Platform/World/Executor.hpp"

#include "Orrenby/Platform/World/SystemExecutor.hpp"

namespace orrenby::inline ORRENBY_ABI {

void Job::discard() noexcept {}

Executor::~Executor() = default;

std::shared_ptr<Executor> Executor::system()
{
    static const auto& executor = *new std::shared_ptr<Executor>(std::make_shared<detail::SystemExecutor>());
    return executor;
}

} // namespace orrenby
