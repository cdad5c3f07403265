#include "Orrenby/Utilities/EmailAddressValidator.hpp"

#include "Orrenby/Utilities/ReferenceType.hpp"
#include <gmock/gmock.h>
#include <sstream>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

using Validator = EmailAddress::Validator;
using Block = EmailAddress::BlockValidationRule;
using Pattern = EmailAddress::EmailValidationRule;
using Prefixes = EmailAddress::DomainPrefixValidationRule;
using Suffixes = EmailAddress::DomainSuffixValidationRule;

Block always(bool answer)
{
    return Block([=](std::string_view) { return answer; });
}

} // namespace

static_assert(ReferenceType<Validator>);

TEST(EmailAddressValidator, ValidatesAnAddress)
{
    //! [Validating an address]
    const auto validator = EmailAddress::Validator(EmailAddress::DomainSuffixValidationRule({"example.com"}),
        EmailAddress::DomainPrefixValidationRule({"test"}));
    validator.addRule([](std::string_view address) { return !address.starts_with("nobody@"); });

    EXPECT_TRUE(validator.validate("ranger@hut.example.com"));
    EXPECT_FALSE(validator.validate("ranger@hut.example.org"));
    EXPECT_FALSE(validator.validate("ranger@test.example.com"));
    EXPECT_FALSE(validator.validate("nobody@hut.example.com"));
    //! [Validating an address]
}

TEST(EmailAddressValidator, AsksForThePatternFirst)
{
    int calls = 0;
    const auto validator = Validator(Block([&](std::string_view) { return ++calls > 0; }));

    EXPECT_FALSE(validator.validate("a@b"));
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(validator.validate("a@b.co"));
    EXPECT_EQ(calls, 1);
}

TEST(EmailAddressValidator, AsksNothingAfterTheFirstRefusal)
{
    bool isCalled = false;
    const auto validator = Validator(always(true), always(false), Block([&](std::string_view) {
        isCalled = true;
        return true;
    }));

    EXPECT_FALSE(validator.validate("a@b.co"));
    EXPECT_FALSE(isCalled);
}

TEST(EmailAddressValidator, AsksItsRulesInTheirOrderWithTheWholeAddress)
{
    std::vector<std::string> asked;
    const auto note = [&](std::string name) {
        return Block([&asked, name = std::move(name)](std::string_view address) {
            asked.push_back(name + " " + std::string(address));
            return true;
        });
    };
    const auto validator = Validator(std::vector<EmailAddressValidationRule>{note("1"), note("2")});

    validator.addRule(note("3")).addRule([&](std::string_view) {
        asked.emplace_back("4");
        return true;
    });

    EXPECT_TRUE(validator.validate("a@b.co"));
    EXPECT_THAT(asked, ElementsAre("1 a@b.co", "2 a@b.co", "3 a@b.co", "4"));
    EXPECT_EQ(validator.rules().size(), 4U);
}

TEST(EmailAddressValidator, AcceptsEveryAddressWithoutRules)
{
    EXPECT_TRUE(Validator().validate("a@b.co"));
    EXPECT_TRUE(Validator().rules().empty());
}

TEST(EmailAddressValidator, SharesItsRulesWithItsCopies)
{
    const Validator one;
    const Validator copy = one; // NOLINT(performance-unnecessary-copy-initialization): that is what is tested

    copy.addRule(always(false));

    EXPECT_FALSE(one.validate("a@b.co"));
    EXPECT_EQ(one.sharedIdentity(), copy.sharedIdentity());
    EXPECT_NE(one.sharedIdentity(), Validator().sharedIdentity());
}

TEST(EmailAddressValidator, MayGetARuleFromARule)
{
    const Validator validator;
    validator.addRule([&](std::string_view) {
        validator.addRule(always(false));
        return true;
    });

    EXPECT_TRUE(validator.validate("a@b.co"));
    EXPECT_FALSE(validator.validate("a@b.co"));
}

TEST(EmailAddressValidationRules, AskTheCallableOrThePattern)
{
    EXPECT_TRUE(always(true).evaluate("x"));
    EXPECT_FALSE(always(false).evaluate("a@b.co"));
    EXPECT_TRUE(Pattern().evaluate("a@b.co"));
    EXPECT_FALSE(Pattern().evaluate("a@b"));
}

