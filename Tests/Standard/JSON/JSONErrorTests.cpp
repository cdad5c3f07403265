#include "Orrenby/Standard/JSON/JSONError.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/World/Bundle.hpp"
#include "Orrenby/Standard/JSON/Dictionary+JSON.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

using namespace orrenby;
using ::testing::Each;
using ::testing::ElementsAre;

namespace {

//! [Handling a JSON error]
std::string nameOrReason(const Dictionary& member)
{
    try {
        return get<std::string>(member, "name");
    } catch (const JSONError& error) {
        if (error.kind() == JSONError::Kind::KeyNotFound)
            return "anonymous";
        return error.description();
    }
}
//! [Handling a JSON error]

const auto bytes = dataFromText("[1]");

/// One of each kind, in the order of their declaration.
std::vector<JSONError> allKinds()
{
    constexpr auto infinity = std::numeric_limits<double>::infinity();
    return {JSONError::keyNotFound("id"), JSONError::typeMismatch("id", 5),
        JSONError::transformFailed("id", "x"),
        JSONError::valueIsNaN("id", std::numeric_limits<double>::quiet_NaN()),
        JSONError::valueIsInfinity("id", infinity), JSONError::invalidData(bytes),
        JSONError::failedDictionaryCast("id")};
}

template <class F> auto ofAll(F&& read)
{
    std::vector<std::remove_cvref_t<decltype(read(allKinds().front()))>> result;
    for (const auto& error : allKinds())
        result.push_back(read(error));
    return result;
}

} // namespace

TEST(JSONError, IsHandledByItsKind)
{
    EXPECT_EQ(nameOrReason({{"name", "Ada"}}), "Ada");
    EXPECT_EQ(nameOrReason({}), "anonymous");
    EXPECT_EQ(nameOrReason({{"name", 7}}), "Type mismatch for key: name value: 7");
}

TEST(JSONError, HasOneKindForEachWayToMakeIt)
{
    using enum JSONError::Kind;

    EXPECT_THAT(ofAll([](const JSONError& error) { return error.kind(); }),
        ElementsAre(KeyNotFound, TypeMismatch, TransformFailed, ValueIsNaN, ValueIsInfinity, InvalidData,
            FailedDictionaryCast));
}

TEST(JSONError, HasCodesOfWhichTheLastIsTheFirstAgain)
{
    EXPECT_THAT(ofAll([](const JSONError& error) { return error.code(); }), ElementsAre(1, 2, 3, 4, 5, 6, 1));
    EXPECT_THAT(
        ofAll([](const JSONError& error) { return error.errorCode(); }), ElementsAre(1, 2, 3, 4, 5, 6, 1));
}

TEST(JSONError, DescribesEachKind)
{
    EXPECT_THAT(ofAll([](const JSONError& error) { return error.description(); }),
        ElementsAre("Key not found: id", "Type mismatch for key: id value: 5",
            "Transform failed for key: id value: x", "Key: id with value nan is not a number",
            "Key: id with value inf is infinite", "JSON from `Data` requires string-keyed dictionary",
            "Key not found: id"));
}

TEST(JSONError, HasThePropertiesThatItsKindCarries)
{
    EXPECT_EQ(JSONError::keyNotFound("id").properties(), (Dictionary{{"key", "id"}}));
    EXPECT_EQ(JSONError::typeMismatch("id", 5).properties(), (Dictionary{{"key", "id"}, {"value", 5}}));
    EXPECT_EQ(JSONError::transformFailed("id", 5).properties(), (Dictionary{{"key", "id"}, {"value", 5}}));
    EXPECT_EQ(JSONError::valueIsNaN("id", 5).properties(), (Dictionary{{"key", "id"}, {"value", 5}}));
    EXPECT_EQ(JSONError::valueIsInfinity("id", 5).properties(), (Dictionary{{"key", "id"}, {"value", 5}}));
    EXPECT_EQ(JSONError::invalidData(bytes).properties(), Dictionary());
    EXPECT_EQ(JSONError::failedDictionaryCast("id").properties(), (Dictionary{{"key", "id"}}));
}

