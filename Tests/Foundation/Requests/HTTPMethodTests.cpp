#include "Orrenby/Foundation/Requests/HTTPMethod.hpp"

#include "Orrenby/Platform/Objects/Printing.hpp"
#include <gmock/gmock.h>
#include <sstream>
#include <unordered_set>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

static_assert(RawRepresentable<HTTPMethod>);

TEST(HTTPMethod, StandsForATextInLowerCase)
{
    //! [Reading a method]
    EXPECT_EQ(HTTPMethod::make("delete"), HTTPMethod::delete_);
    EXPECT_EQ(HTTPMethod::make("GET"), std::nullopt);
    EXPECT_EQ(HTTPMethod(HTTPMethod::delete_).rawValue(), "delete");
    //! [Reading a method]
}

TEST(HTTPMethod, HasSixCasesInOrder)
{
    EXPECT_THAT(allCases<HTTPMethod>,
        ElementsAre(HTTPMethod::get, HTTPMethod::post, HTTPMethod::put, HTTPMethod::delete_,
            HTTPMethod::patch, HTTPMethod::head));
}

TEST(HTTPMethod, ReadsEveryTextThatItWrites)
{
    std::string texts;
    for (const HTTPMethod method : allCases<HTTPMethod>) {
        texts += method.rawValue() + " " + method.httpText() + "\n";
        EXPECT_EQ(HTTPMethod::make(method.rawValue()), method);
        EXPECT_EQ(HTTPMethod::make(method.httpText()), std::nullopt);
    }

    EXPECT_EQ(texts, "get GET\npost POST\nput PUT\ndelete DELETE\npatch PATCH\nhead HEAD\n");
}

TEST(HTTPMethod, ReadsNoOtherText)
{
    for (const auto* text : {"", "Get", " get", "get ", "options", "delete_"})
        EXPECT_EQ(HTTPMethod::make(text), std::nullopt) << text;
    EXPECT_EQ(HTTPMethod::make(std::string_view("get\0", 4)), std::nullopt);
}

TEST(HTTPMethod, IsGetWithoutAValue) { EXPECT_EQ(HTTPMethod(), HTTPMethod::get); }

TEST(HTTPMethod, IsAMemberOfSets)
{
    const std::unordered_set<HTTPMethod> withBody = {HTTPMethod::post, HTTPMethod::put, HTTPMethod::post};

    EXPECT_EQ(withBody.size(), 2U);
    EXPECT_TRUE(withBody.contains(HTTPMethod::put));
    EXPECT_FALSE(withBody.contains(HTTPMethod::get));
}

TEST(HTTPMethod, PrintsItsText)
{
    std::ostringstream text;

    text << HTTPMethod(HTTPMethod::patch);

    EXPECT_EQ(text.str(), "patch");
}

TEST(HTTPMethodDeathTest, EndsTheProcessForAValueThatIsNoCase)
{
    EXPECT_DEATH((void)HTTPMethod(static_cast<HTTPMethod::Case>(6)).httpText(),
        "Fatal error: Value is none of the methods: file Foundation/HTTPMethod");
}

} // namespace
