#include "Orrenby/Utilities/Streams/More/WakeUps.hpp"

#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

// Sums of seconds are no exact numbers: what is left of a wait must be worth another one.
constexpr double tolerance = 1e-9;

double now() { return World::current().clock().monotonicSeconds(); }

}

std::optional<WakeUps::Wait> WakeUps::ask(double seconds)
{
    m_moment = now() + seconds;
    if (m_postedMoment && *m_postedMoment <= *m_moment)
        return std::nullopt;
    return posted(seconds, *m_moment);
}

std::optional<WakeUps::Wait> WakeUps::come(std::uint64_t number)
{
    if (number != m_postedNumber)
        return std::nullopt;
    m_postedMoment.reset();
    if (!m_moment)
        return std::nullopt;
    if (const auto rest = *m_moment - now(); rest > tolerance)
        return posted(rest, *m_moment);
    m_moment.reset();
    m_isDue = true;
    return std::nullopt;
}

bool WakeUps::takeDue() noexcept { return std::exchange(m_isDue, false); }

WakeUps::Wait WakeUps::posted(double seconds, double moment) noexcept
{
    m_postedMoment = moment;
    return {seconds, ++m_postedNumber};
}

} // namespace orrenby::detail
