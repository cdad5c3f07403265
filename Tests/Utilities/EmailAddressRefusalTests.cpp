#include "Orrenby/Utilities/EmailAddressRefusal.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Utilities/EmailAddressValidator.hpp"
#include "Tests/Support/EmailTexts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

using Validator = EmailAddress::Validator;
using Block = EmailAddress::BlockValidationRule;
using Prefixes = EmailAddress::DomainPrefixValidationRule;
using Suffixes = EmailAddress::DomainSuffixValidationRule;

/// Refuses what is longer than it allows, and points to what is too much.
struct LengthRule {
    std::size_t longest;

    bool evaluate(std::string_view address) const { return address.size() <= longest; }
    EmailAddressRefusal explain(std::string_view) const
    {
        return {.position = longest, .sentence = "The address is too long."};
    }
};
/// Tells nothing but its verdict.
struct SilentRule {
    bool evaluate(std::string_view) const { return false; }
};

} // namespace

TEST(EmailAddressRefusal, TellsWhyAnAddressIsNotAccepted)
{
    //! [Explaining a refusal]
    const auto validator = EmailAddress::Validator(EmailAddress::DomainSuffixValidationRule({"example.com"}));

    const auto typing = validator.explain("ranger@hut.example.");
    const auto elsewhere = validator.explain("ranger@hut.example.org");

    EXPECT_EQ(typing->sentence, "The domain ends with a dot.");
    EXPECT_EQ(typing->position, 18U);
    EXPECT_EQ(elsewhere->sentence, "The domain does not end in \"example.com\".");
    EXPECT_EQ(elsewhere->position, 7U);
    EXPECT_EQ(elsewhere->rule, 0U);
    EXPECT_FALSE(validator.explain("ranger@hut.example.com").has_value());
    //! [Explaining a refusal]
}

TEST(EmailAddressRefusal, NamesThePieceInWhichThePatternFails)
{
    EXPECT_EQ(Validator().explain("a@b"),
        (EmailAddressRefusal{
            .piece = EmailPatternPiece::Domain, .position = 3, .sentence = "The domain has no dot."}));
    EXPECT_EQ(Validator().explain(""),
        (EmailAddressRefusal{
            .piece = EmailPatternPiece::LocalPart, .position = 0, .sentence = "The address is empty."}));
}

TEST(EmailAddressRefusal, NamesTheFirstRuleThatRefuses)
{
    const Validator validator(Suffixes({"co"}), LengthRule{8}, SilentRule());

    EXPECT_EQ(validator.explain("long@b.co"),
        (EmailAddressRefusal{.rule = 1, .position = 8, .sentence = "The address is too long."}));
    EXPECT_EQ(validator.explain("a@b.co"),
        (EmailAddressRefusal{.rule = 2, .sentence = "A rule of the application refuses the address."}));
}

TEST(EmailAddressRefusal, MayComeWithACallable)
{
    const auto isNobody = [](std::string_view address) { return !address.starts_with("nobody@"); };
    const Validator validator(Block(isNobody, "Nobody has no address."), Block(isNobody));

    EXPECT_EQ(validator.explain("nobody@b.co"),
        (EmailAddressRefusal{.rule = 0, .sentence = "Nobody has no address."}));
    EXPECT_EQ(
        Block(isNobody).explain("nobody@b.co").sentence, "A rule of the application refuses the address.");
}

TEST(EmailAddressRefusal, NamesTheTextThatThePrefixRuleFound)
{
    const Validator validator(Prefixes({"web", "mail"}));

    EXPECT_EQ(validator.explain("a@ma.il.example.com"),
        (EmailAddressRefusal{.rule = 0,
            .position = 2,
            .sentence = "\"mail\" may not stand in the domain before its last two labels."}));
    EXPECT_EQ(validator.explain("mail@web.com"), std::nullopt);
}

TEST(EmailAddressRefusal, NamesTheDomainsThatTheSuffixRuleAccepts)
{
    const auto sentence = [](std::vector<std::string> domains) {
        return Validator(Suffixes(std::move(domains))).explain("a@b.c")->sentence;
    };

    EXPECT_EQ(sentence({}), "No domain is accepted.");
    EXPECT_EQ(sentence({"x.y"}), "The domain does not end in \"x.y\".");
    EXPECT_EQ(sentence({"x.y", "z"}), "The domain does not end in \"x.y\" or \"z\".");
    EXPECT_EQ(sentence({"x.y", "z", "w"}), "The domain does not end in \"x.y\", \"z\" or \"w\".");
}

TEST(EmailAddressRefusal, PointsBehindTheLastAtSign)
{
    EXPECT_EQ(Validator(Suffixes({})).explain(R"("a@b"@c.co)")->position, 6U);
    EXPECT_EQ(Suffixes({}).explain("").position, 0U);
    EXPECT_EQ(Suffixes({}).explain("@@").position, 2U);
}

TEST(EmailAddressRefusal, IsMadeWithEachRuleAskedOnceUpToTheFirstThatRefuses)
{
    std::vector<std::string> asked;
    const auto note = [&](std::string name, bool answer) {
        return Block([&asked, name = std::move(name), answer](std::string_view) {
            asked.push_back(name);
            return answer;
        });
    };
    const Validator validator(note("1", true), note("2", false), note("3", true));

    EXPECT_EQ(validator.explain("a@b.co")->rule, 1U);
    EXPECT_THAT(asked, ElementsAre("1", "2"));
    EXPECT_FALSE(validator.explain("a@b")->rule.has_value());
    EXPECT_THAT(asked, ElementsAre("1", "2"));
}

TEST(EmailAddressRefusal, OfARuleIsNothingForWhatItAccepts)
{
    const EmailAddressValidationRule pattern = EmailAddress::EmailValidationRule();

    EXPECT_EQ(pattern.explain("a@b.co"), std::nullopt);
    EXPECT_EQ(pattern.explain("a@")->position, 2U);
}

TEST(EmailAddressRefusal, PrintsAsItsSentence)
{
    EXPECT_EQ(describe(*Validator().explain("a")), "The \"@\" is missing.");
}

TEST(EmailAddressRefusal, HashesByItsSentenceAndPlace)
{
    const std::hash<EmailAddressRefusal> hash;
    const auto refusal = *Validator().explain("a");

    EXPECT_EQ(hash(refusal), hash(*Validator().explain("b")));
    EXPECT_NE(hash(refusal), hash(*Validator().explain("aa")));
}

TEST(EmailAddressRefusal, IsThereExactlyWhenTheValidatorRefuses)
{
    const Validator validator(Suffixes({"co", "com"}), Prefixes({"b"}), LengthRule{30});
    for (std::uint64_t seed = 0; seed < 5'000; ++seed) {
        const auto text = orrenby::testing::EmailTexts(seed).next();
        const auto refusal = validator.explain(text);

        ASSERT_EQ(refusal.has_value(), !validator.validate(text)) << seed << ": " << text;
        ASSERT_TRUE(!refusal || refusal->rule.has_value() != refusal->piece.has_value()) << seed;
        ASSERT_TRUE(!refusal || refusal->position <= text.size()) << seed;
    }
}
