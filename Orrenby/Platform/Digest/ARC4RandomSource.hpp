#pragma once

/// @file
/// Numbers that a seed decides.

#include "Orrenby/Platform/Export.hpp"
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// A stream of bytes, and numbers drawn from it, that the seed alone decides: the same on every machine.
///
/// For sample data and tests. It is no source of secrets, and not what `World` draws from.
///
/// The stream is the key stream of ARC4 (RFC 6229) from its first byte on. A seed is used as the key, byte by
/// byte; an empty one like one byte 0. What comes after its 256th byte has no influence.
///
/// @snippet Tests/Platform/Digest/ARC4RandomSourceTests.cpp Drawing the same numbers again
///
/// Something with identity: not copyable, shared by `std::make_shared`. Not synchronised.
class ORRENBY_EXPORT ARC4RandomSource {
public:
    /// Copies what it needs of the seed: 256 bytes at most.
    explicit ARC4RandomSource(std::span<const std::byte> seed) noexcept;
    /// The bytes of the text, without a terminator.
    explicit ARC4RandomSource(std::string_view seed) noexcept;
    ARC4RandomSource(const ARC4RandomSource&) = delete;
    ARC4RandomSource& operator=(const ARC4RandomSource&) = delete;
    ~ARC4RandomSource() = default;

    /// The next byte of the stream.
    std::uint8_t nextByte() noexcept;

    /// Passes over so many bytes. Linear.
    void dropBytes(std::uint64_t count) noexcept;

    /// Any of the numbers 0 … bound − 1, all equally likely; 0 when the bound is 0.
    ///
    /// Takes four bytes of the stream, or eight when the bound exceeds 2^32, most significant first, and
    /// gives the remainder by the bound. Words from which the highest numbers would be less likely than the
    /// others are passed over. At least one word is taken, whatever the bound.
    std::uint64_t nextInt(std::uint64_t upperBound) noexcept;

private:
    std::array<std::uint8_t, 256> m_state{};
    std::uint8_t m_first = 0;
    std::uint8_t m_second = 0;
};

} // namespace orrenby
