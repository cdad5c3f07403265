#include "Orrenby/Platform/Coding/JSONNumber.hpp"

#include <bit>
#include <charconv>
#include <cstring>
#include <limits>
#include <system_error>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

bool isDigit(char byte) { return byte >= '0' && byte <= '9'; }

/// A number taken apart: its significant digits, as a part of the text that may hold a point, times a power
/// of ten.
struct Decimal {
    std::string_view digits;     ///< From the first to the last digit that is not 0; empty for zero.
    std::int64_t digitCount = 0; ///< In `digits`, the point not counted.
    std::int64_t exponent = 0;   ///< Of the last digit.
    bool isNegative = false;

    /// Of the first digit, plus one.
    std::int64_t magnitude() const { return digitCount + exponent; }
};

std::int64_t exponentOf(std::string_view text)
{
    constexpr std::int64_t beyondAll = std::int64_t{1} << 40; // more than any text that is read has digits
    const bool isNegative = text.front() == '-';
    if (isNegative || text.front() == '+')
        text.remove_prefix(1);
    std::int64_t value = 0;
    for (const char digit : text)
        if (value < beyondAll)
            value = value * 10 + (digit - '0');
    return isNegative ? -value : value;
}

Decimal decimalOf(std::string_view text)
{
    Decimal result;
    result.isNegative = text.front() == '-';
    const auto end = text.find_first_of("eE");
    const auto mantissa = text.substr(0, end);
    const auto first = mantissa.find_first_of("123456789");
    if (first == std::string_view::npos)
        return result;
    const auto last = mantissa.find_last_of("123456789");
    result.digits = mantissa.substr(first, last - first + 1);

    const auto point = mantissa.find('.');
    const auto pointOrEnd = static_cast<std::int64_t>(
        point == std::string_view::npos ? mantissa.size() : point);
    const auto signedFirst = static_cast<std::int64_t>(first);
    const auto signedLast = static_cast<std::int64_t>(last);
    const bool holdsPoint = signedFirst < pointOrEnd && pointOrEnd < signedLast;
    result.digitCount = signedLast - signedFirst + (holdsPoint ? 0 : 1);
    result.exponent = signedLast < pointOrEnd ? pointOrEnd - signedLast - 1 : pointOrEnd - signedLast;
    if (end != std::string_view::npos)
        result.exponent += exponentOf(text.substr(end + 1));
    return result;
}

/// The absolute value, when it is an integer of up to 64 bits.
std::optional<std::uint64_t> wholeValue(const Decimal& decimal)
{
    constexpr std::int64_t mostDigits = 20;
    if (decimal.exponent < 0 || decimal.magnitude() > mostDigits)
        return decimal.digits.empty() ? std::optional<std::uint64_t>(0) : std::nullopt;
    std::uint64_t value = 0;
    const auto append = [&](std::uint64_t digit) {
        return !__builtin_mul_overflow(value, std::uint64_t{10}, &value)
            && !__builtin_add_overflow(value, digit, &value);
    };
    for (const char byte : decimal.digits)
        if (isDigit(byte) && !append(static_cast<std::uint64_t>(byte - '0')))
            return std::nullopt;
    for (std::int64_t zero = 0; zero < decimal.exponent; ++zero)
        if (!append(0))
            return std::nullopt;
    return value;
}

/// The value of eight digits at once, where the first byte is the lowest of a word; nothing when one of them
/// is no digit.
///
/// Neighbours are joined to numbers of two, four and eight digits, all pairs of a step by one multiplication.
std::optional<std::uint64_t> eightDigits(const char* bytes)
{
    constexpr std::uint64_t ones = 0x0101010101010101U;
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    // The high half of a digit is 3, and adding 6 does not carry out of its low half.
    if (((word & ones * 0xF0) | ((word + ones * 6) & ones * 0xF0) >> 4U) != ones * 0x33)
        return std::nullopt;
    word &= ones * 0x0F;
    word = (word * (1U + (10U << 8U)) >> 8U) & 0x00FF00FF00FF00FFU;
    word = (word * (1U + (100U << 16U)) >> 16U) & 0x0000FFFF0000FFFFU;
    return word * (1U + (std::uint64_t{10'000} << 32U)) >> 32U;
}

/// The value of up to 18 digits, which cannot overflow; nothing for every other form.
std::optional<std::uint64_t> fewDigits(std::string_view text)
{
    constexpr bool isFirstLowest = std::endian::native == std::endian::little;
    if (text.size() > 18)
        return std::nullopt;
    std::uint64_t value = 0;
    for (; isFirstLowest && text.size() >= 8; text.remove_prefix(8)) {
        const auto eight = eightDigits(text.data());
        if (!eight)
            return std::nullopt;
        value = value * 100'000'000 + *eight;
    }
    for (const char byte : text) {
        if (!isDigit(byte))
            return std::nullopt;
        value = value * 10 + static_cast<std::uint64_t>(byte - '0');
    }
    return value;
}

/// The value of a number of few digits without an exponent. Both the digits, taken as an integer, and the
/// power of ten are exact doubles, so that their quotient, which is rounded once, is the nearest one.
std::optional<double> exactQuotient(std::string_view text)
{
    constexpr double powers[] = {
        1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    constexpr std::size_t mostCharacters = 17; // 15 digits, a sign and a point
    if (text.size() > mostCharacters)
        return std::nullopt;
    const bool isNegative = text.front() == '-';
    std::int64_t digits = 0;
    std::size_t count = 0;
    std::size_t countToPoint = 0;
    for (const char byte : text.substr(isNegative ? 1 : 0)) {
        if (isDigit(byte)) {
            digits = digits * 10 + (byte - '0');
            ++count;
        } else if (byte == '.')
            countToPoint = count;
        else
            return std::nullopt;
    }
    if (count > 15)
        return std::nullopt;
    const auto decimals = countToPoint == 0 ? 0 : count - countToPoint;
    const double value = static_cast<double>(digits) / powers[decimals];
    return isNegative ? -value : value;
}

template <typename T> std::optional<T> floating(std::string_view text)
{
    T value = 0;
    const auto outcome = std::from_chars(text.data(), text.data() + text.size(), value);
    if (outcome.ec == std::errc())
        return value;
    // Out of range on either side; which one, the digits tell.
    const auto decimal = decimalOf(text);
    if (decimal.magnitude() > 0)
        return std::nullopt;
    return decimal.isNegative ? -T{0} : T{0};
}

} // namespace

std::optional<std::int64_t> jsonInteger(std::string_view text)
{
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    const bool isNegative = text.front() == '-';
    auto value = fewDigits(isNegative ? text.substr(1) : text);
    if (!value)
        value = wholeValue(decimalOf(text));
    if (!value || *value > largest + (isNegative ? 1 : 0))
        return std::nullopt;
    return static_cast<std::int64_t>(isNegative ? 0 - *value : *value);
}

std::optional<std::uint64_t> jsonUnsigned(std::string_view text)
{
    if (const auto value = fewDigits(text))
        return value;
    const auto decimal = decimalOf(text);
    const auto value = wholeValue(decimal);
    return decimal.isNegative && value != std::uint64_t{0} ? std::nullopt : value;
}

std::optional<double> jsonDouble(std::string_view text)
{
    if (const auto value = exactQuotient(text))
        return value;
    return floating<double>(text);
}

std::optional<float> jsonFloat(std::string_view text) { return floating<float>(text); }

} // namespace orrenby::inline ORRENBY_ABI::detail
