#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoderError.hpp"

#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"
#include <exception>
#include <gmock/gmock.h>
#include <string>

using namespace orrenby;

TEST(ServiceDecoderError, NamesTheKey)
{
    const auto error = ServiceDecoder::Error::duplicateKey("user");

    EXPECT_EQ(error.description(), "duplicateKey(user)");
    EXPECT_EQ(error.debugDescription(), "ServiceDecoder.Error(duplicateKey(user))");
    EXPECT_EQ(error.clone()->description(), error.description());
    EXPECT_NE(error, ServiceDecoder::Error::duplicateKey("settings"));
}

TEST(ServiceDecoderError, BridgesToItsTypeAndTheNumberOfItsKind)
{
    const auto error = ServiceDecoder::Error::duplicateKey("user");

    EXPECT_EQ(error.nsError(), NSError("ServiceDecoder.Error", 0));
    EXPECT_TRUE(error.nsError().userInfo().empty());
    EXPECT_EQ(error.customNSError(), std::nullopt);
}

TEST(ServiceDecoderError, IsCaughtAsAnException)
{
    ServiceDecoder services;
    services.register_<int>("a", [](int) {});
    std::string what;

    try {
        services.register_<int>("a", [](int) {});
    } catch (const std::exception& error) {
        what = error.what();
    }

    EXPECT_EQ(what, "duplicateKey(a)");
}
