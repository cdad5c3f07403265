#include "Orrenby/Foundation/Requests/RequestMultipart.hpp"

#include "Orrenby/Foundation/Requests/RequestHeaders.hpp"
#include "Orrenby/Foundation/Requests/RequestJSON.hpp"
#include "Tests/Foundation/Requests/RequestParts.hpp"
#include <cstdlib>
#include <gtest/gtest.h>
#include <new>

using namespace orrenby;
using orrenby::tests::reportRequest;

namespace {

constexpr std::size_t megabyte = 1 << 20;

thread_local int largeBlocks = 0; ///< Of a megabyte or more, hence copies of a body.

} // namespace

// Never inlined: g++ would then see a `free` meet a `new` and warn.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    if (size >= megabyte)
        ++largeBlocks;
    if (auto* const block = std::malloc(size))
        return block;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* block) noexcept { std::free(block); }
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept { std::free(block); }

namespace {

/// How many blocks as large as a body the function allocates.
template <class F> int bodiesMadeBy(F function)
{
    const int before = largeBlocks;
    const auto result = function();
    return result.httpBody()->size() >= megabyte ? largeBlocks - before : -1;
}

URLRequest requestWithBody()
{
    auto request = reportRequest();
    request.setHTTPBody(Data(megabyte, std::byte('x')));
    return request;
}

TEST(RequestCopies, AreNoneInAChainOfARequestThatIsMoved)
{
    auto request = requestWithBody();
    const auto* bytes = request.httpBody()->data();

    EXPECT_EQ(bodiesMadeBy([&] {
        return std::move(request) | using_(HTTPMethod::post) | addingHeader("a", "b")
            | addingHeaders({{"c", "d"}}) | signed_("t") | settingAuthToken("u") | encoding({{"a", 1}})
            | encoding(1, JSONEncoder::DateEncodingStrategy::iso8601())
            | attaching(std::span<const std::byte>(), "image/jpeg");
    }),
        0);

    const auto moved = requestWithBody();
    EXPECT_EQ(bodiesMadeBy([&] { return std::move(moved) | using_(HTTPMethod::post); }), 1); // it is constant
    EXPECT_NE(bytes, nullptr);
}

TEST(RequestCopies, KeepTheBytesInPlace)
{
    auto request = requestWithBody();
    const auto* bytes = request.httpBody()->data();

    const auto built = std::move(request) | using_(HTTPMethod::post) | signed_("t");

    EXPECT_EQ(built.httpBody()->data(), bytes);
}

TEST(RequestCopies, AreOneInAChainOfARequestThatIsKept)
{
    const auto request = requestWithBody();

    EXPECT_EQ(bodiesMadeBy(
                  [&] { return request | using_(HTTPMethod::post) | addingHeader("a", "b") | signed_("t"); }),
        1);
}

TEST(RequestCopies, AreOneForAPartAndItsClosing)
{
    const auto photo = Data(megabyte);

    EXPECT_EQ(bodiesMadeBy([&] {
        return reportRequest()
            | addingBodyPart({.key = "photo", .value = photo, .boundary = "B", .contentType = "image/jpeg"})
            | closingBody("B") | using_(HTTPMethod::post);
    }),
        1);
}

TEST(RequestCopies, GrowInStepsForManyParts)
{
    auto request = requestWithBody();

    EXPECT_LE(bodiesMadeBy([&] {
        auto built = std::move(request);
        for (int part = 0; part < 1000; ++part)
            built = std::move(built) | addingBodyPart({.key = "k", .value = "v", .boundary = "B"});
        return built;
    }),
        2);
}

TEST(RequestCopies, AreOneForAnUpload)
{
    auto media = HTTPBodyFormDataPart{.data = Data(megabyte), .mimetype = "image/jpeg"};

    EXPECT_EQ(bodiesMadeBy([&] { return attaching(reportRequest(), media.data, media.mimetype); }), 1);
    EXPECT_EQ(bodiesMadeBy([&] { return attaching(reportRequest(), media, 3); }), 1);
    EXPECT_EQ(bodiesMadeBy([&] {
        return reportRequest() | attaching(std::span(std::as_const(media.data)), "image/jpeg");
    }),
        1);
    EXPECT_EQ(
        bodiesMadeBy([&] { return reportRequest() | attaching(media, 3); }), 2); // into the operation first
    EXPECT_EQ(bodiesMadeBy([&] { return reportRequest() | attaching(std::move(media), 3); }), 1);
}

TEST(RequestCopies, LeaveNoRoomUnusedAfterAnUpload)
{
    const auto request = attaching(reportRequest(), Data(megabyte), "image/jpeg");

    EXPECT_EQ(request.httpBody()->capacity(), request.httpBody()->size());
}

} // namespace
