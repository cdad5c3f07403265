#include "Orrenby/Foundation/OptionalNumbers.hpp"

#include <cmath>
#include <concepts>
#include <limits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// What the function gives for the number as it is kept, or for 0 when there is none.
template <class F> auto withNumber(const Any& number, F function)
{
    switch (number.kind()) {
    case Any::Kind::Bool:
        return function(static_cast<std::int64_t>(*number.get<bool>()));
    case Any::Kind::Int:
        return function(*number.get<std::int64_t>());
    case Any::Kind::Float:
        return function(static_cast<double>(*number.get<float>()));
    case Any::Kind::Double:
        return function(*number.get<double>());
    case Any::Kind::Opaque:
        if (const auto* large = number.get<std::uint64_t>())
            return function(*large);
        break;
    default:
        break;
    }
    return function(std::int64_t{0});
}

/// The nearest integer towards zero that there is.
template <class T> std::int64_t cut(T value)
{
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    if constexpr (std::floating_point<T>) {
        if (std::isnan(value))
            return 0;
        if (value >= 0x1p63)
            return highest;
        return value < -0x1p63 ? lowest : static_cast<std::int64_t>(value);
    } else
        return std::in_range<std::int64_t>(value) ? static_cast<std::int64_t>(value) : highest;
}

} // namespace

bool boolValue(const Any& number)
{
    return withNumber(number, [](auto value) { return value != 0; });
}

std::int64_t intValue(const Any& number)
{
    return withNumber(number, [](auto value) { return cut(value); });
}

float floatValue(const Any& number)
{
    return withNumber(number, [](auto value) { return static_cast<float>(value); });
}

double doubleValue(const Any& number)
{
    return withNumber(number, [](auto value) { return static_cast<double>(value); });
}

} // namespace orrenby
