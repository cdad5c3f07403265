#include "Orrenby/Platform/Objects/Describe.hpp"

#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/StaticText.hpp"
#include <cmath>
#include <cstring>
#include <deque>
#include <filesystem>
#include <gmock/gmock.h>
#include <limits>
#include <map>
#include <set>
#include <stdexcept>
#include <unordered_map>
#include <unordered_set>
#include <variant>

using namespace orrenby;

namespace {
namespace app {

struct Plain {};
struct Person {
    std::string name;
    std::string description() const { return name; }
};
struct Secret {
    std::string description() const { return "shown"; }
    std::string debugDescription() const { return "<secret>"; }
};
enum class Level : std::uint8_t { Low = 2 };
enum Old : int { Negative = -3 };
enum class Mood { Glad };
std::string_view description(Mood) { return "glad"; }

class Shape {
public:
    virtual ~Shape() = default;
    virtual std::string description() const { return "a shape"; }
};
class Circle : public Shape {
public:
    std::string description() const override { return "a circle"; }
};
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace app
} // namespace

TEST(Describe, PrintsForReadersAndForLogs)
{
    //! [Describing values]
    const std::map<std::string, std::vector<double>> samples = {{"b", {1, 0.5}}, {"a", {}}};

    const auto printed = describe(samples);
    const auto plainText = describe("two\nlines");
    const auto textForLogs = debugDescribe("two\nlines");
    //! [Describing values]

    EXPECT_EQ(printed, R"(["a": [], "b": [1.0, 0.5]])");
    EXPECT_EQ(plainText, "two\nlines");
    EXPECT_EQ(textForLogs, R"("two\nlines")");
}

TEST(Describe, PrintsBooleansAndIntegers)
{
    EXPECT_EQ(describe(true), "true");
    EXPECT_EQ(describe(false), "false");
    EXPECT_EQ(describe(0), "0");
    EXPECT_EQ(describe(-7), "-7");
    EXPECT_EQ(describe(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(describe(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(describe(std::uint8_t(65)), "65");
    EXPECT_EQ(describe(std::int8_t(-1)), "-1");
}

TEST(Describe, PrintsEveryKindOfTextPlain)
{
    EXPECT_EQ(describe(std::string("a\"b")), "a\"b");
    EXPECT_EQ(describe(std::string_view("view")), "view");
    EXPECT_EQ(describe("literal"), "literal");
    EXPECT_EQ(describe(StaticText("static")), "static");
    EXPECT_EQ(describe('c'), "c");
}

TEST(Describe, PrintsANullTextPointerAsNone)
{
    const char* text = nullptr;

    EXPECT_EQ(describe(text), "none");
    EXPECT_EQ(debugDescribe(text), "none");
}

TEST(Describe, QuotesTextInDebugForm)
{
    EXPECT_EQ(debugDescribe(std::string("plain")), R"("plain")");
    EXPECT_EQ(debugDescribe(""), R"("")");
    EXPECT_EQ(debugDescribe("\"\\\n\t\r"), R"("\"\\\n\t\r")");
    EXPECT_EQ(debugDescribe(std::string("a\0b", 3)), R"("a\0b")");
    EXPECT_EQ(debugDescribe("\x01\x1B\x7F"), R"("\u{01}\u{1B}\u{7F}")");
    EXPECT_EQ(debugDescribe("Zoë 🙂"), "\"Zoë 🙂\"");
    EXPECT_EQ(debugDescribe('c'), "\"c\"");
}

TEST(Describe, WritesDoublesWithTheFewestDigitsThatReadBack)
{
    EXPECT_EQ(describe(0.1), "0.1");
    EXPECT_EQ(describe(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(describe(1.0), "1.0");
    EXPECT_EQ(describe(-2.5), "-2.5");
    EXPECT_EQ(describe(100.0), "100.0");
    EXPECT_EQ(describe(5e-324), "5e-324");
    EXPECT_EQ(describe(std::numeric_limits<double>::max()), "1.7976931348623157e+308");
}

TEST(Describe, KeepsTheSignOfZero)
{
    EXPECT_EQ(describe(0.0), "0.0");
    EXPECT_EQ(describe(-0.0), "-0.0");
    EXPECT_EQ(describe(-0.0F), "-0.0");
}

TEST(Describe, WritesSmallDoublesOutDownToOneTenThousandth)
{
    EXPECT_EQ(describe(0.0001), "0.0001");
    EXPECT_EQ(describe(-0.0001), "-0.0001");
    EXPECT_EQ(describe(0.00012345), "0.00012345");
    EXPECT_EQ(describe(std::nextafter(0.0001, 0.0)), "9.999999999999999e-05");
    EXPECT_EQ(describe(0.00001), "1e-05");
    EXPECT_EQ(describe(1.5e-10), "1.5e-10");
}

TEST(Describe, WritesLargeDoublesOutUpToTwoToThePowerOfFiftyThree)
{
    EXPECT_EQ(describe(9007199254740991.0), "9007199254740991.0");
    EXPECT_EQ(describe(9007199254740992.0), "9007199254740992.0");
    EXPECT_EQ(describe(-9007199254740992.0), "-9007199254740992.0");
    EXPECT_EQ(describe(9007199254740994.0), "9.007199254740994e+15");
    EXPECT_EQ(describe(1e16), "1e+16");
    EXPECT_EQ(describe(1.5e20), "1.5e+20");
    EXPECT_EQ(describe(1e100), "1e+100");
}

TEST(Describe, GivesFloatsTheirOwnDigitsAndLimit)
{
    EXPECT_EQ(describe(0.1F), "0.1");
    EXPECT_EQ(describe(0.0001F), "0.0001");
    EXPECT_EQ(describe(16777216.0F), "16777216.0");
    EXPECT_EQ(describe(16777218.0F), "1.6777218e+07");
    EXPECT_EQ(describe(1e-5F), "1e-05");
}

TEST(Describe, NamesWhatIsNoFiniteNumber)
{
    constexpr auto infinity = std::numeric_limits<double>::infinity();

    EXPECT_EQ(describe(infinity), "inf");
    EXPECT_EQ(describe(-infinity), "-inf");
    EXPECT_EQ(describe(std::nan("")), "nan");
    EXPECT_EQ(describe(-std::nanf("")), "nan");
    EXPECT_EQ(debugDescribe(infinity), "inf");
}

TEST(Describe, ReadsBackWhatItPrints)
{
    std::uint64_t state = 20261121;
    for (int round = 0; round < 20000; ++round) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        double value = 0;
        std::memcpy(&value, &state, sizeof value);
        if (!std::isfinite(value))
            continue;

        EXPECT_EQ(std::strtod(describe(value).c_str(), nullptr), value) << "state " << state;
    }
}

TEST(Describe, PrintsListsWithTextsQuoted)
{
    EXPECT_EQ(describe(std::vector<int>{}), "[]");
    EXPECT_EQ(describe(std::vector<int>{1, 2}), "[1, 2]");
    EXPECT_EQ(describe(std::vector<std::string>{"a", ""}), R"(["a", ""])");
    EXPECT_EQ(debugDescribe(std::deque<double>{1}), "[1.0]");
    EXPECT_EQ(describe(std::vector<bool>{true, false}), "[true, false]");
    EXPECT_EQ(describe(std::vector<std::vector<int>>{{}, {1}}), "[[], [1]]");
}

TEST(Describe, PrintsDictionariesSortedByKey)
{
    EXPECT_EQ(describe(std::map<std::string, int>{}), "[:]");
    EXPECT_EQ(describe(std::unordered_map<std::string, int>{{"k", 1}, {"a", 2}, {"z", 3}}),
        R"(["a": 2, "k": 1, "z": 3])");
    EXPECT_EQ(describe(std::map<int, std::string>{{10, "x"}, {2, "y"}}), R"([2: "y", 10: "x"])");
}

TEST(Describe, PrintsSetsSortedByPrintedForm)
{
    EXPECT_EQ(describe(std::unordered_set<std::string>{"b", "c", "a"}), R"(["a", "b", "c"])");
    EXPECT_EQ(describe(std::set<int>{3, 1}), "[1, 3]");
}

TEST(Describe, PrintsPairsAndTuplesInParentheses)
{
    EXPECT_EQ(describe(std::pair(1, "a")), R"((1, "a"))");
    EXPECT_EQ(describe(std::tuple<>()), "()");
    EXPECT_EQ(debugDescribe(std::tuple(true, 1.0, std::vector{2})), "(true, 1.0, [2])");
}

TEST(Describe, PrintsWhatAnOptionalHolds)
{
    EXPECT_EQ(describe(std::optional<std::string>("a")), "a");
    EXPECT_EQ(debugDescribe(std::optional<std::string>("a")), "\"a\"");
    EXPECT_EQ(describe(std::optional<int>()), "none");
    EXPECT_EQ(describe(std::vector<std::optional<int>>{1, std::nullopt}), "[1, none]");
}

TEST(Describe, PrintsWhatAPointerRefersTo)
{
    const Ref<app::Shape> circle = std::make_shared<app::Circle>();
    const app::Shape* pointer = circle.get();

    EXPECT_EQ(describe(circle), "a circle");
    EXPECT_EQ(describe(pointer), "a circle");
    EXPECT_EQ(debugDescribe(circle), "Circle(a circle)");
    EXPECT_EQ(describe(Ref<app::Shape>()), "none");
    EXPECT_EQ(debugDescribe(static_cast<app::Shape*>(nullptr)), "none");
}

TEST(Describe, PrintsWhatAVariantHolds)
{
    using Choice = std::variant<int, std::string>;

    EXPECT_EQ(describe(Choice("a")), "a");
    EXPECT_EQ(debugDescribe(Choice("a")), "\"a\"");
    EXPECT_EQ(describe(std::vector<Choice>{1, "a"}), R"([1, "a"])");
}

TEST(Describe, PrintsNothingToReferToAsNone)
{
    EXPECT_EQ(describe(nullptr), "none");
    EXPECT_EQ(debugDescribe(nullptr), "none");
}

TEST(Describe, EndsForWhatConsistsOfItsOwnKind) { EXPECT_EQ(describe(std::filesystem::path("a/b")), "path"); }

TEST(Describe, PrintsBytesByTheirCount)
{
    EXPECT_EQ(describe(Data()), "0 bytes");
    EXPECT_EQ(describe(dataFromText("a")), "1 byte");
    EXPECT_EQ(debugDescribe(dataFromText("abc")), "3 bytes");
}

TEST(Describe, AsksATypeForItsOwnForms)
{
    EXPECT_EQ(describe(app::Person{"Ada"}), "Ada");
    EXPECT_EQ(debugDescribe(app::Person{"Ada"}), "Person(Ada)");
    EXPECT_EQ(describe(app::Secret()), "shown");
    EXPECT_EQ(debugDescribe(app::Secret()), "<secret>");
    EXPECT_EQ(describe(std::vector{app::Person{"Ada"}}), "[Person(Ada)]");
}

TEST(Describe, PrintsATypeThatSaysNothingByItsName)
{
    EXPECT_EQ(describe(app::Plain()), "Plain");
    EXPECT_EQ(debugDescribe(app::Plain()), "Plain");
}

TEST(Describe, PrintsEnumerationsByRawValueOrDescription)
{
    EXPECT_EQ(describe(app::Level::Low), "Level(2)");
    EXPECT_EQ(debugDescribe(app::Level::Low), "Level(2)");
    EXPECT_EQ(describe(app::Negative), "Old(-3)");
    EXPECT_EQ(describe(app::Mood::Glad), "glad");
    EXPECT_EQ(debugDescribe(app::Mood::Glad), "Mood(glad)");
    EXPECT_EQ(describe(std::byte(255)), "255");
}

TEST(Describe, PrintsExceptionsByWhatTheySay)
{
    const app::Failure failure("no network");
    const std::exception& seenAsBase = failure;

    EXPECT_EQ(describe(failure), "no network");
    EXPECT_EQ(debugDescribe(failure), "Failure(no network)");
    EXPECT_EQ(debugDescribe(seenAsBase), "Failure(no network)");
}

TEST(Describe, PrintsUntypedAddressesInHexadecimal)
{
    EXPECT_EQ(describe(reinterpret_cast<void*>(std::uintptr_t(0xBEEF))), "0xbeef");
    EXPECT_EQ(describe(static_cast<void*>(nullptr)), "none");
}
