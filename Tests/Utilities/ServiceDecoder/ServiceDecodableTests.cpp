#include "Orrenby/Utilities/ServiceDecoder/ServiceDecodable.hpp"

#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"
#include "ServiceParts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using orrenby::testing::Settings;
using orrenby::testing::User;

static_assert(ServiceDecodable<Settings>);
static_assert(!ServiceDecodable<User> && !ServiceDecodable<int>);

TEST(ServiceDecodable, TakesTheKeyFromTheType)
{
    //! [Registering a type with a key of its own]
    struct Weather {
        double degrees = 0;

        static ServiceKey serviceKey() { return "weather"; }
    };
    double degrees = 0;

    ServiceDecoder services;
    services.register_([&](const Weather& weather) { degrees = weather.degrees; });

    services.decode(R"({"weather": {"degrees": 21.5}})");
    //! [Registering a type with a key of its own]

    EXPECT_EQ(degrees, 21.5);
    EXPECT_THROW(services.register_<Weather>([](Weather) {}), ServiceDecoder::Error);
}
