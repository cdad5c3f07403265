#include "Orrenby/Platform/Coding/JSONReadError.hpp"

#include "Orrenby/Platform/Errors/NSError.hpp"
#include <gmock/gmock.h>
#include <string>

using namespace orrenby;
using Kind = JSONReadError::Kind;

namespace {

std::string said(Kind kind)
{
    return JSONReadError(kind, {.offset = 14, .line = 2, .column = 5}).description();
}

} // namespace

TEST(JSONReadError, SaysWhatIsWrongAndWhere)
{
    EXPECT_EQ(said(Kind::UnexpectedText), "Unexpected text at line 2, column 5");
    EXPECT_EQ(said(Kind::UnexpectedEnd), "Unexpected end of the text at line 2, column 5");
    EXPECT_EQ(said(Kind::TrailingText), "Text after the value at line 2, column 5");
    EXPECT_EQ(said(Kind::TooDeep), "More than 512 nested values at line 2, column 5");
    EXPECT_EQ(said(Kind::BadEncoding), "Text that is not valid in its encoding at line 2, column 5");
    EXPECT_EQ(said(Kind::TooLarge), "Text of 4 GiB or more at line 2, column 5");
    EXPECT_EQ(said(Kind::Fragment), "Neither a list nor an object at line 2, column 5");
}

TEST(JSONReadError, IsAPlatformErrorObject)
{
    const JSONReadError error(Kind::TrailingText, {.offset = 14, .line = 2, .column = 5});

    const auto object = error.nsError();

    EXPECT_EQ(object.domain(), "NSCocoaErrorDomain");
    EXPECT_EQ(object.code(), 3840);
    EXPECT_EQ(object.localizedDescription(), "Text after the value at line 2, column 5");
}

TEST(JSONReadError, EqualsOneOfTheSameKindAtTheSamePlace)
{
    const JSONReadError error(Kind::TooDeep, {.offset = 1, .line = 1, .column = 2});

    EXPECT_EQ(error, JSONReadError(Kind::TooDeep, {.offset = 1, .line = 1, .column = 2}));
    EXPECT_FALSE(error == JSONReadError(Kind::Fragment, {.offset = 1, .line = 1, .column = 2}));
    EXPECT_FALSE(error == JSONReadError(Kind::TooDeep, {.offset = 2, .line = 1, .column = 3}));
}
