#include "Orrenby/Utilities/Discover/Builder.hpp"

#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Testing/TestAccess.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::TestAccess;
using ::testing::ElementsAre;

namespace {

struct Engine {
    int cylinders;
};

using Cars = Builder<Ref<Engine>, std::string, std::string, int>;

Ref<Engine> makeEngine(int cylinders) { return std::make_shared<Engine>(Engine{cylinders}); }

/// Builds texts such as "red car with 4 cylinders".
class CarBuilder : public Cars {
public:
    using Builder::Builder;
    std::string buildWithComponent(const Ref<Engine>& engine, std::string color) const override
    {
        seen = engine;
        seenInBuilder = TestAccess::lastComponent(*this) == engine;
        return color + " car with " + std::to_string(engine->cylinders) + " cylinders";
    }

    mutable WeakRef<Engine> seen;
    mutable bool seenInBuilder = false;
};

/// Hands its component out as the product.
class EngineBuilder : public Builder<Ref<Engine>, Ref<Engine>, Void, int> {
public:
    using Builder::Builder;
    Ref<Engine> buildWithComponent(const Ref<Engine>& engine, Void) const override { return engine; }
};

TEST(Builder, MakesAComponentForEachProduct)
{
    //! [Writing a builder]
    struct Session {
        std::string user;
    };
    class Greeting : public Builder<Ref<Session>, std::string, int, std::string> {
    public:
        using Builder::Builder;
        std::string buildWithComponent(const Ref<Session>& session, int unread) const override
        {
            return session->user + ", " + std::to_string(unread) + " new";
        }
    };

    const auto builder = Greeting(
        [](const std::string& user) { return std::make_shared<Session>(Session{user}); });
    const auto text = builder.build(3, "Ada"); // Ada, 3 new
    //! [Writing a builder]

    EXPECT_EQ(text, "Ada, 3 new");
}

TEST(Builder, CallsItsFactoryOncePerProductWithTheArgument)
{
    auto made = std::vector<int>();
    const auto builder = CarBuilder([&](int cylinders) {
        made.push_back(cylinders);
        return makeEngine(cylinders);
    });

    EXPECT_EQ(builder.build("red", 4), "red car with 4 cylinders");
    EXPECT_EQ(builder.build("blue", 8), "blue car with 8 cylinders");
    EXPECT_THAT(made, ElementsAre(4, 8));
}

TEST(Builder, GivesItsFactoryAway)
{
    const auto builder = CarBuilder(makeEngine);
    const auto other = EngineBuilder(builder.componentFactory());

    EXPECT_EQ(builder.componentFactory()(6)->cylinders, 6);
    EXPECT_EQ(other.build({}, 12)->cylinders, 12);
}

TEST(Builder, HasNoLastComponentAtFirst)
{
    const auto builder = EngineBuilder(makeEngine);

    EXPECT_EQ(TestAccess::lastComponent(builder), nullptr);
}

TEST(Builder, RemembersItsLastComponentWhileSomethingElseKeepsIt)
{
    const auto builder = EngineBuilder(makeEngine);

    auto engine = builder.build({}, 4);
    EXPECT_EQ(TestAccess::lastComponent(builder), engine);
    EXPECT_EQ(engine.use_count(), 1);

    engine.reset();
    EXPECT_EQ(TestAccess::lastComponent(builder), nullptr);
}

TEST(Builder, RemembersTheLastComponentOnly)
{
    const auto builder = EngineBuilder(makeEngine);

    const auto first = builder.build({}, 4);
    auto second = builder.build({}, 4);
    EXPECT_EQ(TestAccess::lastComponent(builder), second);

    second.reset();
    EXPECT_EQ(TestAccess::lastComponent(builder), nullptr);
}

TEST(Builder, RemembersTheComponentBeforeTheProductIsBuilt)
{
    const auto builder = CarBuilder(makeEngine);

    (void)builder.build("red", 4);

    EXPECT_TRUE(builder.seenInBuilder);
}

TEST(Builder, LetsGoOfAComponentThatTheProductDoesNotKeep)
{
    const auto builder = CarBuilder(makeEngine);

    (void)builder.build("red", 4);

    EXPECT_TRUE(builder.seen.expired());
    EXPECT_EQ(TestAccess::lastComponent(builder), nullptr);
}

TEST(Builder, RemembersAConstantComponent)
{
    class Constant : public Builder<Ref<const Engine>, Ref<const Engine>, Void, Void> {
    public:
        using Builder::Builder;
        Ref<const Engine> buildWithComponent(const Ref<const Engine>& engine, Void) const override
        {
            return engine;
        }
    };
    const auto builder = Constant([](Void) { return makeEngine(2); });

    const auto engine = builder.build({}, {});

    EXPECT_EQ(TestAccess::lastComponent(builder), engine);
}

TEST(Builder, ForgetsWhenTheFactoryGivesAnEmptyReference)
{
    const auto builder = EngineBuilder(
        [](int cylinders) { return cylinders > 0 ? makeEngine(cylinders) : nullptr; });
    const auto engine = builder.build({}, 4);

    EXPECT_EQ(builder.build({}, 0), nullptr);
    EXPECT_EQ(TestAccess::lastComponent(builder), nullptr);
}

TEST(Builder, KeepsNoTraceOfAComponentThatIsAValue)
{
    class Doubling : public Builder<int, int, int, int> {
    public:
        using Builder::Builder;
        int buildWithComponent(const int& component, int dependency) const override
        {
            return component * 10 + dependency;
        }
    };
    const auto builder = Doubling([](int argument) { return argument + 1; });

    EXPECT_EQ(builder.build(5, 2), 35);
    EXPECT_EQ(TestAccess::lastComponent(builder), nullptr);
}

TEST(Builder, PassesOnWhatCannotBeCopied)
{
    using Single = std::unique_ptr<int>;
    class Sum : public Builder<Single, Single, Single, Single> {
    public:
        using Builder::Builder;
        Single buildWithComponent(const Single& component, Single dependency) const override
        {
            *dependency += *component;
            return dependency;
        }
    };
    const auto builder = Sum([](Single argument) { return argument; });

    EXPECT_EQ(*builder.build(std::make_unique<int>(3), std::make_unique<int>(4)), 7);
}

TEST(Builder, BuildsOnAComponentAtHandWithoutItsFactory)
{
    const auto builder = EngineBuilder([](int) -> Ref<Engine> { throw std::runtime_error("factory"); });
    const auto engine = makeEngine(3);

    EXPECT_EQ(builder.buildWithComponent(engine, {}), engine);
    EXPECT_EQ(TestAccess::lastComponent(builder), nullptr);
}

TEST(Builder, LetsErrorsOfItsFactoryPassAndRemembersTheOneBefore)
{
    const auto builder = EngineBuilder([](int cylinders) {
        return cylinders > 0 ? makeEngine(cylinders) : throw std::runtime_error("none");
    });
    const auto engine = builder.build({}, 4);

    EXPECT_THROW((void)builder.build({}, 0), std::runtime_error);
    EXPECT_EQ(TestAccess::lastComponent(builder), engine);
}

TEST(BuilderDeathTest, NeedsToKnowHowToBuild)
{
    const auto builder = Cars(makeEngine);
    const auto message = "^Fatal error: Method in abstract base class must be overridden: "
                         "file Utilities/Discover, line 244\n$";

    EXPECT_DEATH((void)builder.buildWithComponent(makeEngine(4), "red"), message);
    EXPECT_DEATH((void)builder.build("red", 4), message);
}

TEST(BuilderDeathTest, NeedsAFactory)
{
    EXPECT_DEATH((void)CarBuilder(nullptr),
        "^Fatal error: Empty callable in place of a component factory: file Utilities/Discover\n$");
}

} // namespace
