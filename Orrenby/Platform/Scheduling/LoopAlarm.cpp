#include "Orrenby/Platform/Scheduling/LoopAlarm.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <cmath>
#include <cstdint>
#include <ctime>
#include <sys/eventfd.h>
#include <unistd.h>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// Rounded up, so that nobody wakes just before the moment and has to sleep again.
timespec timeFrom(double seconds)
{
    constexpr auto nanosecondsPerSecond = 1'000'000'000L;
    const auto whole = std::floor(seconds);
    const auto part = static_cast<long>(std::ceil((seconds - whole) * 1e9));
    timespec time{};
    time.tv_sec = static_cast<std::time_t>(whole) + part / nanosecondsPerSecond;
    time.tv_nsec = part % nanosecondsPerSecond;
    return time;
}

} // namespace

LoopAlarm::LoopAlarm()
    : m_descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (m_descriptor < 0)
        fatalError("No file descriptor is left for a run loop", "Platform/Scheduling/RunLoop", 31);
}

LoopAlarm::~LoopAlarm() { ::close(m_descriptor); }

void LoopAlarm::ring() noexcept
{
    if (m_state.exchange(State::Rung) != State::Asleep)
        return;
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(m_descriptor, &one, sizeof one);
}

void LoopAlarm::sleep(std::span<pollfd> descriptors, double seconds) noexcept
{
    auto state = State::Awake;
    if (!m_state.compare_exchange_strong(state, State::Asleep))
        return;
    // Longer than anybody waits; what wakes up too early looks again.
    constexpr auto longest = 1e9;
    if (seconds < longest) {
        const auto time = timeFrom(seconds > 0 ? seconds : 0);
        ::ppoll(descriptors.data(), descriptors.size(), &time, nullptr);
    } else
        ::ppoll(descriptors.data(), descriptors.size(), nullptr, nullptr);
    state = State::Asleep;
    m_state.compare_exchange_strong(state, State::Awake);
    // A ringer may write only after this, which makes for one turn too many and no other harm.
    if (std::uint64_t count = 0; (descriptors.front().revents & POLLIN) != 0) [[maybe_unused]]
        const auto read = ::read(m_descriptor, &count, sizeof count);
}

int markReadable(std::span<pollfd> descriptors) noexcept
{
    const timespec none{};
    for (auto& descriptor : descriptors)
        descriptor.revents = 0;
    return descriptors.empty() ? 0 : ::ppoll(descriptors.data(), descriptors.size(), &none, nullptr);
}

} // namespace orrenby::detail
