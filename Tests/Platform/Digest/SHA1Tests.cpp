#include "Orrenby/Platform/Digest/SHA1.hpp"

#include "Orrenby/Platform/Text/Hexadecimal.hpp"
#include "SHA1Vectors.hpp"
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <gmock/gmock.h>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;

namespace {

constexpr std::string_view digestOfNothing = "da39a3ee5e6b4b0d3255bfef95601890afd80709";

std::string digits(std::string_view text) { return hexadecimalText(sha1(text)); }

std::string repeated(std::string_view hexadecimal, unsigned count)
{
    const auto once = bytesFromHexadecimal(hexadecimal).value();
    std::string text;
    text.reserve(once.size() * count);
    for (unsigned time = 0; time < count; ++time)
        text.append(reinterpret_cast<const char*>(once.data()), once.size());
    return text;
}

/// The digest as FIPS 180-4 writes it down, slow and plain.
class Reference {
public:
    static std::string digits(std::string message)
    {
        const auto bits = message.size() * 8;
        message += '\x80';
        message.resize((message.size() + 8 + 63) / 64 * 64 - 8, '\0');
        for (unsigned shift = 64; shift > 0; shift -= 8)
            message += static_cast<char>(bits >> (shift - 8));

        Reference reference;
        for (std::size_t block = 0; block < message.size(); block += 64)
            reference.take(std::string_view(message).substr(block, 64));
        std::array<char, 41> text{};
        const auto& h = reference.m_state;
        std::snprintf(text.data(), text.size(), "%08x%08x%08x%08x%08x", h[0], h[1], h[2], h[3], h[4]);
        return text.data();
    }

private:
    void take(std::string_view block)
    {
        std::array<std::uint32_t, 80> words{};
        for (std::size_t place = 0; place < 64; ++place)
            words[place / 4] = (words[place / 4] << 8U) | static_cast<unsigned char>(block[place]);
        for (std::size_t word = 16; word < 80; ++word)
            words[word] = std::rotl(
                words[word - 3] ^ words[word - 8] ^ words[word - 14] ^ words[word - 16], 1);

        auto [a, b, c, d, e] = m_state;
        for (std::size_t round = 0; round < 80; ++round) {
            const std::uint32_t mixed = round < 20 ? ((b & c) | (~b & d)) + 0x5A827999U
                : round < 40                       ? (b ^ c ^ d) + 0x6ED9EBA1U
                : round < 60                       ? ((b & c) | (b & d) | (c & d)) + 0x8F1BBCDCU
                                                   : (b ^ c ^ d) + 0xCA62C1D6U;
            const auto next = std::rotl(a, 5) + mixed + e + words[round];
            e = d;
            d = c;
            c = std::rotl(b, 30);
            b = a;
            a = next;
        }
        const std::array<std::uint32_t, 5> added{a, b, c, d, e};
        for (std::size_t word = 0; word < 5; ++word)
            m_state[word] += added[word];
    }

    std::array<std::uint32_t, 5> m_state{0x67452301U, 0xEFCDAB89U, 0x98BADCFEU, 0x10325476U, 0xC3D2E1F0U};
};

/// Digests when it goes away.
struct DigestsAtTheEnd {
    bool endsTheProcess = false;
    std::string* result = nullptr;

    ~DigestsAtTheEnd()
    {
        const auto text = digits("");
        if (result != nullptr)
            *result = text;
        if (endsTheProcess)
            std::_Exit(text == digestOfNothing ? 7 : 8);
    }
};

} // namespace

TEST(SHA1, NamesBytesByTheirDigest)
{
    //! [Naming bytes by their digest]
    const SHA1Digest name = sha1("abc");

    EXPECT_EQ(hexadecimalText(name), "a9993e364706816aba3e25717850c26c9cd0d89d");
    //! [Naming bytes by their digest]
}

TEST(SHA1, GivesThePublishedDigests)
{
    for (const auto& vector : sha1Vectors)
        EXPECT_EQ(digits(repeated(vector.message, vector.repeats)), vector.digest)
            << vector.message << " x " << vector.repeats;
}

TEST(SHA1, FollowsThePublishedMonteCarloSequence)
{
    auto seed = repeated(sha1MonteCarloSeed, 1);
    for (const auto expected : sha1MonteCarloDigests) {
        std::array<std::string, 3> last{seed, seed, seed};
        for (std::size_t round = 0; round < 1'000; ++round) {
            const auto digest = sha1(last[0] + last[1] + last[2]);
            last = {
                last[1], last[2], std::string(reinterpret_cast<const char*>(digest.data()), digest.size())};
        }
        seed = last[2];

        EXPECT_EQ(hexadecimalText(std::as_bytes(std::span(seed))), expected);
    }
}

TEST(SHA1, AgreesWithTheWrittenProcedureForEveryLengthOfAFewBlocks)
{
    std::string message;
    for (int length = 0; length <= 260; ++length) {
        ASSERT_EQ(digits(message), Reference::digits(message)) << length;
        message += static_cast<char>(length * 37);
    }
}

TEST(SHA1, DigestsNothing)
{
    EXPECT_EQ(hexadecimalText(sha1(std::span<const std::byte>())), digestOfNothing);
    EXPECT_EQ(digits({}), digestOfNothing);
}

TEST(SHA1, TakesBytesAndTextAlike)
{
    const std::string text("a\0b\xFF", 4);

    EXPECT_EQ(sha1(std::as_bytes(std::span(text))), sha1(text));
    EXPECT_NE(sha1(text), sha1("a"));
}

TEST(SHA1, DigestsInManyThreads)
{
    std::vector<std::string> results(8);
    std::vector<std::thread> threads;
    threads.reserve(results.size());
    for (auto& result : results)
        threads.emplace_back([&result] {
            for (int round = 0; round < 200; ++round)
                result = digits("abc");
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_THAT(results, ::testing::Each("a9993e364706816aba3e25717850c26c9cd0d89d"));
}

TEST(SHA1, DigestsWhileAThreadEnds)
{
    std::string atTheEnd;
    std::thread([&] {
        thread_local DigestsAtTheEnd late; // made before the first digest, so gone after what that one kept
        late.result = &atTheEnd;
        sha1("abc");
    }).join();

    EXPECT_EQ(atTheEnd, digestOfNothing);
}

TEST(SHA1DeathTest, DigestsWhileTheProcessEnds)
{
    EXPECT_EXIT(
        {
            static DigestsAtTheEnd late;
            late.endsTheProcess = true;
            sha1("abc");
            std::exit(0);
        },
        ::testing::ExitedWithCode(7), "");
}
