#include "Orrenby/Foundation/Requests/Curl.hpp"

#include "Orrenby/Foundation/URLRequest+Builder.hpp"
#include "Tests/Foundation/Requests/RequestParts.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <cstdio>
#include <gmock/gmock.h>
#include <memory>
#include <random>

using namespace orrenby;
using orrenby::tests::bodyText;
using orrenby::tests::reportRequest;
using orrenby::tests::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

/// What a shell passed to a command of the name "curl".
struct Received {
    std::vector<std::string> arguments;
    std::string input;
};

std::string outputOf(const std::string& command)
{
    std::string output;
    const auto close = [](std::FILE* file) { ::pclose(file); };
    const std::unique_ptr<std::FILE, decltype(close)> pipe(::popen(command.c_str(), "r"), close);
    std::array<char, 4096> buffer;
    while (const auto count = std::fread(buffer.data(), 1, buffer.size(), pipe.get()))
        output.append(buffer.data(), count);
    return output;
}

/// Has the system's shell run the command with a curl that only tells what it was given.
Received run(const std::string& command)
{
    const TemporaryFolder folder;
    const auto script = folder.file("script",
        "curl() {\n"
        "    for argument in \"$@\"; do printf '%s\\0' \"$argument\"; done\n"
        "    printf 'input\\0'\n"
        "    case \"$*\" in *--data-binary\\ @-*) cat ;; esac\n"
        "}\n"
            + command + "\n");
    const auto output = outputOf("/bin/sh " + script);

    Received received;
    std::size_t begin = 0;
    for (auto end = output.find('\0'); end != std::string::npos; end = output.find('\0', begin)) {
        auto argument = output.substr(begin, end - begin);
        begin = end + 1;
        if (argument == "input") {
            received.input = output.substr(begin);
            break;
        }
        received.arguments.push_back(std::move(argument));
    }
    return received;
}

URLRequest requestWith(std::string_view body)
{
    auto request = reportRequest() | addingHeader("Content-Type", "text/plain");
    request.setHTTPBody(dataFromText(body));
    return request;
}

TEST(ToCurl, WritesACommandToTryByHand)
{
    //! [Trying a request by hand]
    const auto request = URLRequest("https://example.org/reports?day=1"_url) | using_(HTTPMethod::post)
        | signed_("t0k3n") | encoding({{"title", "It's windy"}});

    EXPECT_EQ(toCurl(request),
        R"(curl --request 'POST' --header 'Authorization: Token token="t0k3n"' )"
        R"(--header 'X-Auth-Token: t0k3n' --header 'Content-Type: application/json' )"
        R"(--data-raw '{"title":"It'\''s windy"}' --url 'https://example.org/reports?day=1')");
    //! [Trying a request by hand]
}

TEST(ToCurl, NamesOnlyTheAddressOfABareRequest)
{
    EXPECT_EQ(reportRequest() | toCurl, "curl --url 'https://example.org/reports'");
}

TEST(ToCurl, AsksForHeadersAloneInItsOwnWay)
{
    EXPECT_EQ(toCurl(reportRequest() | using_(HTTPMethod::head)),
        "curl --head --url 'https://example.org/reports'");
    EXPECT_THAT(toCurl(requestWith("x") | using_(HTTPMethod::head)), HasSubstr("--request 'HEAD'"));
}

TEST(ToCurl, WritesTheMethodOfABodyEvenWhenItIsGet)
{
    EXPECT_THAT(run(toCurl(requestWith("x"))).arguments,
        ElementsAre("--request", "GET", "--header", "Content-Type: text/plain", "--data-raw", "x", "--url",
            "https://example.org/reports"));
}

TEST(ToCurl, KeepsCurlFromAddingAType)
{
    auto request = reportRequest();
    request.setHTTPBody(Data());

    EXPECT_THAT(run(toCurl(request)).arguments,
        ElementsAre("--request", "GET", "--header", "Content-Type:", "--data-raw", "", "--url",
            "https://example.org/reports"));
}

