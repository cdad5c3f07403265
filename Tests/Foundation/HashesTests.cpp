#include "Orrenby/Foundation/Hashes.hpp"

#include <gmock/gmock.h>
#include <string>
#include <sys/mman.h>

using namespace orrenby;

namespace {

constexpr std::string_view digestOfNothing = "da39a3ee5e6b4b0d3255bfef95601890afd80709";

/// Bytes that take room in the table of addresses and nowhere else, for they are never read.
class UnreadBytes {
public:
    explicit UnreadBytes(std::size_t count)
        : m_count(count)
        , m_address(::mmap(nullptr, count, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0))
    {}
    UnreadBytes(const UnreadBytes&) = delete;
    UnreadBytes& operator=(const UnreadBytes&) = delete;
    ~UnreadBytes() { ::munmap(m_address, m_count); }

    bool isThere() const { return m_address != MAP_FAILED; }
    std::span<const std::byte> span() const { return {static_cast<const std::byte*>(m_address), m_count}; }

private:
    std::size_t m_count;
    void* m_address;
};

} // namespace

TEST(Hashes, OfTextAndBytes)
{
    //! [Hashing text and bytes]
    const Data bytes = dataFromText("abc");

    EXPECT_EQ(sha1Hash("abc"), "a9993e364706816aba3e25717850c26c9cd0d89d");
    EXPECT_EQ(hexString(sha1Hash(bytes).value()), "a9993e364706816aba3e25717850c26c9cd0d89d");
    //! [Hashing text and bytes]
}

TEST(SHA1Hash, OfEmptyTextIsTheDigestOfNoBytes)
{
    EXPECT_EQ(sha1Hash(""), digestOfNothing);
    EXPECT_EQ(hexString(sha1Hash(Data()).value()), digestOfNothing);
}

TEST(SHA1Hash, OfDataHasTwentyBytes) { EXPECT_EQ(sha1Hash(Data(100)).value().size(), 20U); }

TEST(SHA1Hash, TakesTheBytesOfUTF8)
{
    EXPECT_EQ(sha1Hash("Zoë"), hexString(sha1Hash(dataFromText("Zoë")).value()));
    EXPECT_NE(sha1Hash("Zoë"), sha1Hash("Zoe\u0308"));
}

TEST(SHA1Hash, GivesNothingForTextThatIsNoUTF8)
{
    EXPECT_EQ(sha1Hash("a\xFF"), std::nullopt);
    EXPECT_TRUE(sha1Hash(dataFromText("a\xFF")).has_value()); // bytes are bytes
}

TEST(SHA1Hash, GivesNothingForMoreBytesThan32BitsCount)
{
    const UnreadBytes bytes(std::size_t{1} << 32U);
    ASSERT_TRUE(bytes.isThere());

    EXPECT_EQ(sha1Hash(bytes.span()), std::nullopt);
}

TEST(HexString, HasTwoLowerCaseDigitsPerByte)
{
    EXPECT_EQ(hexString(Data{std::byte(0x00), std::byte(0xAB)}), "00ab");
}

TEST(HexString, OfNoBytesIsEmpty) { EXPECT_EQ(hexString(Data()), ""); }
