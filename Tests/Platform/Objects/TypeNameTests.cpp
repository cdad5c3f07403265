#include "Orrenby/Platform/Objects/TypeName.hpp"

#include "Orrenby/Platform/Objects/Object.hpp"
#include "Orrenby/Platform/Objects/StaticText.hpp"
#include <array>
#include <deque>
#include <gmock/gmock.h>
#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

using namespace orrenby;

namespace {
namespace app {

class Loader {
public:
    struct Reason {};
    template <class T> struct Page {
        struct Cursor {};
    };
};
enum class Colour { Red };

class Shape {
public:
    virtual ~Shape() = default;
};
class Circle : public Shape {};
class Named : public Shape {
public:
    static constexpr std::string_view printedTypeName = "Nice.Name";
};
template <class A, std::size_t Size> struct Grid {};
template <class... A> struct Pack {};

struct Traited {};
struct Answering {
    std::string typeName() const { return "Answer"; }
};

class Machine : public Lifetime {
    void release() noexcept override {}
};
class NamedMachine : public Machine {
public:
    static constexpr std::string_view printedTypeName = "Engine";
};

} // namespace app
} // namespace

template <> struct orrenby::TypeNameOf<app::Traited> {
    static std::string text() { return "FromTrait"; }
};

namespace {
struct Hidden {};
}

TEST(TypeName, NamesTypesAndValues)
{
    //! [Naming a type]
    const auto ofType = typeName<std::vector<std::int64_t>>();
    const auto ofValue = typeName(std::string("text"));
    const std::unique_ptr<app::Shape> shape = std::make_unique<app::Circle>();
    const auto ofObject = typeName(*shape);
    //! [Naming a type]

    EXPECT_EQ(ofType, "Array<Int>");
    EXPECT_EQ(ofValue, "String");
    EXPECT_EQ(ofObject, "Circle");
}

TEST(TypeName, CallsSignedSixtyFourBitIntegersIntAndOthersByWidth)
{
    EXPECT_EQ(typeName<long>(), "Int");
    EXPECT_EQ(typeName<long long>(), "Int");
    EXPECT_EQ(typeName<int>(), "Int32");
    EXPECT_EQ(typeName<short>(), "Int16");
    EXPECT_EQ(typeName<signed char>(), "Int8");
    EXPECT_EQ(typeName<unsigned long>(), "UInt64");
    EXPECT_EQ(typeName<unsigned>(), "UInt32");
    EXPECT_EQ(typeName<unsigned char>(), "UInt8");
}

TEST(TypeName, NamesTheOtherSimpleTypes)
{
    EXPECT_EQ(typeName<bool>(), "Bool");
    EXPECT_EQ(typeName<double>(), "Double");
    EXPECT_EQ(typeName<float>(), "Float");
    EXPECT_EQ(typeName<char>(), "Character");
    EXPECT_EQ(typeName<void>(), "Void");
}

TEST(TypeName, CallsEveryKindOfTextString)
{
    EXPECT_EQ(typeName<std::string>(), "String");
    EXPECT_EQ(typeName<std::string_view>(), "String");
    EXPECT_EQ(typeName<const char*>(), "String");
    EXPECT_EQ(typeName("literal"), "String");
    EXPECT_EQ(typeName<StaticText>(), "String");
}

TEST(TypeName, NamesContainersWithTheirContents)
{
    EXPECT_EQ(typeName<std::vector<std::byte>>(), "Data");
    EXPECT_EQ((typeName<std::map<std::string, std::vector<double>>>()), "Dictionary<String, Array<Double>>");
    EXPECT_EQ((typeName<std::unordered_map<long, bool>>()), "Dictionary<Int, Bool>");
    EXPECT_EQ(typeName<std::set<std::string>>(), "Set<String>");
    EXPECT_EQ(typeName<std::unordered_set<long>>(), "Set<Int>");
    EXPECT_EQ(typeName<std::optional<std::string>>(), "Optional<String>");
    EXPECT_EQ((typeName<std::pair<long, std::tuple<bool, float>>>()), "(Int, (Bool, Float))");
}