TEST(ToCurl, SendsEmptyHeaderFields)
{
    EXPECT_THAT(
        run(toCurl(reportRequest() | addingHeader("Accept", "") | addingHeader("X-A", " \t"))).arguments,
        ElementsAre("--header", "Accept;", "--header", "X-A;", "--url", "https://example.org/reports"));
}

TEST(ToCurl, LeavesOutHeaderFieldsThatHaveNoName)
{
    EXPECT_EQ(toCurl(reportRequest()
                  | addingHeaders({{"", "a"}, {"@/etc/passwd", "b"}, {"a b", "c"}, {"a:", "d"}})),
        toCurl(reportRequest()));
}

TEST(ToCurl, KeepsCurlFromReadingAnAddressInItsOwnWay)
{
    EXPECT_EQ(toCurl(URLRequest("http://[::1]:80/a/../b"_url)),
        "curl --globoff --path-as-is --url 'http://[::1]:80/a/../b'");
    EXPECT_EQ(toCurl(URLRequest("-o"_url)), "curl --url '-o'");
}

TEST(ToCurl, PipesABodyThatIsNoPlainText)
{
    EXPECT_THAT(toCurl(requestWith(std::string_view("-\0%\\'\r\nä~", 10))),
        HasSubstr(R"(printf '\055\000\045\134\047\015\012\303\244~' | curl )"));
    EXPECT_THAT(toCurl(requestWith("two\nlines, Höhe")), HasSubstr("--data-raw 'two\nlines, Höhe'"));
    for (const auto* text : {"a\tb", "a\rb", "a\x1B[1m", "a\x7F", "\xFF", "\xED\xA0\x80"})
        EXPECT_THAT(toCurl(requestWith(text)), HasSubstr("--data-binary @-")) << text;
}

TEST(ToCurl, PipesAMultipartBodyByteByByte)
{
    const auto media = HTTPBodyFormDataPart{.data = dataFromText("\xFF\xD8\xFF%d"), .mimetype = "image/jpeg"};
    const auto request = reportRequest() | using_(HTTPMethod::post) | attaching(media, 1);

    const auto received = run(toCurl(request));

    EXPECT_EQ(received.input, bodyText(request));
    EXPECT_THAT(received.arguments,
        ElementsAre("--request", "POST", "--header", "Content-Type: " + *request.httpHeader("Content-Type"),
            "--data-binary", "@-", "--url", "https://example.org/reports"));
}

TEST(ToCurl, RunsNothingOfWhatItQuotes)
{
    const std::string text = "'; echo x; '$(echo y)`echo z`\"\\\n#!$HOME*?~ && | > a";
    auto request = requestWith(text) | addingHeader("X-A", text);
    request.setHTTPMethod(text);

    EXPECT_THAT(run(toCurl(request)).arguments,
        ElementsAre("--request", text, "--header", "Content-Type: text/plain", "--header", "X-A: " + text,
            "--data-raw", text, "--url", "https://example.org/reports"));
}

TEST(ToCurl, PassesAnyBytesThroughTheShell)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        std::string body;
        std::string value = "v";
        for (auto count = random() % 300; count > 0; --count)
            body += static_cast<char>(random());
        for (auto count = random() % 50; count > 0; --count)
            value += static_cast<char>(1 + random() % 255); // a header field without NUL

        const auto received = run(toCurl(requestWith(body) | addingHeader("X-A", value)));

        ASSERT_EQ(received.arguments.size(), 10U) << seed;
        EXPECT_EQ(received.arguments[5], "X-A: " + value) << seed;
        if (received.arguments[6] == "--data-raw")
            EXPECT_EQ(received.arguments[7], body) << seed;
        else
            EXPECT_EQ(received.input, body) << seed;
    }
}

TEST(ToCurl, PassesEveryByteThroughTheShell)
{
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);

    EXPECT_EQ(run(toCurl(requestWith(all))).input, all);
}

TEST(ToCurl, LeavesOutNULWhereNoShellTakesIt)
{
    EXPECT_THAT(
        toCurl(reportRequest() | addingHeader("X-A", std::string("a\0b", 3))), HasSubstr("'X-A: ab'"));
}

} // namespace
