#include "Orrenby/Standard/JSON/JSONReflection.hpp"

#include "Orrenby/Platform/Coding/DescribedMirror.hpp"
#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"
#include "Orrenby/Platform/Objects/NSNull.hpp"
#include "Orrenby/Standard/JSON/Encodable+JSON.hpp"
#include <boost/describe/class.hpp>
#include <gmock/gmock.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

//! [Turning values into dictionaries]
struct Address : JSONSerializable {
    std::string city;
    std::optional<std::string> street;
};

struct Secret : JSONSerializationExclusion {
    std::string text;
};

struct Person : JSONSerializable {
    std::string name;
    Address home;
    std::vector<Address> earlier;
    std::optional<int> age;
    Secret password;
};

Dictionary asDictionary(const Person& person)
{
    return json(person); // no "age" when it is empty, never a "password"
}
//! [Turning values into dictionaries]

//! [Objects seen as their base class]
class Shape : public JSONSerializableObject {
public:
    Dictionary json() const override { return reflectedJSON(*this); }

private:
    std::string m_name = "shape";
    BOOST_DESCRIBE_CLASS(Shape, (), (), (), (m_name))
};

class Circle : public Shape {
public:
    Dictionary json() const override { return reflectedJSON(*this); }

private:
    double m_radius = 2;
    BOOST_DESCRIBE_CLASS(Circle, (Shape), (), (), (m_radius))
};

struct Drawing : JSONSerializable {
    std::vector<Ref<Shape>> shapes;
};
//! [Objects seen as their base class]

class Animal : public JSONSerializable {
protected:
    std::string m_name = "animal";
    int m_legs = 4;
    BOOST_DESCRIBE_CLASS(Animal, (), (), (m_name, m_legs), ())
};

class Bird : public Animal {
    std::string m_name = "bird";
    bool m_canFly = true;
    BOOST_DESCRIBE_CLASS(Bird, (Animal), (), (), (m_name, m_canFly))
};

class Plain {
public:
    int number = 1;
    BOOST_DESCRIBE_CLASS(Plain, (), (number), (), ())
};

class Swan : public Bird, public Plain {
    std::string colour = "white";
    BOOST_DESCRIBE_CLASS(Swan, (Bird, Plain), (), (), (colour))
};

struct Empty : JSONSerializable {};

struct Leaf {
    int size = 1;
    friend bool operator==(const Leaf&, const Leaf&) = default;
};

struct Marked {
    int size = 1;
};

struct Tree : JSONSerializable {
    std::string name;
    std::vector<Tree> branches;
};

template <class T> struct Holder : JSONSerializable {
    T value;
};

template <class T> Dictionary jsonHolding(T value)
{
    Holder<T> holder;
    holder.value = std::move(value);
    return json(holder);
}

Address address(std::string city)
{
    Address result;
    result.city = std::move(city);
    return result;
}

Any dictionaryOf(std::string city) { return Dictionary{{"city", std::move(city)}}; }

/// Shows a child without a label, and a superclass of its own.
class Handmade : public JSONSerializable {
public:
    int number = 3;
    Handmade() = default;
};

class HiddenShape : public Shape, public JSONSerializationExclusion {};

struct Comparable : JSONSerializable {
    int number = 0;
    friend bool operator==(const Comparable&, const Comparable&) = default;
};

} // namespace

template <> inline constexpr bool orrenby::isJSONSerializable<Marked> = true;

template <> struct orrenby::Reflected<Handmade> {
    static void reflect(const Handmade& value, Mirror& mirror)
    {
        mirror.add("number", value.number);
        mirror.add("nothing", NSNull());
        mirror.add("shape", std::make_shared<Circle>());
        mirror.setSuperclass(Mirror(Leaf{9}));
    }
};

