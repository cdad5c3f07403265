#include "Orrenby/Foundation/Hashes.hpp"

#include "Orrenby/Platform/Digest/SHA1.hpp"
#include "Orrenby/Platform/Text/Hexadecimal.hpp"
#include <cstdint>
#include <limits>

namespace orrenby::inline ORRENBY_ABI {

std::optional<std::string> sha1Hash(std::string_view text)
{
    if (!isValidUTF8(text))
        return std::nullopt;
    return hexadecimalText(sha1(text));
}

std::optional<Data> sha1Hash(std::span<const std::byte> data)
{
    if (data.size() > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    const auto digest = sha1(data);
    return Data(digest.begin(), digest.end());
}

std::string hexString(std::span<const std::byte> data) { return hexadecimalText(data); }

} // namespace orrenby
