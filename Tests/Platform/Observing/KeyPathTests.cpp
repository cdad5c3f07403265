#include "Orrenby/Platform/Observing/KeyPath.hpp"

#include "Tests/Platform/Observing/ObservingParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <type_traits>

using namespace orrenby;
using namespace orrenby::tests;
using testing::ElementsAre;
using testing::Optional;

namespace {

struct Pixel {
    int x = 1;
    int y = 2;
};

class Shape : public ObservableObject {
public:
    Property<Pixel, "origin"> origin{*this};
    Property<std::optional<int>, "weight"> weight{*this};
    Property<Ref<const Address>, "source"> source{*this};
    Property<std::optional<Ref<Address>>, "target"> target{*this};
    Pixel plain;
    std::unique_ptr<Pixel> owned = std::make_unique<Pixel>();
    Pixel* pointer = nullptr;
    const int fixed = 4;

    int area() const { return 12; }

    static auto secretPath() { return keyPath<&Shape::m_secret>(); }

private:
    Property<int, "secret"> m_secret{*this, 9};
};

class Circle : public Shape {
public:
    Property<int, "radius"> radius{*this, 3};
};

} // namespace

TEST(KeyPath, LeadsFromAnObjectToAValue)
{
    //! [Walking along a key path]
    Person person;
    person.address = std::make_shared<Address>("Rome");
    const auto path = keyPath<&Person::address, &Address::city>();

    path.set(person, "Oslo");

    EXPECT_EQ(path.get(person), "Oslo");
    EXPECT_EQ(path.codingString(), "address.city");
    EXPECT_EQ(person.valueForKeyPath("address.city"), Any("Oslo"));
    //! [Walking along a key path]
}

TEST(KeyPath, TellsObserversOfWhatItSets)
{
    Person person;
    const auto recorder = makeRecorder();
    person.addObserver(recorder, "age", oldAndNew);

    keyPath<&Person::age>().set(person, 19);

    EXPECT_THAT(recorder->told, ElementsAre("age: 18 -> 19"));
}

TEST(KeyPath, IsNamedByTheKeysAndNotByTheMembers)
{
    EXPECT_EQ(keyPath<&Person::friend_>().codingString(), "friend");
    EXPECT_EQ(Shape::secretPath().codingString(), "secret");
}

TEST(KeyPath, AgreesWithTheNameUnderWhichTheObjectFindsTheValue)
{
    const Circle circle;

    EXPECT_EQ(
        circle.valueForKeyPath(*Shape::secretPath().codingString()), Any(Shape::secretPath().get(circle)));
    EXPECT_EQ(circle.valueForKeyPath(*keyPath<&Circle::radius>().codingString()), Any(3));
}

TEST(KeyPath, IsReadOnlyWhereItEndsInAComputedValue)
{
    const Person person;
    const auto path = keyPath<&Person::title>();

    EXPECT_TRUE((std::is_same_v<decltype(path), const KeyPath<Person, std::string>>));
    EXPECT_EQ(path.get(person), "Ada, 18");
    EXPECT_EQ(path.codingString(), "title");
}

TEST(KeyPath, IsReadOnlyWhereItEndsInAConstant)
{
    EXPECT_TRUE((std::is_same_v<decltype(keyPath<&Shape::fixed>()), KeyPath<Shape, int>>));
    EXPECT_TRUE(
        (std::is_same_v<decltype(keyPath<&Shape::source, &Address::city>()), KeyPath<Shape, std::string>>));
    EXPECT_EQ(keyPath<&Shape::fixed>().get(Shape()), 4);
}

TEST(KeyPath, StartsAtTheBaseClassOfAnInheritedMember)
{
    Circle circle;
    const auto path = keyPath<&Circle::weight>();

    path.set(circle, 5);

    EXPECT_TRUE((std::is_same_v<decltype(path), const WritableKeyPath<Shape, std::optional<int>>>));
    EXPECT_THAT(path.get(circle), Optional(5));
}

TEST(KeyPath, ChangesAValueInsideAPropertyBySettingTheProperty)
{
    Shape shape;
    const auto recorder = makeRecorder();
    shape.addObserver(recorder, "origin");
    const auto path = keyPath<&Shape::origin, &Pixel::x>();

    path.set(shape, 7);

    EXPECT_EQ(path.get(shape), 7);
    EXPECT_EQ(shape.origin.get().y, 2);
    EXPECT_EQ(recorder->told.size(), 1u);
    EXPECT_EQ(path.codingString(), std::nullopt);
}

TEST(KeyPath, LeadsThroughPlainMembersAndPointers)
{
    Shape shape;
    Pixel other;
    shape.pointer = &other;

    keyPath<&Shape::plain, &Pixel::x>().set(shape, 5);
    keyPath<&Shape::owned, &Pixel::x>().set(shape, 6);
    keyPath<&Shape::pointer, &Pixel::x>().set(shape, 7);

    EXPECT_EQ(shape.plain.x, 5);
    EXPECT_EQ(shape.owned->x, 6);
    EXPECT_EQ(other.x, 7);
}

