#include "Orrenby/Platform/Objects/Any.hpp"

#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/NSOrderedSet.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Orrenby/Platform/Objects/Object.hpp"
#include <deque>
#include <gmock/gmock.h>
#include <limits>
#include <map>
#include <thread>
#include <unordered_map>

using namespace orrenby;

namespace {
namespace app {

struct Point {
    int x = 0;
    friend bool operator==(const Point&, const Point&) = default;
};
struct Point3D : Point {
    int z = 0;
};
struct Incomparable {
    int number = 0;
};
enum class Colour { Red, Green };

class Shape {
public:
    virtual ~Shape() = default;
};
class Coloured {
public:
    virtual ~Coloured() = default;
    Colour colour = Colour::Green;
};
class Circle : public Shape, public Coloured {
public:
    std::string description() const { return "a circle"; }
};
class Left : public Shape {};
class Right : public Shape {};
class Twice : public Left, public Right {};
class Hiding : private Shape {};
class Machine : public Lifetime, public Coloured {
    void release() noexcept override {}
};

} // namespace app
} // namespace

template <> struct std::hash<app::Point> {
    std::size_t operator()(const app::Point& point) const { return static_cast<std::size_t>(point.x) + 100; }
};

static_assert(sizeof(Any) == 16);
static_assert(std::is_nothrow_move_constructible_v<Any> && std::is_nothrow_move_assignable_v<Any>);

TEST(Any, HoldsAnyValue)
{
    //! [Holding any value]
    const Dictionary user = {{"name", "Ada"}, {"age", 36}, {"tags", Array{"math", 1.5}}};

    const std::optional<std::string> name = user["name"].cast<std::string>();
    const std::optional<double> strict = user["age"].cast<double>(); // an integer is no double
    const std::string printed = describe(user);
    //! [Holding any value]

    EXPECT_EQ(name, "Ada");
    EXPECT_EQ(strict, std::nullopt);
    EXPECT_EQ(printed, R"(["age": 36, "name": "Ada", "tags": ["math", 1.5]])");
}

TEST(Any, FindsTheKindOfSimpleValues)
{
    EXPECT_EQ(Any().kind(), Any::Kind::Null);
    EXPECT_EQ(Any(true).kind(), Any::Kind::Bool);
    EXPECT_EQ(Any(1).kind(), Any::Kind::Int);
    EXPECT_EQ(Any(std::uint8_t(1)).kind(), Any::Kind::Int);
    EXPECT_EQ(Any(1.0F).kind(), Any::Kind::Float);
    EXPECT_EQ(Any(1.0).kind(), Any::Kind::Double);
    EXPECT_EQ(Any(Date(5)).kind(), Any::Kind::Date);
    EXPECT_EQ(Any(Data()).kind(), Any::Kind::Bytes);
}

TEST(Any, FindsTheKindOfEveryText)
{
    const std::string text = "text";

    EXPECT_EQ(Any("literal").kind(), Any::Kind::Text);
    EXPECT_EQ(Any(text).kind(), Any::Kind::Text);
    EXPECT_EQ(Any(std::string_view("view")).kind(), Any::Kind::Text);
    EXPECT_EQ(Any(text.c_str()).kind(), Any::Kind::Text);
    EXPECT_EQ(Any(StaticText("static")).kind(), Any::Kind::Text);
    EXPECT_EQ(Any("literal").text(), "literal");
    EXPECT_EQ(Any(1).text(), "");
}

TEST(Any, FindsTheKindOfContainers)
{
    EXPECT_EQ(Any(Array()).kind(), Any::Kind::List);
    EXPECT_EQ(Any(std::vector<int>{1}).kind(), Any::Kind::List);
    EXPECT_EQ(Any(Dictionary()).kind(), Any::Kind::Dictionary);
    EXPECT_EQ(Any(std::map<std::string, int>{{"k", 1}}), Any(Dictionary{{"k", 1}}));
    EXPECT_EQ(Any(std::unordered_map<std::string, int>{{"k", 1}}), Any(Dictionary{{"k", 1}}));
    EXPECT_EQ(Any(NSSet{1}).kind(), Any::Kind::Set);
    EXPECT_EQ(Any(NSOrderedSet{1}).kind(), Any::Kind::Opaque);
}