TEST(JSONReflection, TurnsAnAggregateIntoADictionary)
{
    Person person;
    person.name = "Ada";
    person.home.city = "London";
    person.home.street = "St James";
    person.earlier = {address("Ockham")};
    person.password.text = "engine";

    const auto dictionary = asDictionary(person);

    EXPECT_EQ(dictionary,
        (Dictionary{{"name", "Ada"}, {"home", Dictionary{{"city", "London"}, {"street", "St James"}}},
            {"earlier", Array{Dictionary{{"city", "Ockham"}}}}}));
    EXPECT_THAT(dictionary.keys(), ElementsAre("name", "home", "earlier"));
    EXPECT_TRUE(NSJSONSerialization::isValidJSONObject(dictionary));
}

TEST(JSONReflection, LeavesTypesAggregates)
{
    const auto made = Address{{}, "Bern", "Gasse"};

    EXPECT_EQ(json(made), (Dictionary{{"city", "Bern"}, {"street", "Gasse"}}));
}

TEST(JSONReflection, TakesTypesThatAreMarkedFromOutside)
{
    const auto marked = Marked{.size = 4};

    EXPECT_EQ(json(marked), (Dictionary{{"size", 4}}));
    EXPECT_EQ(jsonHolding(std::vector{marked}), (Dictionary{{"value", Array{Dictionary{{"size", 4}}}}}));
}

TEST(JSONReflection, GivesNoKeyForAnEmptyOptional)
{
    EXPECT_EQ(jsonHolding(std::optional<int>()), Dictionary());
    EXPECT_EQ(jsonHolding(std::optional<Address>()), Dictionary());
    EXPECT_EQ(jsonHolding(std::optional<std::optional<int>>(std::optional<int>())), Dictionary());
}

TEST(JSONReflection, GivesNoKeyForNull)
{
    EXPECT_EQ(jsonHolding(NSNull()), Dictionary());
    EXPECT_EQ(jsonHolding(Any()), Dictionary());
    EXPECT_EQ(jsonHolding(Ref<Address>()), Dictionary());
}

TEST(JSONReflection, GivesNoKeyForWhatIsExcluded)
{
    EXPECT_EQ(jsonHolding(Secret()), Dictionary());
    EXPECT_EQ(jsonHolding(std::optional(Secret())), Dictionary());
    EXPECT_EQ(jsonHolding(std::make_shared<Secret>()), Dictionary());
    EXPECT_EQ(jsonHolding(Any(Secret())), Dictionary());
    EXPECT_EQ(jsonHolding(Any(std::make_shared<HiddenShape>())), Dictionary());
    EXPECT_EQ(jsonHolding(Ref<Shape>(std::make_shared<HiddenShape>())), Dictionary());
}

TEST(JSONReflection, StoresASerializableAsItsDictionary)
{
    EXPECT_EQ(jsonHolding(address("Bern")), (Dictionary{{"value", dictionaryOf("Bern")}}));
    EXPECT_EQ(jsonHolding(std::optional(address("Bern"))), (Dictionary{{"value", dictionaryOf("Bern")}}));
    EXPECT_EQ(jsonHolding(std::make_shared<Address>(address("Bern"))),
        (Dictionary{{"value", dictionaryOf("Bern")}}));
}

TEST(JSONReflection, StoresAListOfSerializablesAsAListOfDictionaries)
{
    const auto list = std::vector{address("Bern"), address("Rome")};
    const auto expected = Dictionary{{"value", Array{dictionaryOf("Bern"), dictionaryOf("Rome")}}};

    EXPECT_EQ(jsonHolding(list), expected);
    EXPECT_EQ(jsonHolding(std::optional(list)), expected);
}

TEST(JSONReflection, StoresAnEmptyListAsAnEmptyList)
{
    EXPECT_EQ(jsonHolding(std::vector<Address>()), (Dictionary{{"value", Array()}}));
    EXPECT_EQ(jsonHolding(Array()), (Dictionary{{"value", Array()}}));
}

TEST(JSONReflection, KeepsThePlacesOfAbsentElements)
{
    const auto list = std::vector<std::optional<Address>>{std::nullopt, address("Bern")};

    EXPECT_EQ(jsonHolding(list), (Dictionary{{"value", Array{Any(), dictionaryOf("Bern")}}}));
}

