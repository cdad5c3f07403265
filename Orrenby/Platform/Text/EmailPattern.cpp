#include "Orrenby/Platform/Text/EmailPattern.hpp"

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

} // namespace

std::string_view emailPattern() noexcept { return pattern; }

bool matchesEmailPattern(std::string_view text)
{
    // Never destroyed, so that addresses can still be checked while the process exits.
    static const RE2& expression = *new RE2(re2::StringPiece(pattern.data(), pattern.size()), RE2::Quiet);
    return RE2::FullMatch(re2::StringPiece(text.data(), text.size()), expression);
}

} // namespace orrenby
