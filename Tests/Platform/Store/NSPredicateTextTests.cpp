#include "Orrenby/Platform/Store/NSPredicate.hpp"

#include "Tests/Platform/Store/PredicateParts.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using Kind = StoreError::Kind;
using testing::ElementsAre;
using testing::Optional;

namespace {

std::optional<std::size_t> wrongByte(std::string_view format, const std::vector<Any>& arguments = {})
{
    const auto outcome = NSPredicate::tryMake(format, arguments);
    return outcome.isSuccess() ? std::nullopt : outcome.error()->context().position;
}

} // namespace

TEST(NSPredicate, TakesKeysAsArguments)
{
    EXPECT_THAT(found("%K = %@", {"employer.name", "Acme"}), ElementsAre("Eva", "Ada"));
    EXPECT_EQ(NSPredicate::make("%K = 1", {"like"}), NSPredicate::make("#like = 1"));
    EXPECT_EQ(NSPredicate::make("%K = 1", {"friends.@count"}), NSPredicate::make("friends.@count = 1"));
    EXPECT_THAT(wrongByte("1 = %K", {"a b"}), Optional(4u));
    for (const auto* const path : {"@count", "friends.@count.name", "friends.@sum"})
        EXPECT_THAT(failureOf([&] { PredicateKey{path}; }), Optional(Kind::InvalidPredicate)) << path;
    EXPECT_THAT(failureOf([] { PredicateKey("a..b"); }), Optional(Kind::InvalidPredicate));
}

TEST(NSPredicate, NamesTheByteThatIsWrong)
{
    EXPECT_THAT(wrongByte(""), Optional(0u));
    EXPECT_THAT(wrongByte("age"), Optional(3u));
    EXPECT_THAT(wrongByte("age = "), Optional(6u));
    EXPECT_THAT(wrongByte("age = 1 name = 2"), Optional(8u));
    EXPECT_THAT(wrongByte("(age = 1"), Optional(8u));
    EXPECT_THAT(wrongByte("age = 1)"), Optional(7u));
    EXPECT_THAT(wrongByte("name = 'Eva"), Optional(7u));
    EXPECT_THAT(wrongByte("age = 1.2.3"), Optional(6u));
    EXPECT_THAT(wrongByte("age = 9223372036854775808"), Optional(6u));
    EXPECT_THAT(wrongByte("age = 1e999"), Optional(6u));
    EXPECT_THAT(wrongByte("age = AND"), Optional(6u));
    EXPECT_THAT(wrongByte("age BETWEEN {1}"), Optional(12u));
    EXPECT_THAT(wrongByte("age IN 3"), Optional(7u));
    EXPECT_THAT(wrongByte("age IN {name}"), Optional(8u));
    EXPECT_THAT(wrongByte("name LIKE[d] 'x'"), Optional(10u));
    EXPECT_THAT(wrongByte("name LIKE[c 'x'"), Optional(11u));
    EXPECT_THAT(wrongByte("SELF. = 1"), Optional(5u));
    EXPECT_THAT(wrongByte("employer. name = 'x'"), Optional(9u));
    EXPECT_THAT(wrongByte("3 = 3"), Optional(0u));
    EXPECT_THAT(wrongByte("'a' LIKE name"), Optional(0u));
    EXPECT_THAT(wrongByte("name SOUNDSLIKE 'x'"), Optional(5u));
    EXPECT_THAT(wrongByte("@count = 1"), Optional(0u));
    EXPECT_THAT(wrongByte("friends.@size = 1"), Optional(8u));
    EXPECT_THAT(wrongByte("friends.#@count = 1"), Optional(9u));
    EXPECT_THAT(wrongByte("friends.@count.name = 1"), Optional(14u));
    EXPECT_THAT(wrongByte("ALL = 1"), Optional(4u));
    EXPECT_THAT(wrongByte("some = 1"), Optional(5u));
    EXPECT_THAT(wrongByte("name MATCHES  '('"), Optional(14u));
    EXPECT_THAT(wrongByte("name MATCHES other"), Optional(13u));
    EXPECT_THAT(wrongByte("name MATCHES nil"), Optional(13u));
    EXPECT_THAT(wrongByte("name MATCHES %@", {1}), Optional(13u));
    EXPECT_EQ(NSPredicate::tryMake("age").error()->description(),
        "InvalidPredicate: A comparison is expected at 3");
}

TEST(NSPredicate, CountsItsArguments)
{
    EXPECT_THAT(wrongByte("age = %@"), Optional(6u));
    EXPECT_THAT(wrongByte("age = 1", {1}), Optional(7u));
    EXPECT_THAT(wrongByte("age IN %@", {1}), Optional(7u));
    EXPECT_THAT(wrongByte("age = %@", {Any(std::vector<int>{1})}), Optional(6u));
}

