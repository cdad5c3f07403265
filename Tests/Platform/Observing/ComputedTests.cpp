#include "Orrenby/Platform/Observing/Computed.hpp"

#include "Tests/Platform/Observing/ObservingParts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Computed, IsComputedWheneverItIsRead)
{
    //! [Computing a value from others]
    class Rectangle : public ObservableObject {
    public:
        Property<int, "width"> width{*this, 2};
        Property<int, "height"> height{*this, 3};
        Computed<int, "area"> area{*this, [this] { return width * height; }, {"width", "height"}};
    };
    Rectangle rectangle;
    const auto recorder = makeRecorder();
    rectangle.addObserver(recorder, "area", {.new_ = true, .old = true});

    rectangle.width = 5;

    EXPECT_EQ(rectangle.area.get(), 15);
    EXPECT_THAT(recorder->told, ElementsAre("area: 6 -> 15"));
    //! [Computing a value from others]
}

TEST(Computed, ChangesWithEachOfItsDependencies)
{
    Person person;
    const auto recorder = makeRecorder();
    person.addObserver(recorder, "title", oldAndNew);

    person.age = 19;
    person.name = "Eva";
    person.address = nullptr;

    EXPECT_THAT(recorder->told,
        ElementsAre("title: \"Ada, 18\" -> \"Ada, 19\"", "title: \"Ada, 19\" -> \"Eva, 19\""));
}

namespace {

// Not inside the tests: clang 16 takes the callables of a local class's members for one another.
class Sum : public ObservableObject {
public:
    Property<int, "base"> base{*this, 1};
    // Declared before what it depends on: names are looked up only when somebody observes.
    Computed<int, "fourfold"> fourfold{*this, [this] { return twofold * 2; }, {"twofold"}};
    Computed<int, "twofold"> twofold{*this, [this] { return base * 2; }, {"base"}};
};

class Circle : public ObservableObject {
public:
    Computed<int, "first"> first{*this, [] { return 1; }, {"second"}};
    Computed<int, "second"> second{*this, [] { return 2; }, {"first"}};
};

} // namespace

TEST(Computed, ChangesWithWhatItsDependenciesDependOn)
{
    Sum sum;
    const auto recorder = makeRecorder();
    sum.addObserver(recorder, "fourfold", oldAndNew);

    sum.base = 2;

    EXPECT_THAT(recorder->told, ElementsAre("fourfold: 4 -> 8"));
}

TEST(Computed, MayDependOnItselfInACircle)
{
    Circle circle;
    const auto recorder = makeRecorder();
    circle.addObserver(recorder, "first", oldAndNew);

    circle.willChangeValue("second");
    circle.didChangeValue("second");

    EXPECT_THAT(recorder->told, ElementsAre("first: 1 -> 1"));
}

TEST(Computed, ChangesWithAKeyThatNoMemberDeclares)
{
    class Clock : public ObservableObject {
    public:
        int seconds = 0;
        Computed<int, "minutes"> minutes{*this, [this] { return seconds / 60; }, {"seconds"}};
    };
    Clock clock;
    const auto recorder = makeRecorder();
    clock.addObserver(recorder, "minutes", oldAndNew);

    clock.willChangeValue("seconds");
    clock.seconds = 60;
    clock.didChangeValue("seconds");

    EXPECT_THAT(recorder->told, ElementsAre("minutes: 0 -> 1"));
}

TEST(Computed, IsReportedByHandWhereItDependsOnNothingNamed)
{
    class Thermometer : public ObservableObject {
    public:
        double reading = 20;
        Computed<double, "celsius"> celsius{*this, [this] { return reading; }};
    };
    Thermometer thermometer;
    const auto recorder = makeRecorder();
    thermometer.addObserver(recorder, "celsius", oldAndNew);

    thermometer.willChangeValue("celsius");
    thermometer.reading = 21.5;
    thermometer.didChangeValue("celsius");

    EXPECT_THAT(recorder->told, ElementsAre("celsius: 20.0 -> 21.5"));
}

TEST(Computed, IsNotComputedForAnyoneWhoDoesNotAsk)
{
    class Costly : public ObservableObject {
    public:
        int computations = 0;
        Property<int, "input"> input{*this};
        Computed<int, "output"> output{*this, [this] { return ++computations; }, {"input"}};
    };
    Costly costly;
    const auto recorder = makeRecorder();
    costly.addObserver(recorder, "output");

    costly.input = 1;

    EXPECT_EQ(recorder->told.size(), 1u);
    EXPECT_EQ(costly.computations, 0);
}

TEST(Computed, TellsOnceForAChangeOfSeveralDependenciesAtOnce)
{
    Person person;
    const auto recorder = makeRecorder();
    person.addObserver(recorder, "title");
    person.addObserver(recorder, "age");

    person.age = 19;

    EXPECT_THAT(recorder->told, ElementsAre("title: none -> none", "age: none -> none"));
}

TEST(Computed, TellsNothingAfterRemoval)
{
    Person person;
    const auto recorder = makeRecorder();
    person.addObserver(recorder, "title");

    person.removeObserver(*recorder, "title");
    person.age = 19;

    EXPECT_THAT(recorder->told, IsEmpty());
}

TEST(ComputedDeathTest, DependsOnKeysAndNotOnPaths)
{
    class Wrong : public ObservableObject {
    public:
        Computed<int, "wrong"> wrong{*this, [] { return 1; }, {"address.city"}};
    };

    EXPECT_DEATH(Wrong(),
        "Fatal error: A computed value depends on keys of its own object: file Platform/Computed, line");
}
