#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"

#include "JSONTexts.hpp"
#include "Orrenby/Platform/Coding/DecodingError.hpp"
#include "Orrenby/Platform/Coding/EncodingError.hpp"
#include "Orrenby/Platform/Coding/JSONReadError.hpp"
#include <gmock/gmock.h>
#include <limits>

using namespace orrenby;
using Reading = NSJSONSerialization::ReadingOptions;
using Writing = NSJSONSerialization::WritingOptions;

namespace {

Any read(std::string_view text)
{
    return NSJSONSerialization::JSONObjectWithData(dataFromText(text), Reading::FragmentsAllowed);
}

std::string written(const Any& value, Writing options = Writing::FragmentsAllowed)
{
    return *textFromData(NSJSONSerialization::dataWithJSONObject(value, options));
}

template <class Failure, class Operation> std::string failure(Operation operation)
{
    try {
        operation();
        return "no failure";
    } catch (const Failure& error) {
        return error.description();
    }
}

std::string writingFailure(const Any& value)
{
    return failure<EncodingError>([&] { written(value); });
}

Any nested(int depth)
{
    Any value = Array{};
    for (; depth > 1; --depth)
        value = Array(1, value);
    return value;
}

} // namespace

TEST(NSJSONSerialization, ReadsObjectsAndWritesThem)
{
    //! [Reading and writing untyped values]
    const Data data = dataFromText(R"({"name": "Ada", "scores": [1, 2.5], "active": true, "team": null})");
    const auto person = *NSJSONSerialization::JSONObjectWithData(data).cast<Dictionary>();

    const std::optional<std::string> name = person.cast<std::string>("name");
    const Data sorted = NSJSONSerialization::dataWithJSONObject(person, Writing::SortedKeys);
    //! [Reading and writing untyped values]

    EXPECT_EQ(name, "Ada");
    EXPECT_EQ(textFromData(sorted), R"({"active":true,"name":"Ada","scores":[1,2.5],"team":null})");
    EXPECT_EQ(describe(person), R"(["active": true, "name": "Ada", "scores": [1, 2.5], "team": <null>])");
}

TEST(NSJSONSerialization, RefusesFragmentsUnlessAllowed)
{
    EXPECT_EQ(failure<JSONReadError>([] { NSJSONSerialization::JSONObjectWithData(dataFromText(" 1")); }),
        "Neither a list nor an object at line 1, column 2");
    EXPECT_EQ(read("1"), Any(1));
    EXPECT_EQ(static_cast<unsigned>(Reading::FragmentsAllowed), 4U);
}

TEST(NSJSONSerialization, GivesParsedNumbersAsBothIntegerAndDouble)
{
    EXPECT_EQ(read("3").cast<double>(), 3.0);
    EXPECT_EQ(read("3.0").cast<std::int64_t>(), 3);
    EXPECT_EQ(read("1e3").cast<int>(), 1000);
    EXPECT_EQ(read("1.5").cast<std::int64_t>(), std::nullopt);
    EXPECT_EQ(read("1.5").cast<double>(), 1.5);
    EXPECT_EQ(read("true").cast<int>(), std::nullopt);
    EXPECT_EQ(read("1").cast<bool>(), std::nullopt);
}

TEST(NSJSONSerialization, GivesIntegersOfAnySizeExactlyWhereTheyFit)
{
    EXPECT_EQ(read("9223372036854775807"), Any(std::numeric_limits<std::int64_t>::max()));
    EXPECT_EQ(read("-9223372036854775808"), Any(std::numeric_limits<std::int64_t>::min()));
    EXPECT_EQ(read("18446744073709551615"), Any(std::numeric_limits<std::uint64_t>::max()));
    EXPECT_EQ(read("18446744073709551616"), Any(18446744073709551616.0));
    EXPECT_EQ(read("-9223372036854775809").cast<double>(), -9223372036854775808.0);
    EXPECT_EQ(read("123456789012345678901234567890"), Any(123456789012345678901234567890.0));
}

TEST(NSJSONSerialization, GivesNegativeZeroAsZeroOrAsDouble)
{
    EXPECT_EQ(read("-0"), Any(0));
    EXPECT_EQ(written(read("-0.0")), "-0.0");
}

TEST(NSJSONSerialization, HoldsWhatIsRoundedToAnIntegerAsOne)
{
    EXPECT_EQ(read("1e-400"), Any(0));
    EXPECT_EQ(read("1.00000000000000000000001"), Any(1));
    EXPECT_EQ(read("-1234567890123456789.5"), Any(std::int64_t{-1234567890123456768}));
    EXPECT_EQ(read("9223372036854775809.5"), Any(9223372036854775808.0));
    EXPECT_EQ(read(written(9223372036854775808.0)), Any(9223372036854775808.0));
    EXPECT_EQ(written(read("-1e-400")), "-0.0");
}

