#include "Orrenby/Utilities/ObjectIdentifier.hpp"

#include <cstdint>
#include <gmock/gmock.h>
#include <memory>

using namespace orrenby;

namespace {

struct Left {
    virtual ~Left() = default;
};
struct Right {
    virtual ~Right() = default;
};
struct Both : Left, Right {};

} // namespace

TEST(ObjectIdentifier, IsThatOfNothingByDefault)
{
    EXPECT_EQ(ObjectIdentifier(), ObjectIdentifier(Ref<int>()));
    EXPECT_EQ(ObjectIdentifier().address(), nullptr);
}

TEST(ObjectIdentifier, IsTheSameThroughEveryInterface)
{
    const auto object = std::make_shared<Both>();

    EXPECT_EQ(ObjectIdentifier(Ref<Left>(object)), ObjectIdentifier(Ref<Right>(object)));
    EXPECT_EQ(ObjectIdentifier(object).address(), object.get());
}

TEST(ObjectIdentifier, TellsEqualObjectsApart)
{
    const int values[] = {1, 1};

    EXPECT_NE(ObjectIdentifier(&values[0]), ObjectIdentifier(&values[1]));
}

TEST(ObjectIdentifier, HashesAlikeWhenEqual)
{
    const int value = 1;

    EXPECT_EQ(std::hash<ObjectIdentifier>{}(ObjectIdentifier(&value)),
        std::hash<ObjectIdentifier>{}(ObjectIdentifier(&value)));
}

TEST(ObjectIdentifier, PrintsSixteenDigits)
{
    const auto* const somewhere = reinterpret_cast<const char*>(std::uintptr_t{0x6000'0f1a});

    EXPECT_EQ(ObjectIdentifier(somewhere).debugDescription(), "ObjectIdentifier(0x0000000060000f1a)");
    EXPECT_EQ(ObjectIdentifier().debugDescription(), "ObjectIdentifier(0x0000000000000000)");
}
