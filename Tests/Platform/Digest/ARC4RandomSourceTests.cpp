#include "Orrenby/Platform/Digest/ARC4RandomSource.hpp"

#include "ARC4Keystreams.hpp"
#include <charconv>
#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

using namespace orrenby;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Lt;

namespace {

std::string bytesOf(std::string_view hexadecimal)
{
    std::string bytes;
    for (std::size_t place = 0; place < hexadecimal.size(); place += 2) {
        unsigned value = 0;
        std::from_chars(hexadecimal.data() + place, hexadecimal.data() + place + 2, value, 16);
        bytes.push_back(static_cast<char>(value));
    }
    return bytes;
}

std::string stream(ARC4RandomSource& source, std::size_t count)
{
    std::string bytes;
    for (std::size_t place = 0; place < count; ++place)
        bytes.push_back(static_cast<char>(source.nextByte()));
    return bytes;
}

std::vector<std::uint64_t> draws(std::string_view seed, std::uint64_t bound, int count)
{
    ARC4RandomSource source(seed);
    std::vector<std::uint64_t> result;
    for (int draw = 0; draw < count; ++draw)
        result.push_back(source.nextInt(bound));
    return result;
}

} // namespace

static_assert(!std::is_copy_constructible_v<ARC4RandomSource>);

TEST(ARC4RandomSource, DrawsTheSameNumbersAgain)
{
    //! [Drawing the same numbers again]
    auto dice = ARC4RandomSource("orrenby");

    const auto first = dice.nextInt(6);
    const auto second = dice.nextInt(6);

    EXPECT_EQ(first, 3U); // with this seed always
    EXPECT_EQ(second, 2U);
    //! [Drawing the same numbers again]
}

TEST(ARC4RandomSource, GivesThePublishedKeyStreams)
{
    for (const auto& [key, offset, bytes] : arc4Keystreams) {
        SCOPED_TRACE(std::string(key) + " at " + std::to_string(offset));
        ARC4RandomSource source(bytesOf(key));

        source.dropBytes(offset);

        EXPECT_EQ(stream(source, 16), bytesOf(bytes));
    }
}

TEST(ARC4RandomSource, TakesAnEmptySeedLikeOneZeroByte)
{
    ARC4RandomSource empty("");
    ARC4RandomSource zero(std::string_view("\0", 1));

    EXPECT_EQ(stream(empty, 64), stream(zero, 64));
}

TEST(ARC4RandomSource, LooksAtNoMoreThan256Bytes)
{
    const std::string long_(256, 'k');
    ARC4RandomSource whole(long_);
    ARC4RandomSource longer(long_ + "more");
    ARC4RandomSource other(long_.substr(1) + "x");

    const auto expected = stream(whole, 64);

    EXPECT_EQ(stream(longer, 64), expected);
    EXPECT_NE(stream(other, 64), expected);
}

TEST(ARC4RandomSource, DrawsKnownNumbers)
{
    EXPECT_THAT(draws("", 100, 8), ElementsAre(53, 54, 7, 37, 95, 95, 14, 2));
    EXPECT_THAT(draws("a", 100, 8), ElementsAre(66, 91, 87, 15, 19, 60, 81, 88));
    EXPECT_THAT(draws("orrenby", 100, 8), ElementsAre(69, 38, 55, 51, 46, 82, 72, 74));
    EXPECT_THAT(draws("seed-1", 100, 8), ElementsAre(20, 12, 64, 65, 91, 19, 52, 31));
}

TEST(ARC4RandomSource, DrawsKnownNumbersBelowLargeBounds)
{
    constexpr auto words32 = std::uint64_t{1} << 32U;
    constexpr auto highest = std::numeric_limits<std::uint64_t>::max();

    EXPECT_THAT(draws("", words32, 3), ElementsAre(3726149953U, 2738314554U, 2315656807U));
    EXPECT_THAT(draws("", words32 + 1, 3), ElementsAre(3307131898U, 3446174727U, 699558900U));
    EXPECT_THAT(draws("", highest, 3),
        ElementsAre(16003692190865251642U, 9945670256291648109U, 14346919905038494615U));
    EXPECT_THAT(draws("orrenby", words32, 3), ElementsAre(1943294169U, 2827144238U, 3673212055U));
    EXPECT_THAT(draws("orrenby", words32 + 1, 3), ElementsAre(883850069U, 4210305093U, 1584806033U));
    EXPECT_THAT(draws("orrenby", highest, 3),
        ElementsAre(8346384905189641262U, 15776325651086503131U, 12737701101184983098U));
    EXPECT_THAT(draws("dice", words32, 3), ElementsAre(2890180889U, 758159218U, 550132848U));
    EXPECT_THAT(draws("dice", words32 + 1, 3), ElementsAre(2162945626U, 2097586000U, 1194990016U));
    EXPECT_THAT(draws("dice", highest, 3),
        ElementsAre(12413232398537365362U, 2362802593263057856U, 13561114720394337212U));
}

TEST(ARC4RandomSource, ReadsWordsMostSignificantByteFirst)
{
    const auto key = bytesOf("0102030405"); // the stream begins b2 39 63 05 f0 3d c0 27 cc c3 …
    ARC4RandomSource narrow(key);
    ARC4RandomSource wide(key);

    EXPECT_EQ(narrow.nextInt(std::uint64_t{1} << 32U), 0xB2396305U);
    EXPECT_EQ(wide.nextInt(std::numeric_limits<std::uint64_t>::max()), 0xB2396305F03DC027U);
    EXPECT_EQ(wide.nextByte(), 0xCCU);
}

TEST(ARC4RandomSource, TakesEightBytesFromTheFirstBoundBeyond32Bits)
{
    const auto key = bytesOf("0102030405");
    ARC4RandomSource source(key);

    EXPECT_EQ(source.nextInt((std::uint64_t{1} << 32U) + 1), 0xB2396305F03DC027U % 0x100000001U);
    EXPECT_EQ(source.nextByte(), 0xCCU);
}

TEST(ARC4RandomSource, PassesOverWordsThatWouldNotBeFair)
{
    // Below 2^31 + 1 words are fair; of these 1,000 about half are passed over.
    const auto bound = (std::uint64_t{1} << 31U) + 1;
    ARC4RandomSource drawn("fair");
    ARC4RandomSource plain("fair");

    for (int draw = 0; draw < 1'000; ++draw) {
        std::uint64_t word = bound;
        while (word >= bound)
            word = plain.nextInt(std::uint64_t{1} << 32U);
        ASSERT_EQ(drawn.nextInt(bound), word);
    }
}

TEST(ARC4RandomSource, TakesAWordForTheSmallestBounds)
{
    const auto key = bytesOf("0102030405");
    ARC4RandomSource one(key);
    ARC4RandomSource none(key);

    EXPECT_EQ(one.nextInt(1), 0U);
    EXPECT_EQ(one.nextByte(), 0xF0U);
    EXPECT_EQ(none.nextInt(0), 0U);
    EXPECT_EQ(none.nextByte(), 0xF0U);
}

TEST(ARC4RandomSource, StaysBelowTheBoundAndDrawsEachNumber)
{
    const auto numbers = draws("dice", 6, 6'000);
    std::vector<int> counts(6, 0);
    for (const auto number : numbers)
        ++counts[number];

    EXPECT_THAT(numbers, Each(Lt(6U)));
    EXPECT_THAT(counts, Each(::testing::AllOf(::testing::Gt(850), Lt(1'150))));
}