TEST(JSONReflection, StoresEverythingElseAsItIs)
{
    EXPECT_EQ(jsonHolding(5), (Dictionary{{"value", 5}}));
    EXPECT_EQ(jsonHolding(std::optional(5)), (Dictionary{{"value", 5}}));
    EXPECT_EQ(jsonHolding(Leaf{2}), (Dictionary{{"value", Leaf{2}}}));
    EXPECT_EQ(jsonHolding(std::vector{1, 2}), (Dictionary{{"value", Array{1, 2}}}));
    EXPECT_EQ(jsonHolding(Dictionary{{"a", nullptr}}), (Dictionary{{"value", Dictionary{{"a", nullptr}}}}));
    EXPECT_EQ(jsonHolding(Array{1, "a"}), (Dictionary{{"value", Array{1, "a"}}}));
}

TEST(JSONReflection, GivesAnEmptyDictionaryOfATypeWithoutProperties)
{
    EXPECT_EQ(json(Empty()), Dictionary());
}

TEST(JSONReflection, FollowsTypesThatHoldThemselves)
{
    Tree leaf;
    leaf.name = "leaf";
    Tree tree;
    tree.name = "root";
    tree.branches = {leaf};

    EXPECT_EQ(json(tree),
        (Dictionary{
            {"name", "root"}, {"branches", Array{Dictionary{{"name", "leaf"}, {"branches", Array()}}}}}));
}

TEST(JSONReflection, FollowsADescribedClassByItsBases)
{
    const auto dictionary = json(Bird());

    EXPECT_EQ(dictionary, (Dictionary{{"name", "animal"}, {"canFly", true}, {"legs", 4}}));
    EXPECT_THAT(dictionary.keys(), ElementsAre("name", "canFly", "legs"));
}

TEST(JSONReflection, FollowsAllDescribedBasesInOrder)
{
    EXPECT_THAT(json(Swan()).keys(), ElementsAre("colour", "name", "canFly", "legs", "number"));
}

TEST(JSONReflection, FollowsAReflectionOfOnesOwn)
{
    const auto dictionary = json(Handmade());

    EXPECT_EQ(dictionary,
        (Dictionary{{"number", 3}, {"shape", Dictionary{{"radius", 2.0}, {"name", "shape"}}}, {"size", 9}}));
}

TEST(JSONReflection, SeesObjectsByTheirOwnClass)
{
    const auto circle = Dictionary{{"radius", 2.0}, {"name", "shape"}};
    Drawing drawing;
    drawing.shapes = {std::make_shared<Circle>(), nullptr, std::make_shared<Shape>()};

    EXPECT_EQ(json(drawing), (Dictionary{{"shapes", Array{circle, Any(), Dictionary{{"name", "shape"}}}}}));
    EXPECT_EQ(jsonHolding(Any(Circle())), (Dictionary{{"value", circle}}));
    EXPECT_EQ(jsonHolding(Array{Circle(), std::make_shared<Circle>()}),
        (Dictionary{{"value", Array{circle, circle}}}));
}

TEST(JSONReflection, LeavesAListOfMixedValuesAsItIs)
{
    const auto object = std::make_shared<Circle>();
    const auto list = Array{object, 1};

    EXPECT_EQ(jsonHolding(list), (Dictionary{{"value", list}}));
}

TEST(JSONReflection, ReflectsTypesThatAreNotMarkedOnDemand)
{
    EXPECT_EQ(reflectedJSON(Leaf{3}), (Dictionary{{"size", 3}}));
    EXPECT_EQ(reflectedJSON(Plain()), (Dictionary{{"number", 1}}));
}

TEST(JSONReflection, IsChosenOverEncoding)
{
    // Both headers are included; the mark decides.
    EXPECT_EQ(json(address("Bern")), (Dictionary{{"city", "Bern"}}));
}

TEST(JSONSerializable, LeavesComparisonToTheType)
{
    Comparable one;
    one.number = 1;

    EXPECT_TRUE(one == one);
    EXPECT_FALSE(one == Comparable());
    EXPECT_FALSE(std::equality_comparable<Address>);
    EXPECT_FALSE(std::equality_comparable<Secret>);
}
