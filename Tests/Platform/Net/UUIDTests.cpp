#include "Orrenby/Platform/Net/UUID.hpp"

#include "Orrenby/Platform/World/UUIDSource.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <gmock/gmock.h>
#include <string>
#include <unordered_set>

using namespace orrenby;

namespace {

constexpr auto sample = UUID(
    {0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0, 0x0F, 0xED, 0xCB, 0xA9, 0x87, 0x65, 0x43, 0x21});

class OneUUID final : public UUIDSource {
public:
    UUID next() override { return sample; }
};

} // namespace

TEST(UUID, PrintsUpperCaseGroups)
{
    EXPECT_EQ(sample.uuidString(), "12345678-9ABC-DEF0-0FED-CBA987654321");
    EXPECT_EQ(sample.description(), sample.uuidString());
    EXPECT_EQ(UUID().uuidString(), "00000000-0000-0000-0000-000000000000");
}

TEST(UUID, ReadsDigitsOfEitherCase)
{
    //! [Naming things]
    const auto upper = UUID::make("12345678-9ABC-DEF0-0FED-CBA987654321");
    const auto lower = UUID::make("12345678-9abc-def0-0fed-cba987654321");
    //! [Naming things]

    EXPECT_EQ(upper, sample);
    EXPECT_EQ(lower, sample);
}

TEST(UUID, RefusesEveryOtherText)
{
    EXPECT_EQ(UUID::make(""), std::nullopt);
    EXPECT_EQ(UUID::make("12345678-9ABC-DEF0-0FED-CBA98765432"), std::nullopt);
    EXPECT_EQ(UUID::make("12345678-9ABC-DEF0-0FED-CBA9876543210"), std::nullopt);
    EXPECT_EQ(UUID::make("123456789-ABC-DEF0-0FED-CBA987654321"), std::nullopt);
    EXPECT_EQ(UUID::make("12345678-9ABC-DEF0-0FED-CBA98765432G"), std::nullopt);
    EXPECT_EQ(UUID::make("12345678_9ABC-DEF0-0FED-CBA987654321"), std::nullopt);
    EXPECT_EQ(UUID::make("{2345678-9ABC-DEF0-0FED-CBA98765432}"), std::nullopt);
    EXPECT_EQ(UUID::make(" 2345678-9ABC-DEF0-0FED-CBA987654321"), std::nullopt);
    EXPECT_EQ(UUID::make(std::string(36, '\0')), std::nullopt);
}

TEST(UUID, ReadsBackWhatItPrints)
{
    const auto uuid = UUID::random();

    EXPECT_EQ(UUID::make(uuid.uuidString()), uuid);
}

TEST(UUID, OrdersByBytes)
{
    auto bytes = sample.bytes();
    bytes[15] = 0xFF;

    EXPECT_LT(UUID(), sample);
    EXPECT_LT(sample, UUID(bytes));
    EXPECT_LT(sample.uuidString(), UUID(bytes).uuidString());
}

TEST(UUID, HashesEqualOnesAlike)
{
    const auto uuids = std::unordered_set<UUID>{sample, UUID(), UUID(sample.bytes())};

    EXPECT_EQ(uuids.size(), 2u);
}

TEST(UUID, ComesFromTheSourceOfTheCurrentWorld)
{
    auto world = World::current();
    world.setUUIDs(std::make_shared<OneUUID>());
    const auto override = World::Override(world);

    EXPECT_EQ(UUID::random(), sample);
}
