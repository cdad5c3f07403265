#include "Orrenby/Foundation/Countdowns.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// As `std::snprintf` prints. The hours of the largest number have 305 digits.
template <class... T> std::string printed(const char* format, T... arguments)
{
    const int length = std::snprintf(nullptr, 0, format, arguments...);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::snprintf(text.data(), text.size(), format, arguments...);
    text.pop_back(); // the terminator
    return text;
}

/// The digits of a fraction that stand before the point once it is multiplied.
std::int64_t wholePart(double number)
{
    if (!std::isfinite(number))
        fatalError("A remaining time is infinite or no number", "Foundation/Countdowns");
    return static_cast<std::int64_t>(number);
}

} // namespace

std::string formattedCountdown(double timeRemaining)
{
    const double whole = std::round(timeRemaining);
    const double hours = std::floor(whole / 3600);
    const double minutes = std::floor(std::fmod(whole / 60, 60));
    const double seconds = std::round(std::fmod(whole, 60));
    return printed("%02.0f:%02.0f:%02.0f", hours, minutes, seconds);
}

std::string formattedCountdownForTimeRemainingWithMilliseconds(double timeRemaining)
{
    const double fraction = timeRemaining - std::floor(timeRemaining);
    const auto tenths = wholePart(fraction * 10);
    const auto hundredths = wholePart(fraction * 100);
    const double seconds = std::floor(std::fmod(timeRemaining, 60));
    if (seconds < 0) // a fraction is never negative
        return "00:00.00";
    const double minutes = std::floor(std::fmod(timeRemaining / 60, 60));
    return printed(
        "%02.0f:%02.0f.%d%d", minutes, seconds, static_cast<int>(tenths), static_cast<int>(hundredths % 10));
}

} // namespace orrenby
