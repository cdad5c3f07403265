#include "Orrenby/Platform/Text/DataDetectorRules.hpp"

#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::detail;
using ::testing::HasSubstr;

namespace {

DetectorRules rulesOf(std::string_view file, std::string_view text)
{
    const EmbeddedText texts[] = {{file, text}};
    return DetectorRules(texts);
}

} // namespace

TEST(DetectorRules, LeaveOutRemarksAndEmptyLines)
{
    const auto rules = rulesOf("Schemes", "# a remark\n\nhttp\thost\t# another\ntel\tnumber\n");

    EXPECT_EQ(rules.schemeForm("http"), SchemeForm::Host);
    EXPECT_EQ(rules.schemeForm("tel"), SchemeForm::Number);
    EXPECT_EQ(rules.schemeForm("#"), SchemeForm::Unknown);
}

TEST(DetectorRules, TellEndingsOfFilesFromOtherDomains)
{
    const auto rules = rulesOf("TopLevelDomains", "com de\n!sh");

    EXPECT_EQ(rules.domainEnding("com"), DomainEnding::Known);
    EXPECT_EQ(rules.domainEnding("sh"), DomainEnding::FileEnding);
    EXPECT_EQ(rules.domainEnding("xn--p1ai"), DomainEnding::Known);
    EXPECT_EQ(rules.domainEnding("zz"), DomainEnding::Unknown);
}

TEST(DetectorRules, FindTheCallingCodeAtTheFront)
{
    const auto rules = rulesOf("CallingCodes", "1\t10\t10\n49\t6\t11\n353\t7\t9");

    EXPECT_EQ(rules.callingCode("353123")->codeLength, 3U);
    EXPECT_EQ(rules.callingCode("4930")->most, 11U);
    EXPECT_FALSE(rules.callingCode("2").has_value());
    EXPECT_FALSE(rules.callingCode("").has_value());
}

TEST(DetectorRules, ReadFormsOfNumbers)
{
    const auto form = phoneForm("(0ZX{1,3}) X{4,8}-[1-37]");

    ASSERT_EQ(form.size(), 3U);
    EXPECT_TRUE(form[0].isInBrackets);
    EXPECT_EQ(form[0].fewest, 3U);
    EXPECT_EQ(form[0].most, 5U);
    EXPECT_EQ(form[0].digits.size(), 2U); // those that come in any case
    EXPECT_EQ(form[1].most, 8U);
    EXPECT_EQ(form[2].digits[0], 0b10001110U);
    EXPECT_EQ(form[2].separators, static_cast<std::uint8_t>(PhoneSeparator::Dash));
}

TEST(DetectorRules, FindTheStreetWordAtTheEndOfAWord)
{
    const auto rules = rulesOf("StreetWords", "weg\tsuffix\nring\tending");

    EXPECT_EQ(rules.suffix("birkenweg").length, 3U);
    EXPECT_TRUE(rules.suffix("altstadtring").wantsPlace);
    EXPECT_EQ(rules.suffix("weg").length, 0U);
    EXPECT_EQ(rules.suffix("").length, 0U);
}

TEST(DetectorRulesDeath, RefuseWhatTheyDoNotKnow)
{
    EXPECT_DEATH(rulesOf("Schemes", "http\tsomehow"), HasSubstr("unknown entry: somehow"));
    EXPECT_DEATH(rulesOf("CallingCodes", "1\tten\t10"), HasSubstr("unknown entry: ten"));
    EXPECT_DEATH(rulesOf("Elsewhere", "a\tb"), HasSubstr("unknown entry: Elsewhere"));
}

TEST(DetectorRules, KnowNoCallingCodeThatBeginsWithAnother)
{
    const auto& rules = DetectorRules::shared();
    int codes = 0;
    for (int number = 1; number < 1000; ++number) {
        const auto digits = std::to_string(number);
        const auto code = rules.callingCode(digits);
        codes += code && code->codeLength == digits.size() ? 1 : 0;
        if (code) {
            EXPECT_LE(code->fewest, code->most) << digits;
            EXPECT_LE(code->codeLength + code->most, 15U) << digits;
        }
    }

    EXPECT_GT(codes, 180);
}

TEST(DetectorRules, KnowAllKindsOfEntries)
{
    const auto& rules = DetectorRules::shared();

    EXPECT_EQ(rules.schemeForm("mailto"), SchemeForm::Mail);
    EXPECT_EQ(rules.domainEnding("museum"), DomainEnding::Known);
    EXPECT_EQ(rules.domainEnding("рф"), DomainEnding::Known);
    EXPECT_TRUE(rules.isPhoneWord("tel"));
    EXPECT_TRUE(rules.isExtensionWord("ext"));
    EXPECT_TRUE(rules.hasRole("street", StreetRole::After));
    EXPECT_TRUE(rules.hasRole("po box", StreetRole::Box));
    EXPECT_TRUE(rules.hasRole("po", StreetRole::BoxBegin));
    EXPECT_TRUE(rules.isRegion("IL"));
    EXPECT_TRUE(rules.isCountry("united states"));
    EXPECT_GT(rules.postcodeForms().size(), 20U);
}
