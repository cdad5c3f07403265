#include "Orrenby/Platform/Store/ValueOrder.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include <algorithm>
#include <cmath>
#include <cstring>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

template <class T> int compared(const T& first, const T& second)
{
    return first < second ? -1 : second < first ? 1 : 0;
}

/// What is no number is never stored, but needs its place as long as it is not: before all numbers.
int comparedNumbers(double first, double second)
{
    if (std::isnan(first) || std::isnan(second))
        return compared(std::isnan(second), std::isnan(first));
    return compared(first, second);
}

int comparedBytes(const Data& first, const Data& second)
{
    const auto common = std::min(first.size(), second.size());
    const int comparison = common != 0 ? std::memcmp(first.data(), second.data(), common) : 0;
    return comparison != 0 ? comparison : compared(first.size(), second.size());
}

} // namespace

int compareValues(const Any& first, const Any& second)
{
    if (first.isNull() || second.isNull())
        return compared(second.isNull(), first.isNull());
    switch (first.kind()) {
    case Any::Kind::Bool:
        return compared(*first.get<bool>(), *second.get<bool>());
    case Any::Kind::Int:
        return compared(*first.get<std::int64_t>(), *second.get<std::int64_t>());
    case Any::Kind::Double:
        return comparedNumbers(*first.get<double>(), *second.get<double>());
    case Any::Kind::Date:
        return comparedNumbers(first.get<Date>()->secondsSince1970(), second.get<Date>()->secondsSince1970());
    case Any::Kind::Text:
        return first.text().compare(second.text());
    case Any::Kind::Bytes:
        return comparedBytes(*first.get<Data>(), *second.get<Data>());
    default:
        return compared(*first.get<UUID>(), *second.get<UUID>());
    }
}

} // namespace orrenby::inline ORRENBY_ABI::detail
