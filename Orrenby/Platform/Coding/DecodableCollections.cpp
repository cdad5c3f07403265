#include "Orrenby/Platform/Coding/DecodableCollections.hpp"

#include <charconv>
#include <system_error>

namespace orrenby::inline ORRENBY_ABI::detail {

std::optional<std::int64_t> integerFromKey(std::string_view key) noexcept
{
    std::int64_t value = 0;
    const auto outcome = std::from_chars(key.data(), key.data() + key.size(), value);
    const bool isWhole = outcome.ec == std::errc() && outcome.ptr == key.data() + key.size();
    return isWhole ? std::optional(value) : std::nullopt;
}

void throwBadKey(const DecodingPlace& place, std::string_view typeName)
{
    throw DecodingError::typeMismatch(
        typeName, place.context("Expected a key that is " + std::string(typeName) + " in decimal digits"));
}

void throwWrongCount(const Decoder& decoder, std::size_t wanted, std::size_t found)
{
    throw DecodingError::dataCorrupted(decoder.errorContext(
        "Expected " + std::to_string(wanted) + " elements but found " + std::to_string(found)));
}

} // namespace orrenby::inline ORRENBY_ABI::detail
