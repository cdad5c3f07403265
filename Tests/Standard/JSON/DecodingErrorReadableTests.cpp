#include "Orrenby/Standard/JSON/DecodingError+Readable.hpp"

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <gmock/gmock.h>

using namespace orrenby;

namespace {

struct Member {
    std::vector<int> scores;
};

const auto context = DecodingError::Context{
    .codingPath = {CodingKey("a"), CodingKey("b")}, .debugDescription = "it is odd"};

} // namespace

TEST(ReadableDescription, IsOneLineOfARealError)
{
    //! [Reading a decoding error as one line]
    std::string line;
    try {
        JSONDecoder().decode<Member>(dataFromText(R"({"scores": [1, "two"]})"));
    } catch (const DecodingError& error) {
        line = error | readableDescription;
    }
    //! [Reading a decoding error as one line]

    EXPECT_EQ(
        line, "Type mismatch: Int32 - Coding Path: scores > Index 1 (1) - Expected Int32 but found a text");
}

TEST(ReadableDescription, NamesTheTypeThatWasExpected)
{
    EXPECT_EQ(readableDescription(DecodingError::typeMismatch("Int", context)),
        "Type mismatch: Int - Coding Path: a > b - it is odd");
}

TEST(ReadableDescription, NamesTheTypeThatHasNoValue)
{
    EXPECT_EQ(readableDescription(DecodingError::valueNotFound("String", context)),
        "Value not found: String - Coding Path: a > b - it is odd");
}

TEST(ReadableDescription, NamesTheMissingKey)
{
    EXPECT_EQ(readableDescription(DecodingError::keyNotFound("id", context)),
        "Key not found: id - Coding Path: a > b - it is odd");
}

TEST(ReadableDescription, NamesNothingWhereDataIsCorrupted)
{
    EXPECT_EQ(readableDescription(DecodingError::dataCorrupted(context)),
        "Data corrupted: Coding Path: a > b - it is odd");
}

TEST(ReadableDescription, SaysNothingElseOfAKindThatItDoesNotKnow)
{
    constexpr auto unknown = static_cast<DecodingError::Kind>(255);

    EXPECT_EQ(detail::readableDescriptionAs(unknown, DecodingError::dataCorrupted(context)),
        "Unknown decoding error");
}

TEST(ReadableDescription, SaysThatThePathIsEmptyAtTheRoot)
{
    EXPECT_EQ(readableDescription(DecodingError::dataCorrupted({.debugDescription = "it is odd"})),
        "Data corrupted: Empty coding path - it is odd");
}

TEST(ReadablePath, IsEmptyAtTheRoot)
{
    EXPECT_EQ(readablePath(DecodingError::Context()), "Empty coding path");
}

TEST(ReadablePath, IsOneKey)
{
    EXPECT_EQ(readablePath(DecodingError::Context{.codingPath = {CodingKey("a")}}), "Coding Path: a");
}

TEST(ReadablePath, NamesTheIndexBesideItsText)
{
    const auto path = DecodingError::Context{
        .codingPath = {CodingKey("a"), CodingKey("b"), CodingKey("Index 2", 2)}};

    EXPECT_EQ(path | readablePath, "Coding Path: a > b > Index 2 (2)");
}

TEST(ReadablePath, DoesNotNameTheIndexOfTheFirstKey)
{
    const auto path = DecodingError::Context{.codingPath = {CodingKey::place(0), CodingKey::place(1)}};

    EXPECT_EQ(readablePath(path), "Coding Path: Index 0 > Index 1 (1)");
}

TEST(ReadablePath, NamesIntegersThatAreNegative)
{
    const auto path = DecodingError::Context{.codingPath = {CodingKey("a"), CodingKey::integer(-7)}};

    EXPECT_EQ(readablePath(path), "Coding Path: a > -7 (-7)");
}

TEST(ReadablePath, KeepsKeysAsTheyAre)
{
    const auto path = DecodingError::Context{.codingPath = {CodingKey(""), CodingKey("b > c")}};

    EXPECT_EQ(readablePath(path), "Coding Path:  > b > c");
}