TEST(TypeName, LeavesOutNamespacesAndEnclosingClasses)
{
    EXPECT_EQ(typeName<app::Loader>(), "Loader");
    EXPECT_EQ(typeName<app::Loader::Reason>(), "Reason");
    EXPECT_EQ(typeName<app::Colour>(), "Colour");
    EXPECT_EQ(typeName<Hidden>(), "Hidden");
    EXPECT_EQ(typeName<app::Loader::Page<long>::Cursor>(), "Cursor");
}

TEST(TypeName, LeavesOutAnEnclosingFunction)
{
    struct Local {};

    EXPECT_EQ(typeName<Local>(), "Local");
}

TEST(TypeName, KeepsTemplateArgumentsInPrintedForm)
{
    EXPECT_EQ((typeName<app::Loader::Page<std::string>>()), "Page<String>");
    EXPECT_EQ((typeName<app::Pack<app::Loader::Reason, app::Traited>>()), "Pack<Reason, FromTrait>");
    EXPECT_EQ(typeName<app::Pack<>>(), "Pack<>");
}

TEST(TypeName, ReadsTemplatesWithValueArgumentsFromTheirSpelling)
{
    EXPECT_EQ((typeName<app::Grid<std::vector<std::string>, 3>>()), "Grid<Array<String>, 3ul>");
}

TEST(TypeName, ReadsRunTimeTypeInformation)
{
    EXPECT_EQ(typeName(typeid(app::Loader::Reason)), "Reason");
    EXPECT_EQ(
        typeName(typeid(std::map<std::string, std::optional<long>>)), "Dictionary<String, Optional<Int>>");
    EXPECT_EQ(typeName(typeid(std::vector<std::byte>)), "Data");
    EXPECT_EQ(typeName(typeid(std::set<unsigned char>)), "Set<UInt8>");
    EXPECT_EQ(typeName(typeid(Ref<app::Shape>)), "Shape");
    EXPECT_EQ(typeName(typeid(app::Shape const*)), "Shape*");
    EXPECT_EQ(typeName(typeid(void)), "Void");
    EXPECT_EQ(typeName(typeid(app::Loader::Page<app::Colour>)), "Page<Colour>");
}

TEST(TypeName, NamesLambdasWithoutFailing)
{
    const auto lambda = [](std::vector<int>) {};

    EXPECT_FALSE(typeName(lambda).empty());
}

TEST(TypeName, IgnoresQualifiersAndReferences)
{
    EXPECT_EQ(typeName<const std::string&>(), "String");
    EXPECT_EQ(typeName<volatile long>(), "Int");
}

TEST(TypeName, UsesTheNameThatATypeDeclares)
{
    EXPECT_EQ(typeName<app::Named>(), "Nice.Name");
    EXPECT_EQ(typeName(app::Named()), "Nice.Name");
    EXPECT_EQ(typeName<app::Traited>(), "FromTrait");
    EXPECT_EQ(typeName(app::Traited()), "FromTrait");
}

TEST(TypeName, AsksAValueThatKnowsItsTypeName) { EXPECT_EQ(typeName(app::Answering()), "Answer"); }

TEST(TypeName, NamesTheMostDerivedClassOfAnObject)
{
    const Ref<app::Shape> circle = std::make_shared<app::Circle>();

    EXPECT_EQ(typeName<app::Shape>(), "Shape");
    EXPECT_EQ(typeName(*circle), "Circle");
    EXPECT_EQ(typeName(circle), "Circle");
}

TEST(TypeName, NamesAnEmptyHandleByWhatItCouldReferTo)
{
    EXPECT_EQ(typeName(Ref<app::Shape>()), "Shape");
    EXPECT_EQ(typeName<Ref<const app::Shape>>(), "Shape");
    EXPECT_EQ(typeName<WeakRef<app::Shape>>(), "Shape");
    EXPECT_EQ(typeName<std::unique_ptr<app::Shape>>(), "Shape");
}

TEST(TypeName, PrintsAMadeObjectAsItsOwnClass)
{
    const Ref<Lifetime> machine = make<app::Machine>();
    const auto named = make<app::NamedMachine>();

    EXPECT_EQ(typeName(machine), "Machine");
    EXPECT_EQ(typeName<Object<app::Machine>>(), "Machine");
    EXPECT_EQ(typeName(named), "Engine");
}
