#pragma once

/// @file
/// A digest of a text that only those can make who know three pieces.

#include "Orrenby/Platform/Export.hpp"
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// What `saltedHash` puts between the slices of a text.
struct SaltedHashPieces {
    std::string first = "k3x";  ///< Behind the last five characters.
    std::string second = "p9q"; ///< Behind the first two.
    std::string third = "z2w7"; ///< Behind the three in the middle.

    friend bool operator==(const SaltedHashPieces&, const SaltedHashPieces&) = default;
};

/// The digest, in 40 lower-case hexadecimal digits, of slices of the text with the three pieces between them,
/// and the text behind all. Nothing for fewer than eight characters and for text that is no UTF-8.
///
/// The same text gives the same digest as long as the pieces are the same. An application sets its own pieces
/// at its start; those that are there at first are known to everybody. It is no way to keep passwords.
///
/// Counted in characters that people see, the order is: the last five, the first piece, the first two, the
/// second piece, three from the eighth from the end on, the third piece, four from the fifth from the end on.
///
/// @snippet Tests/Foundation/SaltedHashTests.cpp Hashing with pieces of one's own
///
/// Linear. Safe to use from several threads, but not while the pieces are set.
ORRENBY_EXPORT std::optional<std::string> saltedHash(std::string_view text);

/// The pieces of `saltedHash`, for the whole process.
///
/// Not synchronised: they are set at the application's start, and read by any number of threads from then on.
class ORRENBY_EXPORT SaltedHash {
public:
    SaltedHash() = delete;

    /// Those that were set last. The reference lives as long as the process; reading it is not synchronised
    /// with setting.
    static const SaltedHashPieces& pieces() noexcept;

    /// To be set at the application's start, before the first hash. Not synchronised.
    static void setPieces(SaltedHashPieces pieces);
};

} // namespace orrenby