TEST(Any, MakesNullOfEverythingThatHoldsNothing)
{
    const char* text = nullptr;

    EXPECT_TRUE(Any(NSNull()).isNull());
    EXPECT_TRUE(Any(nullptr).isNull());
    EXPECT_TRUE(Any(std::nullopt).isNull());
    EXPECT_TRUE(Any(std::optional<int>()).isNull());
    EXPECT_TRUE(Any(Ref<app::Shape>()).isNull());
    EXPECT_TRUE(Any(text).isNull());
    EXPECT_FALSE(Any(0).isNull());
    EXPECT_FALSE(Any("").isNull());
}

TEST(Any, SeesThroughOptionals)
{
    EXPECT_EQ(Any(std::optional<int>(5)), Any(5));
    EXPECT_EQ(Any(std::optional<std::optional<std::string>>("a")), Any("a"));
    EXPECT_EQ(Any(std::optional<Any>(Any(true))), Any(true));
}

TEST(Any, KeepsKindsApart)
{
    EXPECT_EQ(Any(1).cast<double>(), std::nullopt);
    EXPECT_EQ(Any(1).cast<bool>(), std::nullopt);
    EXPECT_EQ(Any(true).cast<int>(), std::nullopt);
    EXPECT_EQ(Any(1.0).cast<float>(), std::nullopt);
    EXPECT_EQ(Any(1.0F).cast<double>(), std::nullopt);
    EXPECT_EQ(Any("1").cast<int>(), std::nullopt);
    EXPECT_EQ(Any(1).cast<std::string>(), std::nullopt);
    EXPECT_NE(Any(1), Any(1.0));
    EXPECT_NE(Any(1), Any(true));
    EXPECT_NE(Any(1.0), Any(1.0F));
    EXPECT_NE(Any(), Any(0));
}

TEST(Any, GivesIntegersInEveryWidthThatTheyFit)
{
    EXPECT_EQ(Any(200).cast<std::uint8_t>(), 200);
    EXPECT_EQ(Any(200).cast<std::int8_t>(), std::nullopt);
    EXPECT_EQ(Any(-1).cast<unsigned>(), std::nullopt);
    EXPECT_EQ(Any(std::uint8_t(7)).cast<std::int64_t>(), 7);
    EXPECT_EQ(*Any(7).get<std::int64_t>(), 7);
}

TEST(Any, GivesEachNumberAsItsOwnKindOnly)
{
    EXPECT_EQ(Any(1.5F).cast<float>(), 1.5F);
    EXPECT_EQ(Any(1.5F).cast<double>(), std::nullopt);
    EXPECT_EQ(Any(1.5).cast<double>(), 1.5);
    EXPECT_EQ(Any(1.5).cast<float>(), std::nullopt);
    EXPECT_EQ(Any(1.0F).cast<int>(), std::nullopt);
    EXPECT_EQ(Any(1.0).cast<std::int64_t>(), std::nullopt);
    EXPECT_EQ(Any("1").cast<std::uint64_t>(), std::nullopt);
    EXPECT_EQ(Any(Date(1)).cast<double>(), std::nullopt);
}

TEST(Any, LosesNoLargeUnsignedInteger)
{
    constexpr auto largest = std::numeric_limits<std::uint64_t>::max();
    constexpr auto largestSigned = std::numeric_limits<std::int64_t>::max();
    const Any value = largest;

    EXPECT_EQ(value.kind(), Any::Kind::Opaque);
    EXPECT_EQ(value.cast<std::uint64_t>(), largest);
    EXPECT_EQ(value.cast<std::int64_t>(), std::nullopt);
    EXPECT_EQ(value.description(), "18446744073709551615");
    EXPECT_EQ(value.typeName(), "UInt64");
    EXPECT_EQ(Any(std::uint64_t(largestSigned)).kind(), Any::Kind::Int);
    EXPECT_EQ(Any(std::uint64_t(largestSigned) + 1).kind(), Any::Kind::Opaque);
}

TEST(Any, GivesItsContentWithoutACopy)
{
    const Any value = std::string("a text that is longer than any small buffer");
    const Any copy = value;

    ASSERT_NE(value.get<std::string>(), nullptr);
    EXPECT_EQ(value.get<std::string>(), copy.get<std::string>());
    EXPECT_EQ(value.get<Data>(), nullptr);
    EXPECT_EQ(value.get<app::Point>(), nullptr);
}

