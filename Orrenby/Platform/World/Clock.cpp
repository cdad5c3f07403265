#include "Orrenby/Platform/World/Clock.hpp"

#include <chrono>

namespace orrenby::inline ORRENBY_ABI {

namespace {

class SystemClock final : public Clock {
public:
    Date now() const override { return Date(seconds(std::chrono::system_clock::now().time_since_epoch())); }
    double monotonicSeconds() const override
    {
        return seconds(std::chrono::steady_clock::now().time_since_epoch());
    }

private:
    static double seconds(std::chrono::nanoseconds duration)
    {
        return std::chrono::duration<double>(duration).count();
    }
};

} // namespace

Clock::Observer::~Observer() = default;
Clock::~Clock() = default;

void Clock::addObserver(std::weak_ptr<Observer>) {}

std::shared_ptr<Clock> Clock::system()
{
    static const auto& clock = *new std::shared_ptr<Clock>(std::make_shared<SystemClock>());
    return clock;
}

} // namespace orrenby
