#include "Orrenby/Utilities/Retry.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/World/RandomSource.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <cmath>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// 2^exponent as the bound of a draw. Negative exponents give 0, below which only 0 is drawn.
std::uint32_t jitterBound(double exponent)
{
    constexpr double firstTooLarge = 4'294'967'296;
    const double bound = std::exp2(exponent);
    if (!(bound < firstTooLarge))
        fatalError("Jitter bound does not fit in 32 bits", "Utilities/Retry");
    return static_cast<std::uint32_t>(bound);
}

/// How many times the interval `attempt` has to wait. Attempts are counted from 1.
struct Factor {
    double operator()(const Retry::Exponential& method) const { return std::pow(method.base, earlier()); }
    double operator()(const Retry::Linear&) const { return static_cast<double>(attempt); }
    double operator()(const Retry::ExponentialJitter&) const
    {
        return World::current().random().below(jitterBound(earlier()));
    }

    double earlier() const { return static_cast<double>(attempt - 1); }

    std::int64_t attempt;
};

} // namespace

Retry::Retry(double interval, std::int64_t limit, Method method) noexcept
    : m_interval(interval)
    , m_limit(limit)
    , m_method(method)
{}

std::optional<double> Retry::nextInterval()
{
    if (__builtin_add_overflow(m_count, 1, &m_count))
        fatalError("Count of attempts overflows", "Utilities/Retry");
    if (m_count > m_limit)
        return std::nullopt;
    return m_interval * std::visit(Factor{m_count}, m_method);
}

} // namespace orrenby
