#include "Orrenby/Platform/Objects/Any.hpp"

#include "Orrenby/Platform/Objects/Object.hpp"
#include "Tests/Platform/Objects/AnyParts.hpp"
#include <gtest/gtest.h>
#include <memory>
#include <utility>

using namespace orrenby;

namespace {

struct Point3D : app::Point {
    int z = 0;
};
class Left : public app::Shape {};
class Right : public app::Shape {};
class Twice : public Left, public Right {};
class Hiding : private app::Shape {};
class Machine : public Lifetime, public app::Coloured {
    void release() noexcept override {}
};

} // namespace

TEST(Any, CastsAReferenceToEveryClassThatTheObjectHas)
{
    const Ref<app::Shape> shape = std::make_shared<app::Circle>();
    const Any value = shape;

    EXPECT_EQ(value.object<app::Shape>(), shape);
    ASSERT_NE(value.object<app::Coloured>(), nullptr);
    EXPECT_EQ(value.object<app::Coloured>()->colour, app::Colour::Green);
    EXPECT_EQ(value.object<app::Circle>()->description(), "a circle");
    EXPECT_EQ(value.object<Machine>(), nullptr);
    EXPECT_EQ(value.object<app::Point>(), nullptr);
    EXPECT_EQ(Any(1).object<app::Shape>(), nullptr);
}

TEST(Any, SeesAMadeObjectAsItsClassesAndInterfaces)
{
    const Any value = Ref<Lifetime>(make<Machine>());

    EXPECT_NE(value.object<Machine>(), nullptr);
    EXPECT_NE(value.object<app::Coloured>(), nullptr);
    EXPECT_EQ(value.typeName(), "Machine");
}

TEST(Any, KeepsConstantObjectsConstant)
{
    const Any value = Ref<const app::Circle>(std::make_shared<app::Circle>());

    EXPECT_EQ(value.object<app::Circle>(), nullptr);
    EXPECT_NE(value.object<const app::Circle>(), nullptr);
    EXPECT_NE(value.object<const app::Shape>(), nullptr);
    EXPECT_NE(Any(std::make_shared<app::Circle>()).object<const app::Circle>(), nullptr);
}

TEST(Any, KeepsAnObjectAliveAndLetsItGo)
{
    auto circle = std::make_shared<app::Circle>();
    const WeakRef<app::Circle> watch = circle;
    Any value = std::move(circle);
    Any copy = value;

    value = nullptr;
    EXPECT_FALSE(watch.expired());
    copy = 1;
    EXPECT_TRUE(watch.expired());
}

TEST(Any, SeesADiamondsBasesOnlyWhereTheyAreUnambiguous)
{
    const Any value = std::make_shared<Twice>();

    EXPECT_EQ(value.object<app::Shape>(), nullptr);
    EXPECT_NE(value.object<Left>(), nullptr);
    EXPECT_EQ(Any(std::make_shared<Hiding>()).object<app::Shape>(), nullptr);
}

TEST(Any, TakesObjectsOfClassesWithoutVirtualFunctions)
{
    const auto point = std::make_shared<app::Point>();
    const Any value = point;

    EXPECT_EQ(value.object<app::Point>(), point);
    EXPECT_EQ(Any(std::make_shared<Point3D>()).object<app::Point>()->x, 0);
    EXPECT_EQ(value.object<app::Shape>(), nullptr);
}

TEST(Any, ComparesReferencesByObject)
{
    const auto circle = std::make_shared<app::Circle>();
    const Ref<app::Coloured> seenAsColoured = circle;

    EXPECT_EQ(Any(circle), Any(seenAsColoured));
    EXPECT_EQ(Any(circle).hash(), Any(seenAsColoured).hash());
    EXPECT_NE(Any(circle), Any(std::make_shared<app::Circle>()));
    EXPECT_EQ(Any(circle).kind(), Any::Kind::Object);
}
