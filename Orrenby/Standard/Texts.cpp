#include "Orrenby/Standard/Texts.hpp"

#include "Orrenby/Platform/Text/UTF16.hpp"
#include "Orrenby/Platform/Text/UTF8.hpp"

namespace orrenby::inline ORRENBY_ABI {

std::int64_t djb2Hash(std::string_view text) noexcept
{
    std::uint64_t hash = 5381; // unsigned numbers may wrap around
    forEachScalar(text, [&](char32_t scalar) { hash = hash * 33 + scalar; });
    return static_cast<std::int64_t>(hash);
}

std::optional<std::string> nonEmptyString(std::string_view text)
{
    return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

NSRange fullRange(std::string_view text) noexcept { return {.location = 0, .length = utf16Length(text)}; }

} // namespace orrenby
