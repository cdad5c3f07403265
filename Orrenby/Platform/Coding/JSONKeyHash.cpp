#include "Orrenby/Platform/Coding/JSONKeyHash.hpp"

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

__extension__ using Wide = unsigned __int128;

std::uint64_t drawnNumber()
{
    std::uint64_t number = 0;
    arc4random_buf(&number, sizeof number);
    return number;
}

std::uint64_t folded(std::uint64_t first, std::uint64_t second)
{
    const auto product = static_cast<Wide>(first) * second;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

std::uint64_t word(const char* bytes)
{
    std::uint64_t value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

std::uint64_t shortWord(const char* bytes, std::size_t count)
{
    std::uint64_t value = 0;
    std::memcpy(&value, bytes, count);
    return value;
}

} // namespace

std::uint64_t jsonKeyHash(std::string_view key) noexcept
{
    static const std::uint64_t seed = drawnNumber();
    // Odd numbers without a pattern; the digits of two square roots.
    constexpr std::uint64_t first = 0x6A09E667F3BCC909U;
    constexpr std::uint64_t second = 0xBB67AE8584CAA73BU;

    auto state = folded(seed ^ first, key.size() ^ second);
    const char* bytes = key.data();
    auto rest = key.size();
    for (; rest > 8; rest -= 8, bytes += 8)
        state = folded(state ^ word(bytes), first ^ seed);
    return folded(state ^ shortWord(bytes, rest), second);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
