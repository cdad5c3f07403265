#include "Orrenby/Platform/Coding/JSONNumber.hpp"

#include <charconv>
#include <cmath>
#include <cstring>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr char digitPairs[]
    = "00010203040506070809101112131415161718192021222324252627282930313233343536373839404142"
      "43444546474849505152535455565758596061626364656667686970717273747576777879808182838485"
      "8687888990919293949596979899";

/// Prices, coordinates and the like have few decimals: such a number, times a power of ten, is an integer
/// that divided again gives exactly the number, because both are exact and a division is rounded once. The
/// first power that does so has the fewest digits.
char* writeFewDecimals(char* place, double value)
{
    constexpr double largest = 1e15; // times 1e6 would not be exact, but then the integer check fails before
    constexpr double powers[] = {1, 10, 100, 1e3, 1e4, 1e5, 1e6};
    if (!(std::fabs(value) < largest))
        return nullptr;
    for (int decimals = 0; decimals <= 6; ++decimals) {
        const double scaled = value * powers[decimals];
        if (!(std::fabs(scaled) < largest))
            return nullptr;
        const auto digits = static_cast<std::int64_t>(std::nearbyint(scaled));
        if (static_cast<double>(digits) / powers[decimals] != value)
            continue;
        if (digits < 0)
            *place++ = '-';
        const auto absolute = static_cast<std::uint64_t>(std::abs(digits));
        if (decimals == 0)
            return writeJSONUnsigned(place, absolute);
        const auto power = static_cast<std::uint64_t>(powers[decimals]);
        place = writeJSONUnsigned(place, absolute / power);
        *place++ = '.';
        auto rest = absolute % power;
        for (int digit = decimals - 1; digit >= 0; --digit, rest /= 10)
            place[digit] = static_cast<char>('0' + rest % 10);
        return place + decimals;
    }
    return nullptr;
}

template <typename T> char* writeNegativeZero(char* place, T value)
{
    if (value != 0 || !std::signbit(value))
        return nullptr;
    std::memcpy(place, "-0.0", 4);
    return place + 4;
}

} // namespace

char* writeJSONUnsigned(char* place, std::uint64_t value)
{
    char digits[20];
    char* start = digits + sizeof digits;
    for (; value >= 100; value /= 100) {
        start -= 2;
        std::memcpy(start, digitPairs + value % 100 * 2, 2);
    }
    if (value >= 10) {
        start -= 2;
        std::memcpy(start, digitPairs + value * 2, 2);
    } else
        *--start = static_cast<char>('0' + value);
    const auto count = static_cast<std::size_t>(digits + sizeof digits - start);
    std::memcpy(place, start, count);
    return place + count;
}

char* writeJSONInteger(char* place, std::int64_t value)
{
    if (value >= 0)
        return writeJSONUnsigned(place, static_cast<std::uint64_t>(value));
    *place = '-';
    return writeJSONUnsigned(place + 1, 0 - static_cast<std::uint64_t>(value));
}

char* writeJSONDouble(char* place, double value)
{
    if (char* end = writeNegativeZero(place, value))
        return end;
    if (char* end = writeFewDecimals(place, value))
        return end;
    // Digits alone would be read as an unsigned integer, which is another kind.
    constexpr double firstUnsigned = 0x1p63;
    constexpr double endOfUnsigned = 0x1p64;
    if (value >= firstUnsigned && value < endOfUnsigned)
        return std::to_chars(place, place + longestJSONNumber, value, std::chars_format::scientific).ptr;
    return std::to_chars(place, place + longestJSONNumber, value).ptr;
}

char* writeJSONFloat(char* place, float value)
{
    if (char* end = writeNegativeZero(place, value))
        return end;
    return std::to_chars(place, place + longestJSONNumber, value).ptr;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
