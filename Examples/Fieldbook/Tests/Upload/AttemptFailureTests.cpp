#include "Examples/Fieldbook/Upload/AttemptFailure.hpp"

#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using Kind = TransportFailure::Kind;

TEST(AttemptFailure, HasTheServicesOwnWordsAndTheTimeThatItWants)
{
    EXPECT_EQ(failureOf(Answer{429, R"({"problem": "Too busy."})", {{"Retry-After", "7"}}}),
        (AttemptFailure{"status 429, \"Too busy.\"", true, 7}));
    EXPECT_EQ(failureOf(Answer{500, "<html>"}), (AttemptFailure{"status 500", true}));
}

TEST(AttemptFailure, IsForGoodWhereTheServiceRefuses)
{
    EXPECT_EQ(failureOf(Answer{404, R"({"problem": "There is nothing here."})"}),
        (AttemptFailure{"status 404, \"There is nothing here.\""}));
}

TEST(AttemptFailure, PassesWhereTheWayIsBlocked)
{
    EXPECT_EQ(failureOf(TransportFailure{Kind::noConnection, "nobody listens"}),
        (AttemptFailure{"no connection: nobody listens", true}));
    EXPECT_EQ(failureOf(TransportFailure{Kind::timedOut, "-"}), (AttemptFailure{"no answer in time", true}));
    EXPECT_EQ(
        failureOf(TransportFailure{Kind::brokenOff, "closed"}), (AttemptFailure{"broken off: closed", true}));
}

TEST(AttemptFailure, IsForGoodWhereTheRequestIsWrong)
{
    EXPECT_EQ(
        failureOf(TransportFailure{Kind::malformed, "no such scheme"}), (AttemptFailure{"no such scheme"}));
    EXPECT_EQ(failureOf(TransportFailure{Kind::bodyUnreadable, "a.png changed"}),
        (AttemptFailure{"a.png changed"}));
}

TEST(AttemptFailure, IsNoneInTheTwoHundreds)
{
    for (const auto status : {200, 201, 299})
        EXPECT_TRUE(isDone(status)) << status;
    for (const auto status : {0, 199, 300, 404, 500})
        EXPECT_FALSE(isDone(status)) << status;
}

} // namespace
