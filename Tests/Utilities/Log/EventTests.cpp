#include "Orrenby/Utilities/Log/Event.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <gmock/gmock.h>

using namespace orrenby;

namespace {

Log::Event sample(Dictionary properties)
{
    return {"W", "Feed", 120, "load()", "[MAIN]", "request failed", std::move(properties)};
}

} // namespace

TEST(LogEvent, PrintsItsFieldsInOneLine)
{
    //! [Printing an event]
    const auto event = Log::Event("W", "Feed", 120, "load()", "[MAIN]", "request failed");

    EXPECT_EQ(event.description(), "W Feed:120 load() [MAIN] request failed");
    //! [Printing an event]
}

TEST(LogEvent, PrintsPropertiesLastAndSorted)
{
    EXPECT_EQ(sample({{"b", "two"}, {"a", 1}}).description(),
        "W Feed:120 load() [MAIN] request failed [\"a\": 1, \"b\": \"two\"]");
}

TEST(LogEvent, PrintsNoBlankForEmptyProperties)
{
    EXPECT_EQ(sample({}).description(), "W Feed:120 load() [MAIN] request failed");
    EXPECT_EQ(debugDescribe(sample({})), "W Feed:120 load() [MAIN] request failed");
}

TEST(LogEvent, KeepsItsFields)
{
    const auto event = sample({{"a", 1}});

    EXPECT_EQ(event.level(), "W");
    EXPECT_EQ(event.filename(), "Feed");
    EXPECT_EQ(event.line(), 120);
    EXPECT_EQ(event.function(), "load()");
    EXPECT_EQ(event.queue(), "[MAIN]");
    EXPECT_EQ(event.message(), "request failed");
    EXPECT_EQ(event.properties(), (Dictionary{{"a", 1}}));
}

TEST(LogEvent, IsEqualByAllFields)
{
    EXPECT_EQ(sample({{"a", 1}}), sample({{"a", 1}}));
    EXPECT_NE(sample({{"a", 1}}), sample({{"a", 2}}));
    EXPECT_NE(sample({}), Log::Event("E", "Feed", 120, "load()", "[MAIN]", "request failed"));
}