TEST(JSONError, KeepsANullValueAmongItsProperties)
{
    EXPECT_EQ(
        JSONError::typeMismatch("id", Any()).properties(), (Dictionary{{"key", "id"}, {"value", Any()}}));
    EXPECT_EQ(JSONError::typeMismatch("id", Any()).description(), "Type mismatch for key: id value: <null>");
}

TEST(JSONError, GivesBackWhatItWasMadeFrom)
{
    const auto mismatch = JSONError::typeMismatch("id", 5);

    EXPECT_EQ(mismatch.key(), "id");
    EXPECT_EQ(mismatch.value(), Any(5));
    EXPECT_EQ(mismatch.data(), Data());
    EXPECT_EQ(JSONError::invalidData(bytes).data(), bytes);
    EXPECT_EQ(JSONError::invalidData(bytes).key(), "");
    EXPECT_EQ(JSONError::keyNotFound("").key(), "");
}

TEST(JSONError, TellsAFailedCastFromAMissingKey)
{
    EXPECT_FALSE(JSONError::failedDictionaryCast("id") == JSONError::keyNotFound("id"));
    EXPECT_EQ(
        JSONError::failedDictionaryCast("id").description(), JSONError::keyNotFound("id").description());
    EXPECT_EQ(JSONError::failedDictionaryCast("id").properties(), JSONError::keyNotFound("id").properties());
}

TEST(JSONError, IsEqualWhenKindAndContentAre)
{
    EXPECT_EQ(JSONError::typeMismatch("id", 5), JSONError::typeMismatch("id", 5));
    EXPECT_FALSE(JSONError::typeMismatch("id", 5) == JSONError::typeMismatch("id", 6));
    EXPECT_FALSE(JSONError::typeMismatch("id", 5) == JSONError::typeMismatch("no", 5));
    EXPECT_FALSE(JSONError::typeMismatch("id", 5) == JSONError::transformFailed("id", 5));
    EXPECT_FALSE(JSONError::invalidData({}) == JSONError::invalidData(bytes));
}

TEST(JSONError, BeginsItsDomainWithTheBundleIdentifier)
{
    Bundle::main().setIdentifier(std::nullopt);
    EXPECT_EQ(JSONError::errorDomain(), "JSONError");

    Bundle::main().setIdentifier("com.example.app");
    EXPECT_EQ(JSONError::errorDomain(), "com.example.app.JSONError");

    Bundle::main().setIdentifier(std::nullopt);
}

TEST(JSONError, HasNothingButItsDescriptionInItsUserInformation)
{
    for (const auto& error : allKinds())
        EXPECT_EQ(error.errorUserInfo(), (Dictionary{{NSLocalizedDescriptionKey, error.description()}}));
}

TEST(JSONError, IsSeenAsAPlatformErrorObject)
{
    Bundle::main().setIdentifier(std::nullopt);
    const auto error = JSONError::typeMismatch("id", 5);

    EXPECT_EQ(error.nsError(),
        NSError("JSONError", 2, {{NSLocalizedDescriptionKey, "Type mismatch for key: id value: 5"}}));
}

TEST(JSONError, IsThrownByTheLibraryAndCaughtAsWhatItIs)
{
    const Dictionary empty;

    EXPECT_THROW(get<int>(empty, "id"), JSONError);
    try {
        get<int>(empty, "id");
        FAIL();
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "Key not found: id");
    }
    try {
        get<int>(empty, "id");
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.description(), "Key not found: id");
    }
}

TEST(JSONError, KeepsItsTypeAsAnyError)
{
    const AnyError held = JSONError::keyNotFound("id");

    ASSERT_NE(held.cast<JSONError>(), nullptr);
    EXPECT_EQ(*held.cast<JSONError>(), JSONError::keyNotFound("id"));
    EXPECT_THROW(held.rethrow(), JSONError);
}

TEST(JSONError, IsCopiedWithoutThrowing)
{
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<JSONError>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<JSONError>);
}

TEST(JSONError, StaysWholeWhenItIsMovedFrom)
{
    auto first = JSONError::keyNotFound("id");

    const auto second = std::move(first);

    EXPECT_EQ(first, second); // NOLINT: it only ever copies
}
