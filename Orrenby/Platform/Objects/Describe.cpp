#include "Orrenby/Platform/Objects/Describe.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// Up to here every integer has a floating value of its own.
constexpr double largestPlain(double) { return 9007199254740992.0; }
constexpr float largestPlain(float) { return 16777216.0F; }
constexpr long double largestPlain(long double) { return 9007199254740992.0L; }

template <class Floating> std::string floatingText(Floating value)
{
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value < 0 ? "-inf" : "inf";
    const auto magnitude = std::fabs(value);
    // The smallest plain number is compared in the number's own type: 1e-4F is not 1e-4.
    const bool isPlain = magnitude == 0
        || (magnitude >= static_cast<Floating>(1e-4L) && magnitude <= largestPlain(value));

    char buffer[64];
    const auto format = isPlain ? std::chars_format::fixed : std::chars_format::scientific;
    const auto end = std::to_chars(std::begin(buffer), std::end(buffer), value, format).ptr;
    std::string text(buffer, end);
    if (isPlain && text.find('.') == std::string::npos)
        text += ".0";
    return text;
}

} // namespace

std::string describeInteger(std::int64_t value) { return std::to_string(value); }

std::string describeInteger(std::uint64_t value) { return std::to_string(value); }

std::string describeFloating(double value) { return floatingText(value); }

std::string describeFloating(float value) { return floatingText(value); }

std::string describeFloating(long double value) { return floatingText(value); }

std::string describeAddress(const void* address)
{
    if (address == nullptr)
        return "none";
    char buffer[2 * sizeof(std::uintptr_t)];
    const auto end = std::to_chars(
        std::begin(buffer), std::end(buffer), reinterpret_cast<std::uintptr_t>(address), 16)
                         .ptr;
    return "0x" + std::string(buffer, end);
}

std::string describeByteCount(std::size_t count)
{
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

std::string quoted(std::string_view text)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    result.reserve(text.size() + 2);
    result += '"';
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        switch (character) {
        case '"':
            result += "\\\"";
            break;
        case '\\':
            result += "\\\\";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\t':
            result += "\\t";
            break;
        case '\r':
            result += "\\r";
            break;
        case '\0':
            result += "\\0";
            break;
        default:
            if (code < 0x20 || code == 0x7F) {
                result += "\\u{";
                result += digits[code >> 4U];
                result += digits[code & 0xFU];
                result += '}';
            } else
                result += character;
        }
    }
    return result + '"';
}

std::string joined(char opening, const std::vector<std::string>& items, char closing)
{
    std::string result(1, opening);
    for (std::size_t index = 0; index < items.size(); ++index) {
        if (index != 0)
            result += ", ";
        result += items[index];
    }
    return result + closing;
}

std::string joinedSet(std::vector<std::string> items)
{
    std::sort(items.begin(), items.end());
    return joined('[', items, ']');
}

std::string joinedDictionary(std::vector<std::pair<std::string, std::string>> members, bool areSorted)
{
    if (members.empty())
        return "[:]";
    if (!areSorted)
        std::sort(members.begin(), members.end());
    std::vector<std::string> items;
    items.reserve(members.size());
    for (const auto& [key, member] : members)
        items.push_back(key + ": " + member);
    return joined('[', items, ']');
}

} // namespace orrenby::inline ORRENBY_ABI::detail