TEST(EmailAddressValidationRules, AreValuesThatPrint)
{
    std::ostringstream stream;
    stream << Pattern() << "; " << Prefixes({"mail", "web"}) << "; " << Suffixes({"example.com"});

    EXPECT_EQ(stream.str(), R"(the pattern; not in the domain: ["mail", "web"]; domains: ["example.com"])");
    EXPECT_EQ(Pattern(), Pattern());
    EXPECT_EQ(Prefixes({"a"}), Prefixes({"a"}));
    EXPECT_NE(Prefixes({"a", "b"}), Prefixes({"b", "a"}));
    EXPECT_NE(Suffixes({"a"}), Suffixes({}));
}

TEST(EmailAddressValidationRules, HashByTheirTexts)
{
    EXPECT_EQ(std::hash<Pattern>()(Pattern()), std::hash<Pattern>()(Pattern()));
    EXPECT_EQ(std::hash<Prefixes>()(Prefixes({"a"})), std::hash<Prefixes>()(Prefixes({"a"})));
    EXPECT_NE(std::hash<Prefixes>()(Prefixes({"a", "b"})), std::hash<Prefixes>()(Prefixes({"a, b"})));
    EXPECT_NE(std::hash<Suffixes>()(Suffixes({"a"})), std::hash<Suffixes>()(Suffixes({"b"})));
}

TEST(DomainPrefixRule, RefusesTextsBeforeTheLastTwoLabels)
{
    const Prefixes rule({"mail"});

    EXPECT_FALSE(rule.evaluate("a@mail.example.com"));
    EXPECT_FALSE(rule.evaluate("a@webmail.example.com"));
    EXPECT_TRUE(rule.evaluate("a@example.com"));
    EXPECT_TRUE(rule.evaluate("a@mail.com"));
    EXPECT_TRUE(rule.evaluate("a@Mail.example.com"));
    EXPECT_TRUE(rule.evaluate("mail@web.example.com"));
}

TEST(DomainPrefixRule, JoinsLabelsWithoutADot)
{
    EXPECT_FALSE(Prefixes({"ab"}).evaluate("x@a.b.example.com"));
    EXPECT_TRUE(Prefixes({"a.b"}).evaluate("x@a.b.example.com"));
    EXPECT_FALSE(Prefixes({"no", "b"}).evaluate("x@a.b.example.com"));
}

TEST(DomainPrefixRule, AcceptsWhatHasNothingToLookAt)
{
    EXPECT_TRUE(Prefixes({}).evaluate("a@mail.example.com"));
    EXPECT_TRUE(Prefixes({"a"}).evaluate(""));
    EXPECT_TRUE(Prefixes({"a"}).evaluate("@@"));
    EXPECT_TRUE(Prefixes({"a"}).evaluate("x@..a..com.."));
    EXPECT_FALSE(Prefixes({""}).evaluate("x@a.example.com"));
    EXPECT_TRUE(Prefixes({""}).evaluate("x@example.com"));
}

TEST(DomainSuffixRule, ComparesWholeLabels)
{
    EXPECT_TRUE(Suffixes({"example.com"}).evaluate("a@mail.example.com"));
    EXPECT_TRUE(Suffixes({"com"}).evaluate("a@mail.example.com"));
    EXPECT_TRUE(Suffixes({"no", "example.com"}).evaluate("a@example.com"));
    EXPECT_FALSE(Suffixes({"xample.com"}).evaluate("a@mail.example.com"));
    EXPECT_FALSE(Suffixes({"Example.com"}).evaluate("a@mail.example.com"));
    EXPECT_FALSE(Suffixes({"a.b.example.com"}).evaluate("a@b.example.com"));
}

TEST(DomainSuffixRule, DropsEmptyLabels)
{
    EXPECT_TRUE(Suffixes({".example..com."}).evaluate("a@mail.example.com"));
    EXPECT_TRUE(Suffixes({""}).evaluate("a@mail.example.com"));
    EXPECT_TRUE(Suffixes({"."}).evaluate("a@mail.example.com"));
}

TEST(DomainSuffixRule, RefusesAllWithoutADomain)
{
    EXPECT_FALSE(Suffixes({}).evaluate("a@mail.example.com"));
    EXPECT_FALSE(Suffixes({""}).evaluate(""));
    EXPECT_FALSE(Suffixes({"com"}).evaluate("@"));
}
