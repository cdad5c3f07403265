#include "Orrenby/Utilities/ServiceDecoder/KeyedServiceResponse.hpp"

#include "Orrenby/Platform/Coding/Decodable.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"
#include <gmock/gmock.h>
#include <string>

using namespace orrenby;
using ::testing::ElementsAre;

TEST(KeyedServiceResponse, MirrorsItsRegistrationsInTheUserInformation)
{
    ServiceDecoder services;
    EXPECT_EQ(services.jsonDecoder().userInfo(), Dictionary());

    services.register_<int>("a", [](int) {});
    const auto first = services.jsonDecoder().userInfo()["handlers"];
    services.register_<int>("b", [](int) {});
    const auto second = services.jsonDecoder().userInfo()["handlers"];

    EXPECT_THAT(services.jsonDecoder().userInfo().keys(), ElementsAre("handlers"));
    EXPECT_EQ(first.typeName(), "ServiceHandlers");
    EXPECT_NE(first, second);
}

TEST(KeyedServiceResponse, LeavesTheMirrorAloneWhenARegistrationFails)
{
    ServiceDecoder services;
    services.register_<int>("a", [](int) {});
    const auto before = services.jsonDecoder().userInfo();

    EXPECT_TRUE(services.tryRegister<int>("a", [](int) {}).isFailure());

    EXPECT_EQ(services.jsonDecoder().userInfo(), before);
}

TEST(KeyedServiceResponse, LetsTypesSeeTheUserInformationBesideTheRegistrations)
{
    struct Unit {
        std::string name;
        static Unit init(const Decoder& decoder)
        {
            return {*decoder.userInfo().cast<std::string>("unit")
                + decoder.singleValueContainer().decode<std::string>()};
        }
    };
    std::string name;
    ServiceDecoder services;
    services.jsonDecoder().userInfo().set("unit", "k");
    services.register_("a", [&](const Unit& unit) { name = unit.name; });

    services.decode(R"({"a": "m"})");

    EXPECT_EQ(name, "km");
}

TEST(KeyedServiceResponse, SurvivesWhatIsNoJSONBeforeAnyRegistration)
{
    EXPECT_THROW(ServiceDecoder().decode("{"), DecodingError);
}

TEST(KeyedServiceResponseDeathTest, EndsTheProcessForAResponseBeforeAnyRegistration)
{
    const ServiceDecoder services;

    EXPECT_DEATH(services.decode("{}"),
        "^Fatal error: ServiceDecoder handlers missing: file Utilities/ServiceDecoder\n");
    EXPECT_DEATH(services.decode("[]"), "ServiceDecoder handlers missing");
}

TEST(KeyedServiceResponseDeathTest, EndsTheProcessForAnotherKindOfRegistrations)
{
    ServiceDecoder services;
    services.register_<int>("a", [](int) {});
    services.jsonDecoder().userInfo().set("handlers", 7);

    EXPECT_DEATH(services.decode("{}"), "ServiceDecoder handlers missing");
}

TEST(KeyedServiceResponseDeathTest, EndsTheProcessForAResponseThatADecoderOfAnotherKindDecodes)
{
    EXPECT_DEATH(static_cast<void>(JSONDecoder().decode<KeyedServiceResponse>("{}")),
        "ServiceDecoder handlers missing");
}
