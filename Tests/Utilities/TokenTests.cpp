#include "Orrenby/Utilities/Token.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <type_traits>
#include <unordered_map>

using namespace orrenby;

TEST(Token, RecognisesARegistration)
{
    //! [Recognising a registration]
    std::unordered_map<Ref<Token>, std::string> registrations;
    const auto first = std::make_shared<Token>();
    const auto second = std::make_shared<Token>();

    registrations[first] = "clicks";
    registrations[second] = "clicks";
    registrations.erase(first);

    EXPECT_EQ(registrations.size(), 1u);
    EXPECT_EQ(registrations.count(second), 1u);
    //! [Recognising a registration]
}

TEST(Token, EqualsItself)
{
    const Token token;
    const Token& same = token;

    EXPECT_EQ(token, same);
    EXPECT_EQ(token.identifier(), same.identifier());
}

TEST(Token, EqualsNoOtherToken)
{
    const Token tokens[2];

    EXPECT_NE(tokens[0], tokens[1]);
    EXPECT_NE(tokens[0].identifier(), tokens[1].identifier());
}

TEST(Token, HasAStableHash)
{
    const Token token;
    const auto hash = std::hash<Token>{}(token);

    EXPECT_EQ(std::hash<Token>{}(token), hash);
    EXPECT_EQ(std::hash<ObjectIdentifier>{}(token.identifier()), hash);
}

TEST(Token, IsNotCopied)
{
    EXPECT_FALSE(std::is_copy_constructible_v<Token>);
    EXPECT_FALSE(std::is_move_constructible_v<Token>);
    EXPECT_FALSE(std::is_copy_assignable_v<Token>);
}

TEST(Token, PrintsItsIdentifier)
{
    const Token token;

    EXPECT_EQ(token.debugDescription(), token.identifier().debugDescription());
    EXPECT_EQ(debugDescribe(token), token.debugDescription());
}
