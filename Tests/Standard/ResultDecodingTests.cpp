#include "Orrenby/Standard/ResultDecoding.hpp"

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include <gmock/gmock.h>
#include <stdexcept>
#include <variant>

using namespace orrenby;
using ::testing::HasSubstr;

namespace {

//! [Decoding what can be decoded]
struct Score {
    std::string player;
    std::int64_t points = 0;
    friend bool operator==(const Score&, const Score&) = default;
};

std::vector<Score> readableScores(std::string_view text)
{
    std::vector<Score> result;
    for (const auto& score : JSONDecoder().decode<std::vector<Result<Score, AnyError>>>(text))
        score.onSuccess([&](const Score& value) { result.push_back(value); });
    return result;
}
//! [Decoding what can be decoded]

class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    friend bool operator==(const Refusal& first, const Refusal& second)
    {
        return std::string_view(first.what()) == second.what();
    }
};

/// Is not to be had.
struct Refusing {
    static Refusing init(const Decoder&) { throw Refusal("no"); }
};

/// A failure that says what the decoder said.
struct Message {
    Message(const DecodingError& error)
        : text(error.context().debugDescription)
    {}
    std::string text;
};

struct Response {
    Result<std::int64_t, AnyError> count;
    std::string name;
};

template <class T> T decoded(std::string_view text) { return JSONDecoder().decode<T>(text); }

} // namespace

TEST(ResultDecoding, DecodesWhatCanBeDecoded)
{
    const auto text
        = R"([{"player": "Ada", "points": 3}, {"player": "Bob"}, 7, {"player": "Cy", "points": 1}])";

    EXPECT_EQ(readableScores(text), (std::vector<Score>{{"Ada", 3}, {"Cy", 1}}));
}

TEST(ResultDecoding, SucceedsWithTheValue)
{
    const auto outcome = decoded<Result<std::int64_t, AnyError>>("7");

    EXPECT_EQ(outcome.value(), 7);
}

TEST(ResultDecoding, FailsWithTheErrorOfTheDecoder)
{
    const auto outcome = decoded<Result<std::int64_t, DecodingError>>(R"("seven")");

    ASSERT_TRUE(outcome.isFailure());
    EXPECT_EQ(outcome.error()->kind(), DecodingError::Kind::TypeMismatch);
    EXPECT_EQ(outcome.error()->typeName(), "Int");
}

TEST(ResultDecoding, KeepsThePathOfTheError)
{
    const auto outcomes = decoded<std::vector<Result<Score, DecodingError>>>(
        R"([{"player": "Ada", "points": "many"}])");

    ASSERT_TRUE(outcomes.at(0).isFailure());
    EXPECT_THAT(outcomes[0].error()->description(), HasSubstr("at Index 0 > points"));
}

TEST(ResultDecoding, FailsWithAnyErrorThatKeepsItsType)
{
    const auto outcome = decoded<Result<Refusing, AnyError>>("1");

    ASSERT_TRUE(outcome.isFailure());
    ASSERT_NE(outcome.error()->cast<Refusal>(), nullptr);
    EXPECT_STREQ(outcome.error()->cast<Refusal>()->what(), "no");
}

TEST(ResultDecoding, FailsWithATypesOwnError)
{
    EXPECT_EQ((decoded<Result<Refusing, Refusal>>("1").error()), Refusal("no"));
}

TEST(ResultDecoding, FailsWithABaseOfTheError)
{
    const auto outcome = decoded<Result<Refusing, std::runtime_error>>("1");

    ASSERT_TRUE(outcome.isFailure());
    EXPECT_STREQ(outcome.error()->what(), "no");
}

TEST(ResultDecoding, FailsWithAPlatformError)
{
    const auto outcome = decoded<Result<bool, NSError>>("1");

    ASSERT_TRUE(outcome.isFailure());
    EXPECT_EQ(outcome.error()->domain(), "NSCocoaErrorDomain");
    EXPECT_EQ(outcome.error()->code(), 4864);
}

TEST(ResultDecoding, FailsWithWhatTheDecodersErrorConvertsTo)
{
    EXPECT_EQ((decoded<Result<bool, Message>>("1").error()->text), "Expected Bool but found a number");

    const auto either = decoded<Result<bool, std::variant<int, DecodingError>>>("1").error();
    ASSERT_TRUE(either.has_value());
    EXPECT_TRUE(std::holds_alternative<DecodingError>(*either));
}

TEST(ResultDecoding, FailsWithTheExceptionItself)
{
    const auto outcome = decoded<Result<Refusing, std::exception_ptr>>("1");

    ASSERT_TRUE(outcome.isFailure());
    EXPECT_THROW(outcome.unwrap(), Refusal);
}

TEST(ResultDecoding, ThrowsOnWhatTheFailureCannotHold)
{
    EXPECT_THROW((decoded<Result<bool, Refusal>>("1")), DecodingError);
    EXPECT_THROW((decoded<Result<Refusing, DecodingError>>("1")), Refusal);
    EXPECT_THROW((decoded<Result<Refusing, Message>>("1")), Refusal);
    EXPECT_THROW((decoded<Result<bool, int>>("1")), DecodingError);
}

TEST(ResultDecoding, ThrowsOnEverythingWhereNothingCanFail)
{
    EXPECT_EQ((decoded<Result<bool, Never>>("true").value()), true);
    EXPECT_THROW((decoded<Result<bool, Never>>("1")), DecodingError);
}

TEST(ResultDecoding, FailsForNullUnlessTheValueIsOptional)
{
    EXPECT_TRUE((decoded<Result<bool, AnyError>>("null").isFailure()));

    const auto optional = decoded<Result<std::optional<bool>, AnyError>>("null");
    ASSERT_TRUE(optional.isSuccess());
    EXPECT_EQ(optional.unwrap(), std::nullopt);
}

TEST(ResultDecoding, LeavesTheNeighboursAlone)
{
    const auto response = decoded<Response>(R"({"count": [1, {"a": null}], "name": "x"})");

    EXPECT_TRUE(response.count.isFailure());
    EXPECT_EQ(response.name, "x");
}

TEST(ResultDecoding, HasNoOutcomeForAMissingMember)
{
    EXPECT_THROW(decoded<Response>(R"({"name": "x"})"), DecodingError);
}

TEST(ResultDecoding, HasNoOutcomeForBytesThatAreNoJSON)
{
    EXPECT_THROW((decoded<Result<bool, AnyError>>("tru")), DecodingError);
}

TEST(ResultDecoding, IsThereForValuesThatCanBeDecoded)
{
    struct Opaque {
        explicit Opaque(int) {}
    };

    EXPECT_TRUE((DecodableType<Result<std::string, AnyError>>));
    EXPECT_FALSE((DecodableType<Result<Opaque, AnyError>>));
}