TEST(KeyPath, LeadsThroughAnOptionalReference)
{
    Shape shape;
    const auto path = keyPath<&Shape::target, &Address::city>();
    const bool wasSetWithoutTarget = path.set(shape, "Oslo");
    shape.target = std::make_shared<Address>();

    const bool wasSet = path.set(shape, "Oslo");

    EXPECT_FALSE(wasSetWithoutTarget);
    EXPECT_TRUE(wasSet);
    EXPECT_EQ(path.get(shape), "Oslo");
    EXPECT_EQ(path.codingString(), "target.city");
}

TEST(KeyPath, GivesNothingBehindAnEmptyReference)
{
    Person person;
    const auto path = keyPath<&Person::address, &Address::city>();

    EXPECT_EQ(path.tryGet(person), std::nullopt);
    EXPECT_FALSE(path.set(person, "Oslo"));
}

TEST(KeyPathDeathTest, EndsTheProcessForAValueBehindAnEmptyReference)
{
    const Person person;
    const auto path = keyPath<&Person::address, &Address::city>();

    EXPECT_DEATH(static_cast<void>(path.get(person)),
        "Fatal error: The key path leads through an empty reference: file Platform/KeyPath, line");
}

TEST(KeyPath, GivesAnEmptyValueBehindAnEmptyReferenceWhereAskedFor)
{
    Person person;
    const auto path = optionalKeyPath<&Person::address, &Address::city>();
    const auto before = path.get(person);
    person.address = std::make_shared<Address>();

    EXPECT_TRUE((std::is_same_v<decltype(path), const KeyPath<Person, std::optional<std::string>>>));
    EXPECT_EQ(before, std::nullopt);
    EXPECT_THAT(path.get(person), Optional(std::string("Rome")));
    EXPECT_EQ(path.codingString(), "address.city");
}

TEST(KeyPath, DoesNotNestOptionals)
{
    EXPECT_TRUE(
        (std::is_same_v<decltype(optionalKeyPath<&Shape::weight>()), KeyPath<Shape, std::optional<int>>>));
}

TEST(KeyPath, IsMadeOfMembersPassedAsValues)
{
    Person person;
    person.address = std::make_shared<Address>();
    const auto path = keyPath(&Person::address, &Address::city);

    path.set(person, "Oslo");

    EXPECT_EQ(path.get(person), "Oslo");
    EXPECT_EQ(path.codingString(), std::nullopt);
}

TEST(KeyPath, IsMadeOfAGetter)
{
    const Shape shape;
    const auto byMember = keyPath<Shape>(&Shape::area);
    const auto byLambda = keyPath<Shape>([](const Shape& subject) { return subject.plain.x; });

    EXPECT_EQ(byMember.get(shape), 12);
    EXPECT_EQ(byLambda.get(shape), 1);
    EXPECT_EQ(byLambda.codingString(), std::nullopt);
}

TEST(KeyPath, IsMadeOfAGetterAndASetter)
{
    Person person;
    const auto path = keyPath<Person>([](const Person& subject) { return subject.age / 2; },
        [](Person& subject, int half) { subject.age = half * 2; });

    const bool wasSet = path.set(person, 20);

    EXPECT_TRUE(wasSet);
    EXPECT_EQ(path.get(person), 20);
    EXPECT_EQ(person.age.get(), 40);
}

TEST(KeyPath, EqualsPathsOfTheSameCodingString)
{
    const KeyPath<Person, int> age = keyPath<&Person::age>();
    const auto same = keyPath<&Person::age>();
    const auto other = keyPath<&Person::friend_, &Person::age>();

    EXPECT_EQ(age, same);
    EXPECT_NE(age, other);
}

TEST(KeyPath, EqualsOnlyItsCopiesWithoutACodingString)
{
    const auto path = keyPath(&Shape::plain);
    const auto copy = path;
    const auto twin = keyPath(&Shape::plain);
    const KeyPath<Person, int> named = keyPath<&Person::age>();
    const KeyPath<Person, int> unnamed = keyPath(&Person::age);

    EXPECT_TRUE(path == copy);
    EXPECT_FALSE(path == twin);
    EXPECT_FALSE(named == unnamed);
    EXPECT_FALSE(unnamed == named);
}

TEST(KeyPath, HasNoCodingStringThroughWhatObserversCannotFollow)
{
    const auto throughConstant = keyPath<&Shape::source, &Address::city>();
    const auto throughPlain = keyPath<&Shape::plain>();

    EXPECT_EQ(throughConstant.codingString(), std::nullopt);
    EXPECT_EQ(throughPlain.codingString(), std::nullopt);
}
