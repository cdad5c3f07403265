#include "Orrenby/Utilities/LosslessDataConvertibleError.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Errors/ErrorValue.hpp"
#include "Orrenby/Utilities/LosslessDataConvertible.hpp"
#include <gmock/gmock.h>
#include <type_traits>

using namespace orrenby;

namespace {

using ConversionError = LosslessDataConvertibleError;

const Data bytes = {std::byte(0xFF), std::byte(1)};

//! [Telling bytes from texts]
std::string reasonAgainst(const Data& stored)
{
    try {
        return std::to_string(fromLosslessData<std::int64_t>(stored));
    } catch (const LosslessDataConvertibleError& error) {
        if (error.kind() == LosslessDataConvertibleError::Kind::FailedToConvertFromData)
            return "broken";
        return "no number: " + error.text();
    }
}
//! [Telling bytes from texts]

} // namespace

TEST(LosslessDataConvertibleError, TellsBytesFromTexts)
{
    EXPECT_EQ(reasonAgainst(dataFromText("12")), "12");
    EXPECT_EQ(reasonAgainst(dataFromText("twelve")), "no number: twelve");
    EXPECT_EQ(reasonAgainst(bytes), "broken");
}

TEST(LosslessDataConvertibleError, CarriesTheBytes)
{
    const auto error = ConversionError::failedToConvertFromData(bytes);

    EXPECT_EQ(error.kind(), ConversionError::Kind::FailedToConvertFromData);
    EXPECT_EQ(error.data(), bytes);
    EXPECT_EQ(error.text(), "");
}

TEST(LosslessDataConvertibleError, CarriesTheText)
{
    const auto error = ConversionError::failedToConvertFromString("yes");

    EXPECT_EQ(error.kind(), ConversionError::Kind::FailedToConvertFromString);
    EXPECT_EQ(error.text(), "yes");
    EXPECT_EQ(error.data(), Data());
}

TEST(LosslessDataConvertibleError, EqualsByKindAndContent)
{
    EXPECT_EQ(
        ConversionError::failedToConvertFromData(bytes), ConversionError::failedToConvertFromData(bytes));
    EXPECT_NE(ConversionError::failedToConvertFromData(bytes), ConversionError::failedToConvertFromData({}));
    EXPECT_NE(ConversionError::failedToConvertFromData({}), ConversionError::failedToConvertFromString(""));
    EXPECT_NE(
        ConversionError::failedToConvertFromString("a"), ConversionError::failedToConvertFromString("b"));
}

TEST(LosslessDataConvertibleError, LooksLikeAPlainPlatformError)
{
    EXPECT_EQ(toNSError(ConversionError::failedToConvertFromData(bytes)),
        NSError("LosslessDataConvertibleError", 0));
    EXPECT_EQ(toNSError(ConversionError::failedToConvertFromString("yes")),
        NSError("LosslessDataConvertibleError", 1));
}

TEST(LosslessDataConvertibleError, Prints)
{
    EXPECT_EQ(
        ConversionError::failedToConvertFromData(bytes).description(), "failedToConvertFromData(2 bytes)");
    EXPECT_EQ(
        describe(ConversionError::failedToConvertFromString("yes")), R"(failedToConvertFromString("yes"))");
    EXPECT_EQ(debugDescribe(ConversionError::failedToConvertFromString("yes")),
        R"x(LosslessDataConvertibleError(failedToConvertFromString("yes")))x");
}

TEST(LosslessDataConvertibleError, IsCaughtAsItselfAcrossTheLibrarysEdge)
{
    EXPECT_THROW(fromLosslessData<bool>(bytes), LosslessDataConvertibleError);
}

TEST(LosslessDataConvertibleError, IsCaughtAsAnyException)
{
    try {
        fromLosslessData<bool>(dataFromText("yes"));
        FAIL();
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), R"(failedToConvertFromString("yes"))");
    }
}

TEST(LosslessDataConvertibleError, IsKeptWholeInAnyError)
{
    const AnyError any = ConversionError::failedToConvertFromString("yes");

    ASSERT_NE(any.cast<ConversionError>(), nullptr);
    EXPECT_EQ(*any.cast<ConversionError>(), ConversionError::failedToConvertFromString("yes"));
}

TEST(LosslessDataConvertibleError, NeverThrowsWhenCopied)
{
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<ConversionError>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<ConversionError>);
}