TEST(Any, CastsListsAndDictionariesElementByElement)
{
    const Any list = std::vector<int>{1, 2};
    const Any mixed = Array{1, "two"};
    const Any dictionary = Dictionary{{"k", 1.5}};

    EXPECT_EQ(list.cast<std::vector<int>>(), (std::vector{1, 2}));
    EXPECT_EQ(mixed.cast<std::vector<int>>(), std::nullopt);
    EXPECT_EQ(mixed.cast<Array>(), (Array{1, "two"}));
    EXPECT_EQ(Any(1).cast<std::vector<int>>(), std::nullopt);
    EXPECT_EQ(
        (dictionary.cast<std::map<std::string, double>>()), (std::map<std::string, double>{{"k", 1.5}}));
    EXPECT_EQ((dictionary.cast<std::map<std::string, int>>()), std::nullopt);
}

TEST(Any, CastsANumberReadFromTextBothWays)
{
    const auto integer = Any::parsedNumber(std::int64_t(3));
    const auto number = Any::parsedNumber(2.5);

    EXPECT_EQ(integer.cast<double>(), 3.0);
    EXPECT_EQ(integer.cast<float>(), 3.0F);
    EXPECT_EQ(integer.cast<int>(), 3);
    EXPECT_EQ(integer.cast<bool>(), std::nullopt);
    EXPECT_EQ(number.cast<float>(), 2.5F);
    EXPECT_EQ(number.cast<int>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(4.0).cast<int>(), 4);
    EXPECT_EQ(integer, Any(3));
}

TEST(Any, CastsANumberReadFromTextOnlyWhereNothingIsLost)
{
    constexpr std::int64_t unrepresentable = (std::int64_t(1) << 53) + 1;

    EXPECT_EQ(Any::parsedNumber(unrepresentable).cast<double>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(std::numeric_limits<std::int64_t>::max()).cast<double>(), std::nullopt);
    EXPECT_EQ(
        Any::parsedNumber(std::numeric_limits<std::int64_t>::min()).cast<double>(), -9223372036854775808.0);
    EXPECT_EQ(Any::parsedNumber(9223372036854775808.0).cast<std::int64_t>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(0.1).cast<float>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(1e300).cast<float>(), std::nullopt);
}

TEST(Any, CastsALargeUnsignedNumberReadFromTextBothWays)
{
    constexpr std::uint64_t first = std::uint64_t(1) << 63;
    constexpr std::uint64_t tenToThe19 = 10'000'000'000'000'000'000U;
    const auto integer = Any::parsedNumber(tenToThe19);

    EXPECT_EQ(Any::parsedNumber(first).cast<double>(), 0x1p63);
    EXPECT_EQ(Any::parsedNumber(first).cast<float>(), 0x1p63F);
    EXPECT_EQ(integer.cast<double>(), 1e19);
    EXPECT_EQ(integer.cast<float>(), std::nullopt);
    EXPECT_EQ(integer.cast<std::uint64_t>(), tenToThe19);
    EXPECT_EQ(integer.cast<std::int64_t>(), std::nullopt);
    EXPECT_EQ(integer, Any(tenToThe19));
    EXPECT_EQ(Any::parsedNumber(1e19).cast<std::uint64_t>(), tenToThe19);
    EXPECT_EQ(Any::parsedNumber(std::uint64_t(3)), Any(3));
}

TEST(Any, CastsALargeUnsignedNumberOnlyWhereNothingIsLost)
{
    constexpr auto largest = std::numeric_limits<std::uint64_t>::max();

    EXPECT_EQ(Any::parsedNumber(largest).cast<double>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(largest).cast<float>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber((std::uint64_t(1) << 63) + 1).cast<double>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(0x1p64).cast<std::uint64_t>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(largest - 2047).cast<double>(), 0x1.fffffffffffffp63);
}

TEST(Any, CastsALargeUnsignedNumberOfTheProgramToNothingElse)
{
    EXPECT_EQ(Any(std::uint64_t(1) << 63).cast<double>(), std::nullopt);
    EXPECT_EQ(Any(std::uint64_t(1) << 63).cast<float>(), std::nullopt);
    EXPECT_EQ(Any(1e19).cast<std::uint64_t>(), std::nullopt);
}

TEST(Any, KeepsOtherValuesWithTheirType)
{
    const Any value = app::Point{3};

    EXPECT_EQ(value.kind(), Any::Kind::Opaque);
    EXPECT_EQ(value.cast<app::Point>(), app::Point{3});
    EXPECT_TRUE(value.type() == typeid(app::Point));
    EXPECT_EQ(value.typeName(), "Point");
    EXPECT_EQ(Any(app::Colour::Green).cast<app::Colour>(), app::Colour::Green);
    EXPECT_EQ(Any('c').cast<char>(), 'c');
}

