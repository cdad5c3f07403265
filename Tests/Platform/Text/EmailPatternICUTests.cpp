#include "Tests/Support/ICUEmailPattern.hpp"

#include "Orrenby/Platform/Text/EmailPatternMismatch.hpp"
#include "Tests/Support/EmailTexts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using orrenby::testing::EmailTexts;
using orrenby::testing::ICUEmailPattern;

TEST(EmailPatternBesideICU, HasTheSameVerdictOnRandomTexts)
{
    const ICUEmailPattern peer;
    EmailTexts texts(1);
    int addresses = 0;
    for (int number = 0; number < 20'000; ++number) {
        const auto text = texts.next();
        const auto expected = peer.matches(text);

        ASSERT_TRUE(expected.has_value()) << text; // short texts are never too much for it
        ASSERT_EQ(matchesEmailPattern(text), *expected) << text;
        addresses += *expected ? 1 : 0;
    }
    EXPECT_GT(addresses, 2'000); // chance did not make refusals only
}

TEST(EmailPatternBesideICU, KnowsTheSameLetters)
{
    const ICUEmailPattern peer;
    for (char32_t scalar = 0; scalar < 0x110000; scalar += scalar < 0x3000 ? 1 : 7) {
        if (scalar >= 0xD800 && scalar < 0xE000)
            continue;
        char bytes[U8_MAX_LENGTH]; // NOLINT(modernize-avoid-c-arrays): the macro writes to one
        std::int32_t length = 0;
        U8_APPEND_UNSAFE(bytes, length, scalar);
        const auto text = std::string(bytes, static_cast<std::size_t>(length)) + "@b.co";

        ASSERT_EQ(matchesEmailPattern(text), peer.matches(text)) << static_cast<std::uint32_t>(scalar);
    }
}

TEST(EmailPatternBesideICU, DecidesWhatICUCannotDecide)
{
    const ICUEmailPattern peer;
    const auto lengthy = "\"" + std::string(5'000'000, 'a') + "\"@b.co";
    const auto adversarial = "a@[1.2.3.a:" + std::string(60, '\\');

    EXPECT_EQ(peer.matches(lengthy), std::nullopt);
    EXPECT_TRUE(matchesEmailPattern(lengthy));
    EXPECT_EQ(peer.matches(adversarial), std::nullopt);
    EXPECT_FALSE(matchesEmailPattern(adversarial));
}
