#include "Orrenby/Platform/World/Bundle.hpp"

#include "Orrenby/Platform/World/World.hpp"
#include <gmock/gmock.h>
#include <thread>

using namespace orrenby;

TEST(Bundle, HasNoIdentifierUntilItIsSet) { EXPECT_EQ(Bundle::main().identifier(), std::nullopt); }

TEST(Bundle, KeepsTheIdentifierOfTheApplication)
{
    //! [Naming the application]
    Bundle::main().setIdentifier("com.example.app");
    //! [Naming the application]

    EXPECT_EQ(Bundle::main().identifier(), "com.example.app");
}

TEST(Bundle, LosesItsIdentifierAgain)
{
    auto bundle = Bundle("com.example.texts");

    bundle.setIdentifier(std::nullopt);

    EXPECT_EQ(bundle.identifier(), std::nullopt);
}

TEST(Bundle, TellsAnEmptyIdentifierFromNone)
{
    auto bundle = Bundle();

    bundle.setIdentifier("");

    EXPECT_EQ(bundle.identifier(), "");
}

TEST(Bundle, IsOneWithItsCopies)
{
    auto bundle = Bundle("com.example.texts");
    const auto copy = bundle;

    bundle.setIdentifier("com.example.other");

    EXPECT_EQ(copy, bundle);
    EXPECT_EQ(copy.identifier(), "com.example.other");
    EXPECT_FALSE(Bundle("com.example.other") == bundle);
}

TEST(Bundle, IsTheMainOneOfTheCurrentWorld)
{
    Bundle::main().setIdentifier("com.example.app");
    auto world = World::current();
    world.setMainBundle(Bundle("com.example.test"));

    {
        const auto override = World::Override(world);
        EXPECT_EQ(Bundle::main().identifier(), "com.example.test");
    }
    EXPECT_EQ(Bundle::main().identifier(), "com.example.app");
}

TEST(Bundle, IsReadWhileAnotherThreadSetsIt)
{
    auto bundle = Bundle("a");
    auto thread = std::thread([&] {
        for (int round = 0; round < 1'000; ++round)
            bundle.setIdentifier(std::string(static_cast<std::size_t>(round % 40), 'a'));
    });

    for (int round = 0; round < 1'000; ++round)
        ASSERT_EQ(bundle.identifier()->find_first_not_of('a'), std::string::npos);
    thread.join();
}
