#include "Orrenby/Platform/Objects/Pipeable.hpp"

#include <gmock/gmock.h>
#include <string>
#include <string_view>

using namespace orrenby;

namespace {

/// A value that counts its copies.
struct Request {
    std::string method = "GET";
    std::string headers;
    int copies = 0;

    Request() = default;
    Request(const Request& other)
        : method(other.method)
        , headers(other.headers)
        , copies(other.copies + 1)
    {}
    Request(Request&&) = default;
    Request& operator=(Request&&) = default;
};

constexpr auto usingMethod = pipeable<Request>([](Request request, std::string_view method) {
    request.method = method;
    return request;
});
constexpr auto addingHeader = pipeable<Request>(
    [](Request request, std::string_view name, std::string_view value) {
        request.headers += std::string(name) + "=" + std::string(value) + ";";
        return request;
    });
constexpr auto headers = pipeable<Request>([](const Request& request) { return request.headers; });
constexpr auto firstWord = pipeable<std::string_view>(
    [](std::string_view text) { return text.substr(0, text.find(' ')); });

struct Repeating {
    std::string operator()(std::string_view text, int count = 2) const
    {
        std::string result;
        for (int round = 0; round < count; ++round)
            result += text;
        return result;
    }
};
constexpr Pipeable<Repeating, std::string_view> repeating{Repeating()};

} // namespace

TEST(Pipeable, IsCalledDirectlyOrThroughAPipe)
{
    //! [Chaining operations]
    const Request direct = addingHeader(usingMethod(Request(), "POST"), "Accept", "text/plain");
    const Request piped = Request() | usingMethod("POST") | addingHeader("Accept", "text/plain");
    //! [Chaining operations]

    EXPECT_EQ(direct.method, "POST");
    EXPECT_EQ(direct.headers, "Accept=text/plain;");
    EXPECT_EQ(piped.method, "POST");
    EXPECT_EQ(piped.headers, direct.headers);
}

TEST(Pipeable, NeedsNoParenthesesWithoutArguments)
{
    EXPECT_EQ("two words" | firstWord, "two");
    EXPECT_EQ(firstWord("two words"), "two");
    EXPECT_EQ(Request() | addingHeader("a", "1") | headers, "a=1;");
}

TEST(Pipeable, ChangesACopyOfAnLvalueSubject)
{
    const Request request;
    const auto changed = request | usingMethod("PUT");

    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(changed.method, "PUT");
}

TEST(Pipeable, CopiesASubjectOnceAtMostInAChain)
{
    const Request request;

    EXPECT_EQ((request | usingMethod("PUT") | addingHeader("a", "1") | addingHeader("b", "2")).copies, 1);
    EXPECT_EQ((Request() | usingMethod("PUT") | addingHeader("a", "1")).copies, 0);
}

TEST(Pipeable, FillsOptionalArguments)
{
    EXPECT_EQ(repeating("ab"), "abab");
    EXPECT_EQ(repeating("ab", 3), "ababab");
    EXPECT_EQ("ab" | repeating(3), "ababab");
    EXPECT_EQ("ab" | repeating(), "abab");
    EXPECT_EQ("ab" | repeating, "abab");
}

TEST(Pipeable, AppliesOneBoundOperationToManySubjects)
{
    const auto threeTimes = repeating(3);

    EXPECT_EQ("a" | threeTimes, "aaa");
    EXPECT_EQ(std::string("b") | threeTimes, "bbb");
}

TEST(Pipeable, KeepsItsOwnCopyOfABoundArgument)
{
    const auto joined = pipeable<std::string>(
        [](std::string text, const std::string& end) { return text + end; });
    auto bound = joined(std::string("1"));
    {
        std::string end = "2";
        bound = joined(end);
        end = "changed";
    }

    EXPECT_EQ(std::string("a") | bound, "a2");
}

template <class Subject, class Operation>
concept CanPipe = requires(Subject subject, Operation operation)
{
    subject | operation;
};

static_assert(CanPipe<Request, decltype(headers)>);
static_assert(!CanPipe<int, decltype(headers)>);
static_assert(!CanPipe<Request, decltype(usingMethod)>);
static_assert(!std::is_invocable_v<decltype(usingMethod), Request, int>);
static_assert(!std::is_invocable_v<decltype(usingMethod), int>);