TEST(NSJSONSerialization, NamesThePathOfANumberThatIsTooLarge)
{
    EXPECT_EQ(failure<DecodingError>([] { read(R"({"a":[0,{"b":1e400}]})"); }),
        "dataCorrupted(at a > Index 1 > b, line 1, column 14: The number 1e400 does not fit in Double)");
    EXPECT_EQ(read("1e-400").cast<double>(), 0.0);
}

TEST(NSJSONSerialization, ThrowsWhatIsWrongWithTheText)
{
    EXPECT_EQ(failure<JSONReadError>([] { read("[1"); }), "Unexpected end of the text at line 1, column 3");
}

TEST(NSJSONSerialization, ReturnsTheSameFailuresFromItsTwins)
{
    const auto outcome = NSJSONSerialization::tryJSONObjectWithData(dataFromText("["));
    const auto refused = NSJSONSerialization::tryDataWithJSONObject(Array{Date(0)});

    ASSERT_NE(outcome.error(), std::nullopt);
    EXPECT_NE(outcome.error()->cast<JSONReadError>(), nullptr);
    EXPECT_NE(refused.error()->cast<EncodingError>(), nullptr);
    EXPECT_EQ(NSJSONSerialization::tryJSONObjectWithData(dataFromText("[]")).value(), Any(Array{}));
}

TEST(NSJSONSerialization, WritesEveryKind)
{
    EXPECT_EQ(written(Array{nullptr, true, -1, 1.5, 0.1F, "a/b", Array{}, Dictionary{}}),
        R"([null,true,-1,1.5,0.1,"a/b",[],{}])");
    EXPECT_EQ(written(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
}

TEST(NSJSONSerialization, EscapesOnlyWhatMustBe)
{
    EXPECT_EQ(written("\"\\/\b\f\n\r\t\x01\x1F\x7Fä€😀"),
        R"("\"\\/\b\f\n\r\t\u0001\u001f)"
        "\x7Fä€😀\"");
    EXPECT_EQ(written(std::string(1, '\0')), R"("\u0000")");
}

TEST(NSJSONSerialization, LaysOutPrettyText)
{
    EXPECT_EQ(written(Dictionary{{"b", Array{1, Dictionary{}}}, {"a", Array{}}}, Writing::PrettyPrinted), R"({
  "b" : [
    1,
    {}
  ],
  "a" : []
})");
    EXPECT_EQ(written(Dictionary{{"b", 1}, {"a", 2}}, Writing::PrettyPrinted | Writing::SortedKeys),
        "{\n  \"a\" : 2,\n  \"b\" : 1\n}");
}

TEST(NSJSONSerialization, NamesThePathOfWhatItCannotWrite)
{
    EXPECT_EQ(writingFailure(Dictionary{{"a", Array{1, Date(0)}}}),
        "invalidValue(1970-01-01 00:00:00 +0000, at a > Index 1: JSON does not support type Date)");
    EXPECT_EQ(writingFailure(std::numeric_limits<double>::infinity()),
        "invalidValue(inf, at the root: JSON has no number for inf)");
    EXPECT_EQ(writingFailure(Array{std::numeric_limits<float>::quiet_NaN()}),
        "invalidValue(nan, at Index 0: JSON has no number for nan)");
    EXPECT_THAT(writingFailure("\xFF"), ::testing::HasSubstr("at the root: Text that is not valid UTF-8"));
    EXPECT_THAT(
        writingFailure(Dictionary{{"\xFF", 1}}), ::testing::HasSubstr("Text that is not valid UTF-8"));
}

TEST(NSJSONSerialization, WritesWhatIsNoContainerOnlyAsAFragment)
{
    EXPECT_THAT(failure<EncodingError>([] { NSJSONSerialization::dataWithJSONObject("a"); }),
        ::testing::HasSubstr("Neither a list nor a dictionary"));
}

TEST(NSJSONSerialization, WritesADepthOf512AndNoMore)
{
    const auto deep = nested(512);

    EXPECT_EQ(read(written(deep)), deep);
    EXPECT_THAT(writingFailure(nested(513)), ::testing::HasSubstr("More than 512 nested values"));
}

TEST(NSJSONSerialization, TellsWhatIsValid)
{
    EXPECT_TRUE(NSJSONSerialization::isValidJSONObject(Dictionary{{"a", Array{1, nullptr}}}));
    EXPECT_FALSE(NSJSONSerialization::isValidJSONObject("a"));
    EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(Array{Date(0)}));
    EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(Array{std::numeric_limits<double>::quiet_NaN()}));
}

TEST(NSJSONSerialization, ReadsBackWhatItWroteForRandomValues)
{
    for (unsigned seed = 0; seed < 2'000; ++seed) {
        const auto value = RandomJSON(seed).value();
        const auto text = written(value);
        const auto again = read(text);

        ASSERT_EQ(written(again), text) << "seed " << seed;
        ASSERT_EQ(read(written(again, Writing::PrettyPrinted | Writing::FragmentsAllowed)), again)
            << "seed " << seed;
        ASSERT_EQ(read(written(again, Writing::SortedKeys | Writing::FragmentsAllowed)), again)
            << "seed " << seed;
    }
}
