#include "Orrenby/Foundation/Outbox/OutboxError.hpp"

#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Net/URLRequest.hpp"
#include "Tests/Foundation/Outbox/OutboxParts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;

TEST(OutboxError, SaysWhyARequestWasRefused)
{
    //! [Reading why a request was refused]
    Outbox outbox(outboxContext());
    try {
        outbox.add(URLRequest("/notes"_url));
        FAIL();
    } catch (const OutboxError& error) {
        EXPECT_EQ(error.kind(), OutboxError::Kind::NoAddress);
        EXPECT_EQ(error.description(), R"(NoAddress: "/notes" leads nowhere by itself)");
    }
    //! [Reading why a request was refused]
}

TEST(OutboxError, IsEqualByKindAndWords)
{
    const OutboxError error(OutboxError::Kind::Full, "full");

    EXPECT_EQ(error, OutboxError(OutboxError::Kind::Full, "full"));
    EXPECT_NE(error, OutboxError(OutboxError::Kind::Full, "fuller"));
    EXPECT_NE(error, OutboxError(OutboxError::Kind::NoNumber, "full"));
}

TEST(OutboxError, IsAPlatformErrorObject)
{
    const auto error = OutboxError(OutboxError::Kind::Full, "10 requests are in the outbox").nsError();

    EXPECT_EQ(error.domain(), "OutboxError");
    EXPECT_EQ(error.code(), 5);
    EXPECT_EQ(error.localizedDescription(), "Full: 10 requests are in the outbox");
}

TEST(OutboxError, NamesEachKind)
{
    using Kind = OutboxError::Kind;
    std::string names;
    for (const auto kind :
        {Kind::NoAddress, Kind::SeveralBodies, Kind::NoNumber, Kind::BodyTooLarge, Kind::Full})
        names += OutboxError(kind, "").description();

    EXPECT_EQ(names, "NoAddress: SeveralBodies: NoNumber: BodyTooLarge: Full: ");
}
