#include "Orrenby/Platform/Coding/DecodingError.hpp"

#include <gmock/gmock.h>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

DecodingError::Context context()
{
    return {{"a", CodingKey::place(2)}, "Expected Int but found a text", {}, {}};
}

} // namespace

TEST(DecodingError, SaysWhatWhereAndWhy)
{
    //! [Reading a decoding error]
    const DecodingError error = DecodingError::typeMismatch<std::int64_t>(
        {{"ages", CodingKey::place(2)}, "Expected Int but found a text"});

    const bool isMismatch = error.kind() == DecodingError::Kind::TypeMismatch;
    const std::string expected = error.typeName();
    const auto path = error.context().codingPath;
    //! [Reading a decoding error]

    EXPECT_TRUE(isMismatch);
    EXPECT_EQ(expected, "Int");
    EXPECT_THAT(path, ElementsAre(CodingKey("ages"), CodingKey("Index 2", 2)));
    EXPECT_EQ(error.description(), "typeMismatch(Int, at ages > Index 2: Expected Int but found a text)");
}

TEST(DecodingError, PrintsItsFourCases)
{
    EXPECT_EQ(DecodingError::valueNotFound<std::string>({{}, "Found null"}).description(),
        "valueNotFound(String, at the root: Found null)");
    EXPECT_EQ(DecodingError::keyNotFound("id", {{"user"}, "No member id"}).description(),
        "keyNotFound(id, at user: No member id)");
    EXPECT_EQ(DecodingError::dataCorrupted({{}, "Bad", {}, TextPosition{3, 1, 4}}).description(),
        "dataCorrupted(at the root, line 1, column 4: Bad)");
}

TEST(DecodingError, IsAPlatformErrorObject)
{
    const auto missing = DecodingError::keyNotFound("id", context()).nsError();
    const auto wrong = DecodingError::dataCorrupted(context()).nsError();

    EXPECT_EQ(missing.domain(), "NSCocoaErrorDomain");
    EXPECT_EQ(missing.code(), 4865);
    EXPECT_EQ(wrong.code(), 4864);
    EXPECT_EQ(wrong.userInfo().cast<std::string>("NSDebugDescription"), "Expected Int but found a text");
}

TEST(DecodingError, CarriesItsCause)
{
    const auto error = DecodingError::dataCorrupted({{}, "Bad", AnyError(std::string("cause")), {}});

    EXPECT_EQ(*error.context().underlyingError->cast<std::string>(), "cause");
    EXPECT_NE(error.nsError().underlyingError(), std::nullopt);
}

TEST(DecodingError, HasNoSentenceForPeopleOfItsOwn)
{
    EXPECT_EQ(DecodingError::dataCorrupted(context()).customNSError(), std::nullopt);
}
