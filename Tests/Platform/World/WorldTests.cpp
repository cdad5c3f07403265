#include "Orrenby/Platform/World/World.hpp"

#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/RandomSource.hpp"
#include "Orrenby/Platform/World/UUIDSource.hpp"
#include <gmock/gmock.h>
#include <thread>

using namespace orrenby;

namespace {

class NumberedRandomSource final : public RandomSource {
public:
    explicit NumberedRandomSource(std::uint32_t number)
        : m_number(number)
    {}
    std::uint32_t below(std::uint32_t bound) override { return bound < 2 ? 0 : m_number % bound; }
    std::uint64_t word() override { return m_number; }

private:
    std::uint32_t m_number;
};

World worldDrawing(std::uint32_t number)
{
    auto world = World::current();
    world.setRandom(std::make_shared<NumberedRandomSource>(number));
    return world;
}

} // namespace

TEST(World, BeginsWithThePlatformsSources)
{
    const auto& world = World::current();

    EXPECT_EQ(&world.clock(), Clock::system().get());
    EXPECT_EQ(&world.random(), RandomSource::system().get());
    EXPECT_EQ(&world.uuids(), UUIDSource::system().get());
    EXPECT_EQ(world.operatingSystemVersion(), (OperatingSystemVersion{13, 0, 0}));
    EXPECT_EQ(World().mainBundle().identifier(), std::nullopt);
}

TEST(World, IsReplacedWhileAnOverrideLives)
{
    const auto* original = &World::current();

    {
        //! [Replacing a source]
        auto world = World::current();
        world.setRandom(std::make_shared<NumberedRandomSource>(4));
        const auto override = World::Override(world);

        const auto drawn = World::current().random().below(6); // 4, each time
        //! [Replacing a source]

        EXPECT_EQ(drawn, 4u);
    }
    EXPECT_EQ(&World::current(), original);
}

TEST(World, OverridesNest)
{
    const auto outer = World::Override(worldDrawing(1));
    {
        const auto inner = World::Override(worldDrawing(2));
        EXPECT_EQ(World::current().random().word(), 2u);
    }
    EXPECT_EQ(World::current().random().word(), 1u);
}

TEST(World, IsReplacedForTheRestOfTheProcess)
{
    const auto& before = World::current();

    World::setCurrent(worldDrawing(1));
    World::setCurrent(worldDrawing(2));

    EXPECT_EQ(World::current().random().word(), 2u);
    EXPECT_EQ(&before.random(), RandomSource::system().get())
        << "a world that was replaced can still be read";
}

TEST(World, SharesOneMainBundleAmongItsCopies)
{
    const auto copy = World::current();

    World::current().mainBundle().setIdentifier("com.example.app");

    EXPECT_EQ(copy.mainBundle().identifier(), "com.example.app");
    EXPECT_EQ(World().mainBundle().identifier(), std::nullopt);
}

TEST(World, AnswersForTheOperatingSystem)
{
    auto world = World::current();
    world.setOperatingSystemVersion({12, 4, 0});
    const auto override = World::Override(world);

    EXPECT_EQ(World::current().operatingSystemVersion().description(), "12.4.0");
}

TEST(World, IsSeenByThreadsThatStartAfterTheOverride)
{
    const auto override = World::Override(worldDrawing(7));
    std::uint64_t seen = 0;

    std::thread([&] { seen = World::current().random().word(); }).join();

    EXPECT_EQ(seen, 7u);
}

TEST(WorldDeathTest, NeedsEverySource)
{
    auto world = World();

    EXPECT_DEATH(world.setClock(nullptr),
        "Fatal error: A world needs every source: file Platform/World/World, line 27");
    EXPECT_DEATH(world.setRandom(nullptr), "A world needs every source");
    EXPECT_DEATH(world.setUUIDs(nullptr), "A world needs every source");
}
