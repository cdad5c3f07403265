#include "Orrenby/Platform/Text/EmailPattern.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <re2/re2.h>

namespace orrenby::inline ORRENBY_ABI {

namespace {

// A tagged address literal allows [\x21-\x5a\x53-\x7f]: the two ranges overlap, and brackets and the
// backslash belong to them.
constexpr std::string_view pattern =
    // clang-format off
    R"email((?:[\p{L}0-9!#$%\&'*+/=?\^_`{|}~-]+(?:\.[\p{L}0-9!#$%\&'*+/=?\^_`{|}~-]+)*)email"
    R"email(|"(?:[\x01-\x08\x0b\x0c\x0e-\x1f\x21\x23-\x5b\x5d-\x7f]|\\[\x01-\x09\x0b\x0c\x0e-\x7f])*"))email"
    R"email(@(?:(?:[\p{L}0-9](?:[a-z0-9-]*[\p{L}0-9])?\.)+[\p{L}0-9](?:[\p{L}0-9-]*[\p{L}0-9])?)email"
    R"email(|\[(?:(?:25[0-5]|2[0-4][0-9]|[01]?[0-9][0-9]?)\.))email"
    R"email({3}(?:25[0-5]|2[0-4][0-9]|[01]?[0-9][0-9]?)email"
    R"email(|[\p{L}0-9-]*[\p{L}0-9]:(?:[\x01-\x08\x0b\x0c\x0e-\x1f\x21-\x5a\x53-\x7f]|\\[\x01-\x09\x0b\x0c\x0e-\x7f])+)\]))email";
// clang-format on

static_assert(pattern.size() == 448);

constexpr std::array<std::uint8_t, 256> classes = [] {
    std::array<std::uint8_t, 256> result{};
    for (const char character : std::string_view("abcdefghijklmnopqrstuvwxyz0123456789"))
        result[static_cast<unsigned char>(character)] = 1;
    for (const char character : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZ!#$%&'*+/=?^_`{|}~-"))
        result[static_cast<unsigned char>(character)] = 2;
    return result;
}();

/// The length of the run of characters whose class is 1 up to `highest` that stands at the front.
std::size_t run(std::string_view text, std::uint8_t highest)
{
    std::size_t length = 0;
    while (length < text.size()
        && static_cast<std::uint8_t>(classes[static_cast<unsigned char>(text[length])] - 1) < highest)
        ++length;
    return length;
}

/// Whether the text is an address of the plain kind that nearly all are: runs of ASCII characters before the
/// "@", labels of lower-case letters and digits behind it. What it does not know may be an address none the
/// less.
bool isPlainAddress(std::string_view text)
{
    while (true) {
        const auto length = run(text, 2);
        if (length == 0 || length == text.size())
            return false;
        const char next = text[length];
        text.remove_prefix(length + 1);
        if (next == '@')
            break;
        if (next != '.')
            return false;
    }
    for (int labels = 1;; ++labels) {
        const auto length = run(text, 1);
        if (length == 0)
            return false;
        if (length == text.size())
            return labels > 1;
        if (text[length] != '.')
            return false;
        text.remove_prefix(length + 1);
    }
}

} // namespace

std::string_view emailPattern() noexcept { return pattern; }

bool matchesEmailPattern(std::string_view text)
{
    if (isPlainAddress(text)) // several times as fast as the engine
        return true;
    // Never destroyed, so that addresses can still be checked while the process exits.
    static const RE2& expression = *new RE2(re2::StringPiece(pattern.data(), pattern.size()), RE2::Quiet);
    return RE2::FullMatch(re2::StringPiece(text.data(), text.size()), expression);
}

} // namespace orrenby