TEST(Any, ComparesOpaqueValuesOfOneType)
{
    EXPECT_EQ(Any(app::Point{1}), Any(app::Point{1}));
    EXPECT_NE(Any(app::Point{1}), Any(app::Point{2}));
    EXPECT_NE(Any(app::Point{1}), Any(app::Incomparable{1}));
    EXPECT_EQ(Any(app::Point{1}).hash(), 101U);
}

TEST(Any, EqualsOnlyACopyWhereTheTypeHasNoEquality)
{
    const Any value = app::Incomparable{1};
    const Any copy = value;

    EXPECT_EQ(value, copy);
    EXPECT_NE(value, Any(app::Incomparable{1}));
    EXPECT_NE(Any(std::deque<app::Incomparable>(1)), Any(std::deque<app::Incomparable>(1)));
    EXPECT_EQ(value.hash(), 0U);
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

TEST(Any, CastsAReferenceToEveryClassThatTheObjectHas)
{
    const Ref<app::Shape> shape = std::make_shared<app::Circle>();
    const Any value = shape;

    EXPECT_EQ(value.object<app::Shape>(), shape);
    ASSERT_NE(value.object<app::Coloured>(), nullptr);
    EXPECT_EQ(value.object<app::Coloured>()->colour, app::Colour::Green);
    EXPECT_EQ(value.object<app::Circle>()->description(), "a circle");
    EXPECT_EQ(value.object<app::Machine>(), nullptr);
    EXPECT_EQ(value.object<app::Point>(), nullptr);
    EXPECT_EQ(Any(1).object<app::Shape>(), nullptr);
}

TEST(Any, SeesAMadeObjectAsItsClassesAndInterfaces)
{
    const Any value = Ref<Lifetime>(make<app::Machine>());

    EXPECT_NE(value.object<app::Machine>(), nullptr);
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
    const Any value = std::make_shared<app::Twice>();

    EXPECT_EQ(value.object<app::Shape>(), nullptr);
    EXPECT_NE(value.object<app::Left>(), nullptr);
    EXPECT_EQ(Any(std::make_shared<app::Hiding>()).object<app::Shape>(), nullptr);
}

TEST(Any, TakesObjectsOfClassesWithoutVirtualFunctions)
{
    const auto point = std::make_shared<app::Point>();
    const Any value = point;

    EXPECT_EQ(value.object<app::Point>(), point);
    EXPECT_EQ(Any(std::make_shared<app::Point3D>()).object<app::Point>()->x, 0);
    EXPECT_EQ(value.object<app::Shape>(), nullptr);
}

TEST(Any, LeavesNullWhenMovedFrom)
{
    Any value = "text";
    const Any taken = std::move(value);

    EXPECT_TRUE(value.isNull()); // NOLINT(bugprone-use-after-move): the state is promised
    EXPECT_EQ(taken.text(), "text");
}

TEST(Any, SurvivesAssignmentToItself)
{
    Any value = "text";
    const Any& same = value;
    value = same;

    EXPECT_EQ(value.text(), "text");
}

TEST(Any, CanBeReplacedByAnElementOfItself)
{
    Any value = Array{"first", "second"};
    value = value.get<Array>()->front();

    EXPECT_EQ(value, Any("first"));
}

TEST(Any, PrintsItsContent)
{
    EXPECT_EQ(describe(Any()), "<null>");
    EXPECT_EQ(describe(Any(true)), "true");
    EXPECT_EQ(describe(Any(1.0F)), "1.0");
    EXPECT_EQ(describe(Any("a\"b")), "a\"b");
    EXPECT_EQ(debugDescribe(Any("a\"b")), R"("a\"b")");
    EXPECT_EQ(describe(Any(Array{1, "a", Any()})), R"([1, "a", <null>])");
    EXPECT_EQ(describe(Any(dataFromText("ab"))), "2 bytes");
    EXPECT_EQ(describe(Any(app::Colour::Green)), "Colour(1)");
    EXPECT_EQ(debugDescribe(Any(std::make_shared<app::Circle>())), "Circle(a circle)");
    EXPECT_EQ(describe(Any(Date(0))), "1970-01-01 00:00:00 +0000");
    EXPECT_EQ(debugDescribe(Any(Date(0))), debugDescribe(Date(0)));
}

TEST(Any, NamesTheTypeOfItsContent)
{
    EXPECT_EQ(typeName(Any()), "NSNull");
    EXPECT_EQ(typeName(Any(true)), "Bool");
    EXPECT_EQ(typeName(Any(1)), "Int");
    EXPECT_EQ(typeName(Any(1.0F)), "Float");
    EXPECT_EQ(typeName(Any(1.0)), "Double");
    EXPECT_EQ(typeName(Any("a")), "String");
    EXPECT_EQ(typeName(Any(Data())), "Data");
    EXPECT_EQ(typeName(Any(Date())), "Date");
    EXPECT_EQ(typeName(Any(Array())), "Array<Any>");
    EXPECT_EQ(typeName(Any(Dictionary())), "Dictionary<String, Any>");
    EXPECT_EQ(typeName(Any(NSSet())), "NSSet");
    EXPECT_EQ(typeName(Any(Ref<app::Shape>(std::make_shared<app::Circle>()))), "Circle");
    EXPECT_EQ(typeName<Any>(), "Any");
}

TEST(Any, TellsTheTypeOfItsContent)
{
    EXPECT_TRUE(Any().type() == typeid(void));
    EXPECT_TRUE(Any(true).type() == typeid(bool));
    EXPECT_TRUE(Any(1).type() == typeid(std::int64_t));
    EXPECT_TRUE(Any(std::uint64_t(1) << 63).type() == typeid(std::uint64_t));
    EXPECT_TRUE(Any(1.0F).type() == typeid(float));
    EXPECT_TRUE(Any(1.0).type() == typeid(double));
    EXPECT_TRUE(Any(Date(5)).type() == typeid(Date));
    EXPECT_TRUE(Any(Data()).type() == typeid(Data));
    EXPECT_TRUE(Any("a").type() == typeid(std::string));
    EXPECT_TRUE(Any(Array()).type() == typeid(Array));
}

TEST(Any, HashesAsTheValueInside)
{
    EXPECT_EQ(Any().hash(), 0U);
    EXPECT_EQ(Any(true).hash(), Any(true).hash());
    EXPECT_NE(Any(true).hash(), Any(false).hash());
    EXPECT_EQ(Any(-7).hash(), std::hash<std::int64_t>{}(-7));
    EXPECT_EQ(Any(2.5F).hash(), std::hash<float>{}(2.5F));
    EXPECT_EQ(Any(2.5).hash(), std::hash<double>{}(2.5));
    EXPECT_EQ(Any(Date(5)).hash(), std::hash<Date>{}(Date(5)));
    EXPECT_EQ(Any("ab").hash(), std::hash<std::string>{}("ab"));
    EXPECT_EQ(Any(app::Point{3}).hash(), std::hash<app::Point>{}(app::Point{3}));
}

TEST(Any, HashesEqualValuesAlike)
{
    EXPECT_EQ(Any(0.0F).hash(), Any(-0.0F).hash());
    EXPECT_EQ(Any(0.0), Any(-0.0));
    EXPECT_EQ(Any(0.0).hash(), Any(-0.0).hash());
    EXPECT_EQ(Any(Array{1, "a"}).hash(), Any(Array{1, "a"}).hash());
    EXPECT_EQ(Any(Dictionary{{"a", 1}, {"b", 2}}).hash(), Any(Dictionary{{"b", 2}, {"a", 1}}).hash());
    EXPECT_EQ(Any(NSSet{1, 2}).hash(), Any(NSSet{2, 1}).hash());
    EXPECT_EQ(Any(dataFromText("ab")).hash(), Any(dataFromText("ab")).hash());
}

TEST(Any, IsNotEqualToItselfAsNaN)
{
    const Any value = std::numeric_limits<double>::quiet_NaN();

    EXPECT_NE(value, value);
}

TEST(Any, SharesItsContentAcrossThreads)
{
    const Any shared = Array{"one", 2, Dictionary{{"three", 3}}};
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([shared] {
            for (int round = 0; round < 1000; ++round) {
                Any copy = shared;
                EXPECT_EQ(copy.get<Array>()->size(), 3U);
            }
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(describe(shared), R"(["one", 2, ["three": 3]])");
}

TEST(Any, HoldsDeeplyNestedLists)
{
    Any value = 1;
    for (int depth = 0; depth < 512; ++depth)
        value = Array(1, value);

    EXPECT_EQ(describe(value).size(), 512U * 2 + 1);
}
