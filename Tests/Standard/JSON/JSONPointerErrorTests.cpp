#include "Orrenby/Standard/JSON/JSONPointerError.hpp"

#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/World/Bundle.hpp"
#include "Orrenby/Standard/JSON/JSONPointer.hpp"
#include <gmock/gmock.h>
#include <string>
#include <type_traits>

using namespace orrenby;

namespace {

const Dictionary tree = {{"users", Array{Dictionary{{"name", "Ada"}, {"age", 36}}, nullptr}}};

JSONPointerError errorAt(std::string_view pointer)
{
    return *JSONPointer(pointer).tryGet<std::string>(tree).error();
}

} // namespace

TEST(JSONPointerError, SaysWhyThereIsNothing)
{
    //! [Saying why there is nothing]
    std::string reason;
    try {
        JSONPointer("/users/7/name").get<std::string>(tree);
    } catch (const JSONPointerError& error) {
        reason = error.description();
    }
    //! [Saying why there is nothing]

    EXPECT_EQ(reason, "Nothing at /users/7: /users is a list of 2");
}

TEST(JSONPointerError, DescribesEachKind)
{
    EXPECT_EQ(JSONPointer::tryMake("a/b").error()->description(),
        "Malformed JSON pointer a/b: it does not begin with / (offset 0)");
    EXPECT_EQ(JSONPointer::tryMake("/a~").error()->description(),
        "Malformed JSON pointer /a~: a ~ is followed by neither 0 nor 1 (offset 2)");
    EXPECT_EQ(
        errorAt("/users/0/title").description(), "Nothing at /users/0/title: /users/0 has no such member");
    EXPECT_EQ(errorAt("/guests").description(), "Nothing at /guests: the root has no such member");
    EXPECT_EQ(errorAt("/users/-").description(), "Nothing at /users/-: /users is a list of 2");
    EXPECT_EQ(errorAt("/users/07/name").description(), "Nothing at /users/07: 07 is no index of a list");
    EXPECT_EQ(
        errorAt("/users/0/name/x").description(), "Nothing at /users/0/name/x: /users/0/name is a String");
    EXPECT_EQ(errorAt("/users/1/x").description(), "Nothing at /users/1/x: /users/1 is null");
    EXPECT_EQ(errorAt("/users/0/age").description(), "Type mismatch at /users/0/age: Int is no String");
    EXPECT_EQ(errorAt("/users/1").description(), "Type mismatch at /users/1: null is no String");
    EXPECT_EQ(errorAt("").description(), "Type mismatch at the root: Dictionary<String, Any> is no String");
}

TEST(JSONPointerError, CarriesPlaceAndValue)
{
    const auto missing = errorAt("/users/0/title/x");

    EXPECT_EQ(missing.pointer(), "/users/0/title");
    EXPECT_EQ(missing.value(), Any(Dictionary{{"name", "Ada"}, {"age", 36}}));
    EXPECT_EQ(errorAt("/users/0/age").value(), Any(36));
    EXPECT_EQ(errorAt("").pointer(), "");
    EXPECT_EQ(JSONPointer::tryMake("a").error()->value(), Any());
}

TEST(JSONPointerError, NeverShowsTheValueInItsText)
{
    EXPECT_EQ(errorAt("/users/0/name/x").description().find("Ada"), std::string::npos);
    EXPECT_EQ(errorAt("/users/0/age").description().find("36"), std::string::npos);
}

TEST(JSONPointerError, IsSeenAsAPlatformErrorObject)
{
    Bundle::main().setIdentifier(std::nullopt);
    const auto error = errorAt("/users/07");

    EXPECT_EQ(error.code(), 3);
    EXPECT_EQ(
        error.nsError(), NSError("JSONPointerError", 3, {{NSLocalizedDescriptionKey, error.description()}}));
}

TEST(JSONPointerError, IsThrownByTheLibraryAndCaughtAsWhatItIs)
{
    EXPECT_THROW(JSONPointer("a"), JSONPointerError);
    EXPECT_THROW(JSONPointer("a"), Error);
    EXPECT_THROW(JSONPointer("a"), std::exception);
    EXPECT_THROW(JSONPointer("/x").get<int>(tree), JSONPointerError);
}

TEST(JSONPointerError, IsEqualWhenItsContentIs)
{
    EXPECT_EQ(errorAt("/users/7"), errorAt("/users/7"));
    EXPECT_FALSE(errorAt("/users/7") == errorAt("/users/8"));
}

TEST(JSONPointerError, IsCopiedWithoutThrowing)
{
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<JSONPointerError>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<JSONPointerError>);
}
