#include "Orrenby/Utilities/Log/LineText.hpp"

#include <cerrno>
#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <unistd.h>

using namespace orrenby;

namespace {

std::string visible(std::string_view text)
{
    std::string line;
    detail::appendVisible(line, text);
    return line;
}

std::string json(std::string_view text)
{
    std::string line;
    detail::appendJSONText(line, text);
    return line;
}

} // namespace

TEST(LogLineText, LeavesOrdinaryTextAlone)
{
    EXPECT_EQ(visible("Grüße, 世界 \U0001F680 \"quoted\" \\"), "Grüße, 世界 \U0001F680 \"quoted\" \\");
    EXPECT_EQ(visible(""), "");
}

TEST(LogLineText, EscapesWhatWouldEndTheLineOrSteerTheTerminal)
{
    using namespace std::string_view_literals;

    EXPECT_EQ(visible("a\nb\r\tc"), "a\\nb\\r\\tc");
    EXPECT_EQ(visible("\x1B[31m\x7F\0"sv), "\\u{001B}[31m\\u{007F}\\u{0000}");
    EXPECT_EQ(visible("\u0085\u009B\u2028\u2029"), "\\u{0085}\\u{009B}\\u{2028}\\u{2029}");
    EXPECT_EQ(visible("\u202E\u2066"), "\\u{202E}\\u{2066}");
}

TEST(LogLineText, ReplacesWhatIsNoUTF8)
{
    EXPECT_EQ(visible("a\xFFz"), "a\uFFFDz");
    EXPECT_EQ(visible("\x80"), "\uFFFD");
    EXPECT_EQ(visible("\xC3"), "\uFFFD");       // cut off
    EXPECT_EQ(visible("\xE4\xB8z"), "\uFFFDz"); // cut off by another character
    EXPECT_EQ(visible("\xF0\x9F\x9A"), "\uFFFD");
    EXPECT_EQ(visible("\xC0\xAF"), "\uFFFD\uFFFD"); // overlong
    EXPECT_EQ(visible("\xE0\x80\xAF"), "\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(visible("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");           // surrogate
    EXPECT_EQ(visible("\xF4\x90\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD"); // above U+10FFFF
    EXPECT_EQ(
        visible("\xF4\x8F\xBF\xBF\xED\x9F\xBF"), "\xF4\x8F\xBF\xBF\xED\x9F\xBF"); // the last ones that are
}

TEST(LogLineText, WritesJSONStrings)
{
    using namespace std::string_view_literals;

    EXPECT_EQ(json(""), "\"\"");
    EXPECT_EQ(json("a\"b\\c/d"), "\"a\\\"b\\\\c/d\"");
    EXPECT_EQ(json("\n\r\t\0\x1F\x7F"sv), "\"\\n\\r\\t\\u0000\\u001F\\u007F\"");
    EXPECT_EQ(json("\u2028\u0085"), "\"\\u2028\\u0085\"");
    EXPECT_EQ(json("ü\xFF"), "\"ü\uFFFD\"");
}

TEST(LogLineText, WritesTimesInUTCRoundedToMilliseconds)
{
    EXPECT_EQ(detail::timestamp(Date(0)), "1970-01-01T00:00:00.000Z");
    EXPECT_EQ(detail::timestamp(Date(1763719200.1234)), "2025-11-21T10:00:00.123Z");
    EXPECT_EQ(detail::timestamp(Date(59.9999)), "1970-01-01T00:01:00.000Z");
    EXPECT_EQ(detail::timestamp(Date(-0.25)), "1969-12-31T23:59:59.750Z");
    EXPECT_EQ(detail::timeOfDay(Date(1763719200.1234)), "10:00:00.123");
}

TEST(LogLineText, WritesTheEndsOfTime)
{
    EXPECT_EQ(detail::timestamp(Date::distantFuture()), "inf");
    EXPECT_EQ(detail::timeOfDay(Date::distantPast()), "-inf");
    EXPECT_EQ(detail::timestamp(Date(std::numeric_limits<double>::quiet_NaN())), "nan");
}

TEST(LogLineText, WritesToADescriptorAndLeavesTheErrorNumberAlone)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    errno = EDOM;

    detail::writeLine(ends[1], "line\n");
    detail::writeLine(-1, "nowhere\n");

    EXPECT_EQ(errno, EDOM);
    char buffer[16] = {};
    EXPECT_EQ(read(ends[0], buffer, sizeof buffer), 5);
    EXPECT_STREQ(buffer, "line\n");
    close(ends[0]);
    close(ends[1]);
}
