#include "Orrenby/Platform/Text/DataDetectorText.hpp"

#include <gmock/gmock.h>
#include <unicode/uchar.h>
#include <vector>

using namespace orrenby::detail;
using ::testing::IsEmpty;

namespace {

/// The blocks whose capitals are known: Latin with its first supplements, Greek, and most of Cyrillic.
bool isOfAKnownBlock(char32_t value)
{
    return value < 0x180 || (value >= 0x386 && value <= 0x3AB) || (value >= 0x400 && value <= 0x4BF);
}

} // namespace

TEST(LoweredScalar, AgreesWithUnicodeInEveryBlockThatItKnows)
{
    std::vector<std::uint32_t> others;
    for (char32_t value = 0; value < 0x4C0; ++value) {
        const auto expected = static_cast<char32_t>(u_tolower(static_cast<UChar32>(value)));
        if (isOfAKnownBlock(value) && loweredScalar(value) != expected)
            others.push_back(static_cast<std::uint32_t>(value));
    }

    EXPECT_THAT(others, IsEmpty());
}

TEST(LoweredScalar, LeavesEveryOtherValueAsItIs)
{
    std::vector<std::uint32_t> changed;
    for (char32_t value = 0; value < 0x110000; ++value)
        if (!isOfAKnownBlock(value) && loweredScalar(value) != value)
            changed.push_back(static_cast<std::uint32_t>(value));

    EXPECT_THAT(changed, IsEmpty());
}
