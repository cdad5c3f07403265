#pragma once

/// @file
/// Messages and their digests as NIST publishes them: the examples of FIPS 180, byte-oriented short messages
/// of SHAVS and the beginning of its Monte Carlo sequence.

#include <string_view>

struct SHA1Vector {
    /// Hexadecimal.
    std::string_view message;
    /// How often the message stands behind itself.
    unsigned repeats;
    std::string_view digest;
};

// clang-format off
inline constexpr SHA1Vector sha1Vectors[] = {
    {"", 1, "da39a3ee5e6b4b0d3255bfef95601890afd80709"},
    {"616263", 1, "a9993e364706816aba3e25717850c26c9cd0d89d"},
    {"6162636462636465636465666465666765666768666768696768696a68696a6b"
     "696a6b6c6a6b6c6d6b6c6d6e6c6d6e6f6d6e6f706e6f7071", 1, "84983e441c3bd26ebaae4aa1f95129e5e54670f1"},
    {"61626364656667686263646566676869636465666768696a6465666768696a6b"
     "65666768696a6b6c666768696a6b6c6d6768696a6b6c6d6e68696a6b6c6d6e6f"
     "696a6b6c6d6e6f706a6b6c6d6e6f70716b6c6d6e6f7071726c6d6e6f70717273"
     "6d6e6f70717273746e6f707172737475", 1, "a49b2446a02c645bf419f995b67091253a04a259"},
    {"61", 1'000'000, "34aa973cd4c4daa4f61eeb2bdbad27316534016f"},
    {"3031323334353637303132333435363730313233343536373031323334353637"
     "3031323334353637303132333435363730313233343536373031323334353637", 10,
     "dea356a2cddd90c7a7ecedc5ebb563934f460452"},
    {"36", 1, "c1dfd96eea8cc2b62785275bca38ac261256e278"},
    {"195a", 1, "0a1c2d555bbe431ad6288af5a54f93e0449c9232"},
    {"df4bd2", 1, "bf36ed5d74727dfd5d7854ec6b1d49468d8ee8aa"},
    {"549e959e", 1, "b78bae6d14338ffccfd5d5b5674a275f6ef9c717"},
    {"f7fb1be205", 1, "60b7d5bb560a1acf6fa45721bd0abb419a841a89"},
    {"c0e5abeaea63", 1, "a6d338459780c08363090fd8fc7d28dc80e8e01f"},
    {"63bfc1ed7f78ab", 1, "860328d80509500c1783169ebf0ba0c4b94da5e5"},
};

/// Of the Monte Carlo sequence: 1,000 times the digest of the three before it, put together; the last one is
/// the seed of the next round.
inline constexpr std::string_view sha1MonteCarloSeed = "dd4df644eaf3d85bace2b21accaa22b28821f5cd";
inline constexpr std::string_view sha1MonteCarloDigests[] = {
    "11f5c38b4479d4ad55cb69fadf62de0b036d5163",
    "5c26de848c21586bec36995809cb02d3677423d9",
    "453b5fcf263d01c891d7897d4013990f7c1fb0ab",
};
// clang-format on
