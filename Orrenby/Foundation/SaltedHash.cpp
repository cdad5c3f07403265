#include "Orrenby/Foundation/SaltedHash.hpp"

#include "Orrenby/Foundation/Hashes.hpp"
#include "Orrenby/Platform/Text/Characters.hpp"
#include <cstddef>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace {

SaltedHashPieces& currentPieces() noexcept
{
    static SaltedHashPieces& pieces = *new SaltedHashPieces; // never destroyed: hashing is possible at exit
    return pieces;
}

/// So many characters from the one with this number on, as one text.
std::string_view slice(const std::vector<std::string_view>& characters, std::size_t first, std::size_t count)
{
    const auto& last = characters[first + count - 1];
    const char* start = characters[first].data();
    return {start, static_cast<std::size_t>(last.data() + last.size() - start)};
}

} // namespace

std::optional<std::string> saltedHash(std::string_view text)
{
    const auto all = characters(text);
    const auto count = all.size();
    if (count < 8)
        return std::nullopt;
    const auto& pieces = SaltedHash::pieces();
    std::string salted(slice(all, count - 5, 5));
    salted += pieces.first;
    salted += slice(all, 0, 2);
    salted += pieces.second;
    salted += slice(all, count - 8, 3);
    salted += pieces.third;
    salted += slice(all, count - 5, 4);
    salted += text;
    return sha1Hash(salted);
}

const SaltedHashPieces& SaltedHash::pieces() noexcept { return currentPieces(); }

void SaltedHash::setPieces(SaltedHashPieces pieces) { currentPieces() = std::move(pieces); }

} // namespace orrenby