TEST(NSPredicate, HasLimits)
{
    EXPECT_THAT(wrongByte(repeated("(", 99) + "age = 1" + repeated(")", 99)), std::nullopt);
    EXPECT_THAT(wrongByte(repeated("(", 100) + "age = 1" + repeated(")", 100)), Optional(99u));
    EXPECT_THAT(wrongByte(repeated("!", 1'000'000)), Optional(99u));
    EXPECT_THAT(wrongByte("age = 0" + repeated(" OR age = 1", 9'999)), std::nullopt);
    EXPECT_FALSE(NSPredicate::tryMake("age = 0" + repeated(" OR age = 1", 10'000)).isSuccess());
    EXPECT_FALSE(NSPredicate::tryMake("age IN %@", {std::vector<int>(30'001)}).isSuccess());
    EXPECT_THAT(wrongByte("age IN {0" + repeated(",1", 29'999) + "}"), std::nullopt);
    EXPECT_THAT(wrongByte("age IN {0" + repeated(",1", 30'000) + "}"), Optional(60'009u));
    const PredicateKey age("age");
    EXPECT_THAT(failureOf([&] { age.in(std::vector<Any>(30'001, 1)); }), Optional(Kind::InvalidPredicate));
    const auto manyValues = age.in(std::vector<Any>(15'001, 1));
    EXPECT_THAT(failureOf([&] { manyValues&& manyValues; }), Optional(Kind::InvalidPredicate));
    const auto manyComparisons = NSPredicate::make("age = 0" + repeated(" OR age = 1", 5'000));
    EXPECT_THAT(failureOf([&] { manyComparisons || manyComparisons; }), Optional(Kind::InvalidPredicate));
    auto nested = NSPredicate::make("age = 1");
    for (int depth = 1; depth < 100; ++depth)
        nested = !nested;
    EXPECT_THAT(failureOf([&] { !nested; }), Optional(Kind::InvalidPredicate));
    EXPECT_THAT(wrongByte(repeated("!", 98) + "ALL friends.age = 1"), std::nullopt);
    EXPECT_THAT(wrongByte(repeated("!", 99) + "ALL friends.age = 1"), Optional(0u));
}

TEST(NSPredicate, ReadsSelfBeforeAKeyAsTheKeyAlone)
{
    EXPECT_EQ(NSPredicate::make("SELF.employer.name = 'Acme'"), NSPredicate::make("employer.name = 'Acme'"));
    EXPECT_EQ(NSPredicate::make("%K = %@", {"SELF", Any()}), NSPredicate::make("SELF = nil"));
    EXPECT_EQ(PredicateKey("self") == Any(), NSPredicate::make("SELF = nil"));
    EXPECT_EQ(PredicateKey("") == Any(), NSPredicate::make("SELF = nil"));
}

TEST(NSPredicate, PrintsWhatIsAlwaysAndWhatIsNeverFulfilled)
{
    EXPECT_EQ(NSPredicate().description(), "TRUEPREDICATE");
    EXPECT_EQ(NSPredicate::make("falsepredicate OR NOT truepredicate").description(),
        "FALSEPREDICATE OR NOT TRUEPREDICATE");
}

TEST(NSPredicate, PrintsAKeyOnEitherSide)
{
    EXPECT_EQ(NSPredicate::make("age >= spouse.age").description(), "age >= spouse.age");
}

TEST(NSPredicate, PrintsValuesThatHaveNoSpellingInBrackets)
{
    EXPECT_EQ(NSPredicate::make("born < %@", {Date(0)}).description(), "born < <1970-01-01 00:00:00 +0000>");
    EXPECT_EQ(NSPredicate::make("photo = %@", {Any(dataFromText("ab"))}).description(), "photo = <2 bytes>");
}

TEST(NSPredicate, PrintsWhatItReads)
{
    const std::string text
        = "(ANY a.b BETWEEN {1, 2.5} OR NOT #like LIKE[c] \"\\\"x\\\\*\") AND SELF IN {nil, TRUE}";
    const auto predicate = NSPredicate::make(text);

    EXPECT_EQ(predicate.description(), text);
    EXPECT_EQ(NSPredicate::make(predicate.description()), predicate);
    EXPECT_EQ(std::hash<NSPredicate>()(predicate), std::hash<NSPredicate>()(NSPredicate::make(text)));
    EXPECT_FALSE(predicate == NSPredicate::make("a = 1"));
    EXPECT_EQ(NSPredicate::make("rate = 1.0").description(), "rate = 1.0");
    EXPECT_EQ(NSPredicate::make("some a.b = 1").description(), "ANY a.b = 1");
    const std::string counted = "ALL a.b.@count > 1 AND #all MATCHES[c] \"x\\\\d\"";
    EXPECT_EQ(NSPredicate::make(counted).description(), counted);
    EXPECT_FALSE(NSPredicate::make("a MATCHES 'x'") == NSPredicate::make("a MATCHES[c] 'x'"));
}
