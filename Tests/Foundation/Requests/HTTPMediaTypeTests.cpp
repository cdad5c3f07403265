#include "Orrenby/Foundation/Requests/HTTPMediaType.hpp"

#include "Orrenby/Foundation/Requests/HTTPBodyFormDataPart.hpp"
#include "Orrenby/Foundation/Requests/HTTPHeaderField.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"
#include <gtest/gtest.h>
#include <sstream>

using namespace orrenby;

namespace {

TEST(HTTPMediaType, NamesTheTypesOfBodies)
{
    //! [Naming a media type]
    EXPECT_EQ(HTTPMediaType::plainText, "text/plain");
    EXPECT_EQ(HTTPMediaType::protobuf, "application/x-google-protobuf");
    EXPECT_EQ(HTTPMediaType::json, "application/json");
    EXPECT_EQ(HTTPMediaType::multipartFormData("B-1"), "multipart/form-data; boundary=B-1");
    //! [Naming a media type]
}

TEST(HTTPMediaType, WritesABoundaryAsItIs)
{
    EXPECT_EQ(HTTPMediaType::multipartFormData(""), "multipart/form-data; boundary=");
    EXPECT_EQ(HTTPMediaType::multipartFormData("a\"; b"), "multipart/form-data; boundary=a\"; b");
}

TEST(HTTPHeaderField, NamesHeaderFields)
{
    EXPECT_EQ(HTTPHeaderField::authorization, "Authorization");
    EXPECT_EQ(HTTPHeaderField::authToken, "X-Auth-Token");
    EXPECT_EQ(HTTPHeaderField::contentType, "Content-Type");
}

TEST(HTTPBodyFormDataPart, IsAValueOfBytesAndTheirType)
{
    const auto part = HTTPBodyFormDataPart{.data = dataFromText("abc"), .mimetype = "image/jpeg"};
    const auto same = HTTPBodyFormDataPart{dataFromText("abc"), "image/jpeg"};
    std::ostringstream text;

    text << part;

    EXPECT_EQ(part, same);
    EXPECT_EQ(std::hash<HTTPBodyFormDataPart>()(part), std::hash<HTTPBodyFormDataPart>()(same));
    EXPECT_NE(part, (HTTPBodyFormDataPart{dataFromText("abd"), "image/jpeg"}));
    EXPECT_NE(part, (HTTPBodyFormDataPart{dataFromText("abc"), "image/png"}));
    EXPECT_EQ(text.str(), "image/jpeg, 3 bytes");
}

} // namespace
