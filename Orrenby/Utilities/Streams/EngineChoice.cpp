#include "Orrenby/Utilities/Streams/EngineChoice.hpp"

#include "Orrenby/Platform/World/World.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace {

constinit std::atomic<bool> isCombineEnabledWhenAvailable = true;

bool isCombineAvailable() noexcept
{
    return World::current().operatingSystemVersion() >= OperatingSystemVersion{13, 0, 0};
}

}

namespace detail {

constinit std::atomic<std::uint8_t> engineChoice = 0;

Engine fixEngine() noexcept
{
    const auto isCombine = isCombineEnabledWhenAvailable.load(std::memory_order_relaxed)
        && isCombineAvailable();
    auto choice = std::uint8_t(0);
    const auto wanted = static_cast<std::uint8_t>(
        1 + static_cast<int>(isCombine ? Engine::Combine : Engine::Rx));
    // Of two threads that come first together, one decides for both.
    if (engineChoice.compare_exchange_strong(choice, wanted, std::memory_order_relaxed))
        choice = wanted;
    return static_cast<Engine>(choice - 1);
}

}

void Streams::set(EngineOptions options)
{
    if (detail::engineChoice.load(std::memory_order_relaxed) == 0)
        isCombineEnabledWhenAvailable.store(options.isCombineEnabledWhenAvailable, std::memory_order_relaxed);
}

} // namespace orrenby
