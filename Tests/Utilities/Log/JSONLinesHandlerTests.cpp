#include "Orrenby/Utilities/Log/JSONLinesHandler.hpp"

#include "LogFixture.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Pipe.hpp"
#include <gmock/gmock.h>
#include <limits>

using namespace orrenby;

namespace {

std::string propertiesOf(Dictionary properties)
{
    const auto event = Log::Event("W", "F", 1, "f", "[BG]", "m", std::move(properties));
    const auto line = Log::JSONLinesHandler::line(Log::Level::warning, event, Date(0));
    const std::string_view key = "\"properties\":";
    const auto start = line.find(key);
    return start == std::string::npos ? ""
                                      : line.substr(start + key.size(), line.size() - start - key.size() - 2);
}

Any nested(int depth) { return depth == 0 ? Any(1) : Any(Array{nested(depth - 1)}); }

struct Opaque {
    std::string description() const { return "opaque \"thing\""; }
};

} // namespace

using LogJSONLinesHandler = LogFixture;

TEST_F(LogJSONLinesHandler, WritesALineForEachEntryFromItsLevel)
{
    auto pipe = Pipe();
    int evaluations = 0;
    Log::onEvent(Log::JSONLinesHandler({.descriptor = pipe.descriptor(), .level = Log::Level::warning}));

    Log::info([&] { return ++evaluations; });
    Log::warning("first");
    Log::error("second");

    const auto text = pipe.read();
    EXPECT_EQ(evaluations, 0);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2);
    EXPECT_THAT(text, testing::HasSubstr("\"message\":\"first\"}\n{\"time\":\""));
    EXPECT_THAT(text, testing::EndsWith("\"message\":\"second\"}\n"));
}

TEST(LogJSONLine, HoldsAllFields)
{
    //! [Writing a line]
    const auto event = Log::Event("W", "Feed", 120, "load", "[MAIN]", "request failed", {{"attempt", 3}});

    EXPECT_EQ(Log::JSONLinesHandler::line(Log::Level::warning, event, Date(1763719200.125)),
        "{\"time\":\"2025-11-21T10:00:00.125Z\",\"level\":\"Warning\",\"queue\":\"Main\",\"file\":\"Feed\","
        "\"line\":120,\"function\":\"load\",\"message\":\"request failed\",\"properties\":{\"attempt\":3}}\n");
    //! [Writing a line]
}

TEST(LogJSONLine, LeavesOutEmptyPropertiesAndNamesTheQueueInEveryForm)
{
    const auto line = [](std::string queue) {
        return Log::JSONLinesHandler::line(
            Log::Level::debug, Log::Event("D", "F", 1, "f", std::move(queue), "m"), Date(0));
    };
    const auto expected = [](std::string_view queue) {
        return "{\"time\":\"1970-01-01T00:00:00.000Z\",\"level\":\"Debug\",\"queue\":\"" + std::string(queue)
            + "\",\"file\":\"F\",\"line\":1,\"function\":\"f\",\"message\":\"m\"}\n";
    };

    EXPECT_EQ(line("[BG]"), expected("Background"));
    EXPECT_EQ(line("\U0001F6A6"), expected("Background"));
    EXPECT_EQ(line("\U0001F680"), expected("Main"));
    EXPECT_EQ(line("own"), expected("own"));
}

TEST(LogJSONLine, WritesEveryKindOfProperty)
{
    EXPECT_EQ(propertiesOf({{"a", Any()}, {"b", true}, {"c", -5}, {"d", 1.5}, {"e", 0.25F}}),
        "{\"a\":null,\"b\":true,\"c\":-5,\"d\":1.5,\"e\":0.25}");
    EXPECT_EQ(propertiesOf({{"a", "t\"\n"}, {"b", Data(3)}, {"c", Date(0)}, {"d", Opaque()}}),
        "{\"a\":\"t\\\"\\n\",\"b\":\"3 bytes\",\"c\":\"1970-01-01T00:00:00.000Z\",\"d\":\"opaque \\\"thing\\\"\"}");
    EXPECT_EQ(propertiesOf({{"a", Array{}}, {"b", Array{1, "two"}}, {"c", NSSet{3}}}),
        "{\"a\":[],\"b\":[1,\"two\"],\"c\":[3]}");
    EXPECT_EQ(propertiesOf({{"a", Dictionary{}}, {"b", Dictionary{{"k", Dictionary{{"l", 1}}}, {"m", 2}}}}),
        "{\"a\":{},\"b\":{\"k\":{\"l\":1},\"m\":2}}");
}

TEST(LogJSONLine, WritesNumbersThatJSONDoesNotKnowAsTexts)
{
    EXPECT_EQ(propertiesOf({{"a", std::numeric_limits<double>::infinity()},
                  {"b", std::numeric_limits<float>::quiet_NaN()}, {"c", 1e300}}),
        "{\"a\":\"inf\",\"b\":\"nan\",\"c\":1e+300}");
}

TEST(LogJSONLine, StopsNestingAt64)
{
    const auto brackets = [](std::size_t count) { return std::string(count, '['); };

    EXPECT_EQ(propertiesOf({{"k", nested(63)}}), "{\"k\":" + brackets(63) + "1" + std::string(63, ']') + "}");
    EXPECT_EQ(propertiesOf({{"k", nested(64)}}),
        "{\"k\":" + brackets(63) + "\"\u2026\"" + std::string(63, ']') + "}");
    EXPECT_EQ(propertiesOf({{"k", nested(500)}}),
        "{\"k\":" + brackets(63) + "\"\u2026\"" + std::string(63, ']') + "}");
}

TEST(LogJSONLine, IsValidWhateverTheTextsHold)
{
    const auto event = Log::Event(
        "W", "F\xFF", 1, "f\n", "[BG]", "a\x1B\"\\\u2028", {{"k\xC3", "v\xED\xA0\x80"}});

    EXPECT_EQ(Log::JSONLinesHandler::line(Log::Level::warning, event, Date(0)),
        "{\"time\":\"1970-01-01T00:00:00.000Z\",\"level\":\"Warning\",\"queue\":\"Background\",\"file\":\"F\uFFFD\","
        "\"line\":1,\"function\":\"f\\n\",\"message\":\"a\\u001B\\\"\\\\\\u2028\","
        "\"properties\":{\"k\uFFFD\":\"v\uFFFD\uFFFD\uFFFD\"}}\n");
}
