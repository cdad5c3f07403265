#include "Orrenby/Utilities/LosslessDataConvertible.hpp"

#include <charconv>
#include <cstdlib>
#include <locale.h>
#include <system_error>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// Digits with a sign that the type takes; `std::from_chars` knows no "+".
template <class T> std::optional<T> integerFromText(std::string_view text) noexcept
{
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-'))
            return std::nullopt;
    }
    T value = 0;
    const auto* end = text.data() + text.size();
    const auto outcome = std::from_chars(text.data(), end, value);
    return outcome.ec == std::errc() && outcome.ptr == end ? std::optional(value) : std::nullopt;
}

locale_t localeOfC()
{
    // Never freed: numbers may be read while the process exits.
    static const auto locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

/// The whole text, which the C library would let begin with blanks and end at a NUL.
template <class T>
std::optional<T> floatingFromText(std::string_view text, T (*read)(const char*, char**, locale_t) noexcept)
{
    constexpr std::string_view firstCharacters = "+-.0123456789iInN";
    if (text.empty() || firstCharacters.find(text.front()) == std::string_view::npos)
        return std::nullopt;
    const std::string terminated(text);
    char* end = nullptr;
    const T value = read(terminated.c_str(), &end, localeOfC());
    return end == terminated.c_str() + terminated.size() ? std::optional(value) : std::nullopt;
}

} // namespace

std::optional<std::int64_t> losslessSigned(std::string_view text) noexcept
{
    return integerFromText<std::int64_t>(text);
}

std::optional<std::uint64_t> losslessUnsigned(std::string_view text) noexcept
{
    return integerFromText<std::uint64_t>(text);
}

std::optional<double> losslessDouble(std::string_view text) { return floatingFromText(text, strtod_l); }

std::optional<float> losslessFloat(std::string_view text) { return floatingFromText(text, strtof_l); }

} // namespace orrenby::inline ORRENBY_ABI::detail
