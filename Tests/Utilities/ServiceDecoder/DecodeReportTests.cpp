#include "Orrenby/Utilities/ServiceDecoder/DecodeReport.hpp"

#include "Orrenby/Platform/Coding/DescribedCoding.hpp"
#include "Orrenby/Testing/LogCapture.hpp"
#include "ServiceParts.hpp"
#include <array>
#include <boost/describe/class.hpp>
#include <gmock/gmock.h>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <vector>

using namespace orrenby;
using orrenby::testing::LogCapture;
using orrenby::testing::Settings;
using orrenby::testing::User;
using orrenby::testing::wholeResponse;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// `path, line:column, kind of error`, which is what tests compare.
std::vector<std::string> failures(const DecodingReport& report)
{
    std::vector<std::string> lines;
    for (const auto& failure : report.failures) {
        std::string path;
        for (const auto& key : failure.codingPath)
            path += (path.empty() ? "" : " > ") + key.stringValue();
        const auto* error = failure.error.cast<DecodingError>();
        lines.push_back(path + ", " + std::to_string(failure.position.line) + ":"
            + std::to_string(failure.position.column) + ", "
            + (error != nullptr ? error->description().substr(0, error->description().find('('))
                                : failure.error.description()));
    }
    return lines;
}

template <class T> std::vector<std::string> failuresOf(std::string_view text)
{
    const auto report = decodeReport<T>(text);
    EXPECT_EQ(report.isEmpty(), JSONDecoder().tryDecode<T>(text).isSuccess()) << text;
    return failures(report);
}

struct Everything {
    std::optional<User> user;
    std::vector<User> users;
    std::array<int, 2> pair{};
    std::map<std::string, int> counts;
    std::map<int, bool> flags;
    std::set<std::string> tags;
    std::unique_ptr<int> owned;
    std::shared_ptr<const int> shared;
    std::vector<std::vector<double>> table;
};

constexpr std::string_view nothingElse
    = R"("pair": [1, 2], "counts": {}, "flags": {}, "tags": [], "owned": null, "shared": null, "table": [])";

std::string everything(std::string_view members)
{
    return "{" + std::string(members) + ",\n" + std::string(nothingElse) + "}";
}

struct Tree {
    int value = 0;
    std::vector<Tree> children;
};

class Base {
    int m_count = 0;
    BOOST_DESCRIBE_CLASS(Base, (), (), (), (m_count))
};
class Derived : public Base {
    std::string m_name;
    std::optional<bool> m_flag;
    BOOST_DESCRIBE_CLASS(Derived, (Base), (), (), (m_name, m_flag))
};

/// Decodes itself, from two members of which it wants the first.
struct ByHand {
    int first = 0;
    static ByHand init(const Decoder& decoder)
    {
        const auto members = decoder.container();
        const auto first = members.decode<int>("first");
        members.decode<int>("second");
        return {first};
    }
};

struct Refusing {
    static Refusing init(const Decoder&) { throw std::runtime_error("refused"); }
};

/// A text that holds JSON of its own.
struct Embedded {
    static Embedded init(const Decoder& decoder)
    {
        JSONDecoder().decode<int>(decoder.singleValueContainer().decode<std::string>());
        return {};
    }
};

enum class Size { Small = 1, Large = 2 };

/// An aggregate whose decoding is its own, whatever its fields are.
struct Celsius {
    double degrees = 0;
    int scale = 0;
};

} // namespace

template <> struct orrenby::Decodable<Celsius> {
    static Celsius decode(const Decoder& decoder)
    {
        return {decoder.singleValueContainer().decode<double>(), 1};
    }
};

template <> struct orrenby::RawRepresentation<Size> {
    using RawValue = int;
    static std::optional<Size> make(int raw)
    {
        return raw == 1 || raw == 2 ? std::optional(static_cast<Size>(raw)) : std::nullopt;
    }
};

TEST(DecodeReport, IsEmptyForADocumentThatDecodes)
{
    EXPECT_THAT(failuresOf<User>(R"({"name": "Ann", "age": 41, "more": []})"), IsEmpty());
    EXPECT_THAT(failuresOf<std::vector<int>>("[]"), IsEmpty());
    EXPECT_THAT(failuresOf<Everything>(everything(R"("users": [])")), IsEmpty());
    EXPECT_THAT(failuresOf<Everything>(everything(R"("user": null, "users": [])")), IsEmpty());
    EXPECT_EQ(decodeReport<int>("7").description(), "");
}

TEST(DecodeReport, FindsEverythingThatIsWrong)
{
    //! [Finding everything that is wrong]
    struct Station {
        std::string name;
        double level = 0;
        std::vector<int> hours;
    };

    const auto report = decodeReport<std::vector<Station>>(R"([
  {"name": "Mill", "level": "high", "hours": [6, 12.5, null]},
  {"level": 2.1, "hours": []}
])");

    const auto text = report.description();
    //! [Finding everything that is wrong]

    EXPECT_EQ(text,
        R"(Index 0 > level, line 2, column 29: Expected Double but found a text: …name": "Mill", "level": "high", "hours": [6, 12.5, null]}, {"lev…
Index 0 > hours > Index 1, line 2, column 50: The number 12.5 does not fit in Int32: …": "high", "hours": [6, 12.5, null]}, {"level": 2.1, "hours": []…
Index 0 > hours > Index 2, line 2, column 56: Expected Int32 but found null: …gh", "hours": [6, 12.5, null]}, {"level": 2.1, "hours": []} ]
Index 1, line 3, column 3: No value under the key "name": …urs": [6, 12.5, null]}, {"level": 2.1, "hours": []} ])");
}

TEST(DecodeReport, TellsWhatDecodingWouldThrowFirst)
{
    constexpr std::string_view text = R"({"name": 1, "age": "x"})";
    std::string thrown;
    try {
        JSONDecoder().decode<User>(text);
    } catch (const DecodingError& error) {
        thrown = error.description();
    }

    const auto report = decodeReport<User>(text);

    ASSERT_EQ(report.failures.size(), 2U);
    EXPECT_EQ(report.failures[0].error.cast<DecodingError>()->description(), thrown);
    EXPECT_THAT(report.failures[0].codingPath, ElementsAre(CodingKey("name")));
    EXPECT_EQ(report.failures[0].position, (TextPosition{9, 1, 10}));
    EXPECT_EQ(report.failures[0].excerpt, text);
}

TEST(DecodeReport, LooksIntoFields)
{
    EXPECT_THAT(failuresOf<User>(R"({"age": "x", "name": 1})"),
        ElementsAre("name, 1:22, typeMismatch", "age, 1:9, typeMismatch"));
    EXPECT_THAT(failuresOf<User>("{}"), ElementsAre(", 1:1, keyNotFound", ", 1:1, keyNotFound"));
    EXPECT_THAT(failuresOf<User>("[]"), ElementsAre(", 1:1, typeMismatch"));
    EXPECT_THAT(failuresOf<User>("null"), ElementsAre(", 1:1, valueNotFound"));
}

TEST(DecodeReport, LooksIntoLists)
{
    EXPECT_THAT(failuresOf<std::vector<int>>(R"([1, "a", 2, null, []])"),
        ElementsAre(
            "Index 1, 1:5, typeMismatch", "Index 3, 1:13, valueNotFound", "Index 4, 1:19, typeMismatch"));
    EXPECT_THAT(failuresOf<std::vector<bool>>("[true, 1, false]"), ElementsAre("Index 1, 1:8, typeMismatch"));
    EXPECT_THAT(failuresOf<std::set<std::string>>(R"(["a", 1, 2])"),
        ElementsAre("Index 1, 1:7, typeMismatch", "Index 2, 1:10, typeMismatch"));
    EXPECT_THAT(failuresOf<std::vector<int>>("{}"), ElementsAre(", 1:1, typeMismatch"));
}

TEST(DecodeReport, LooksIntoListsInLists)
{
    EXPECT_THAT(failuresOf<std::vector<std::vector<int>>>(R"([[1, "a"], 7, [true]])"),
        ElementsAre("Index 0 > Index 1, 1:6, typeMismatch", "Index 1, 1:12, typeMismatch",
            "Index 2 > Index 0, 1:16, typeMismatch"));
}

TEST(DecodeReport, LooksIntoArraysOfAWrongLengthToo)
{
    using Pair = std::array<int, 2>;

    EXPECT_THAT(failuresOf<Pair>("[1, 2]"), IsEmpty());
    EXPECT_THAT(failuresOf<Pair>(R"([1, "b"])"), ElementsAre("Index 1, 1:5, typeMismatch"));
    EXPECT_THAT(
        failuresOf<Pair>(R"(["a"])"), ElementsAre(", 1:1, dataCorrupted", "Index 0, 1:2, typeMismatch"));
    EXPECT_THAT(failuresOf<Pair>("7"), ElementsAre(", 1:1, typeMismatch"));
}

TEST(DecodeReport, LooksIntoMaps)
{
    using Counts = std::map<std::string, int>;
    using Flags = std::map<int, bool>;

    EXPECT_THAT(failuresOf<Counts>(R"({"a": 1, "b": "x", "c": null})"),
        ElementsAre("b, 1:15, typeMismatch", "c, 1:25, valueNotFound"));
    EXPECT_THAT(failuresOf<Flags>(R"({"1": true, "x": false, "2": 0, "y": 0})"),
        ElementsAre("x, 1:18, typeMismatch", "2, 1:30, typeMismatch", "y, 1:38, typeMismatch",
            "y, 1:38, typeMismatch"));
    EXPECT_THAT(failuresOf<Counts>("[]"), ElementsAre(", 1:1, typeMismatch"));
}

TEST(DecodeReport, LooksIntoOptionalsAndPointers)
{
    EXPECT_THAT(failuresOf<std::optional<User>>("null"), IsEmpty());
    EXPECT_THAT(failuresOf<std::optional<User>>(R"({"name": 1, "age": null})"),
        ElementsAre("name, 1:10, typeMismatch", "age, 1:20, valueNotFound"));
    EXPECT_THAT(failuresOf<std::unique_ptr<std::vector<int>>>("[true, false]"),
        ElementsAre("Index 0, 1:2, typeMismatch", "Index 1, 1:8, typeMismatch"));
    EXPECT_THAT(failuresOf<std::shared_ptr<const int>>("true"), ElementsAre(", 1:1, typeMismatch"));
    EXPECT_THAT(failuresOf<std::shared_ptr<const int>>("null"), IsEmpty());
}

TEST(DecodeReport, LooksIntoEverythingAtOnce)
{
    const auto text = R"({"user": {"name": 1},
 "users": [{"name": "a", "age": 1}, {"age": 1.5}], "pair": [true],
 "counts": {"a": []}, "flags": {"x": 1}, "tags": [1],
 "owned": "o", "shared": "s", "table": [[1], [true, 2, "t"]]})";

    EXPECT_THAT(failuresOf<Everything>(text),
        ElementsAre("user > name, 1:19, typeMismatch", "user, 1:10, keyNotFound",
            "users > Index 1, 2:37, keyNotFound", "users > Index 1 > age, 2:45, dataCorrupted",
            "pair, 2:60, dataCorrupted", "pair > Index 0, 2:61, typeMismatch",
            "counts > a, 3:18, typeMismatch", "flags > x, 3:38, typeMismatch",
            "flags > x, 3:38, typeMismatch", "tags > Index 0, 3:51, typeMismatch",
            "owned, 4:11, typeMismatch", "shared, 4:26, typeMismatch",
            "table > Index 1 > Index 0, 4:47, typeMismatch",
            "table > Index 1 > Index 2, 4:56, typeMismatch"));
}

TEST(DecodeReport, LooksIntoDescribedClasses)
{
    EXPECT_THAT(failuresOf<Derived>(R"({"count": 1, "name": "a"})"), IsEmpty());
    EXPECT_THAT(failuresOf<Derived>(R"({"count": "1", "flag": 7})"),
        ElementsAre("count, 1:11, typeMismatch", ", 1:1, keyNotFound", "flag, 1:24, typeMismatch"));
}

TEST(DecodeReport, LooksIntoTypesThatHoldThemselves)
{
    EXPECT_THAT(
        failuresOf<Tree>(
            R"({"value": 1, "children": [{"value": "x", "children": [{"value": 2}]}, {"children": []}]})"),
        ElementsAre("children > Index 0 > value, 1:37, typeMismatch",
            "children > Index 0 > children > Index 0, 1:55, keyNotFound",
            "children > Index 1, 1:71, keyNotFound"));
}

TEST(DecodeReport, TellsTheFirstFailureOfATypeThatDecodesItself)
{
    EXPECT_THAT(failuresOf<ByHand>(R"({"first": 1, "second": 2})"), IsEmpty());
    EXPECT_THAT(failuresOf<std::vector<ByHand>>(R"([{"first": "a", "second": "b"}, {"first": 1}])"),
        ElementsAre("Index 0 > first, 1:12, typeMismatch", "Index 1, 1:33, keyNotFound"));
}

TEST(DecodeReport, TellsWhateverATypeThrows)
{
    EXPECT_THAT(failuresOf<std::vector<Refusing>>("[1, 2]"),
        ElementsAre("Index 0, 1:2, refused", "Index 1, 1:5, refused"));
}

TEST(DecodeReport, PlacesFailuresOfATextInTheTextWhereItStands)
{
    EXPECT_THAT(failuresOf<std::vector<Embedded>>(R"(["1", "\n\n true"])"),
        ElementsAre("Index 1, 1:7, typeMismatch"));
}

TEST(DecodeReport, DoesNotLookIntoAnAggregateWhoseDecodingIsItsOwn)
{
    EXPECT_THAT(failuresOf<std::vector<Celsius>>("[21.5, true, {}]"),
        ElementsAre("Index 1, 1:8, typeMismatch", "Index 2, 1:14, typeMismatch"));
}

TEST(DecodeReport, TellsOfRawValuesThatStandForNothing)
{
    EXPECT_THAT(failuresOf<std::vector<Size>>("[1, 3, true]"),
        ElementsAre("Index 1, 1:5, dataCorrupted", "Index 2, 1:8, typeMismatch"));
}

TEST(DecodeReport, FollowsTheStrategiesOfTheDecoder)
{
    struct Entry {
        int reportCount = 0;
        Date createdAt;
    };
    JSONDecoder decoder;
    decoder.setKeyDecodingStrategy(JSONDecoder::KeyDecodingStrategy::convertFromSnakeCase());
    decoder.setDateDecodingStrategy(JSONDecoder::DateDecodingStrategy::iso8601());

    EXPECT_TRUE(decodeReport<Entry>(R"({"report_count": 1, "created_at": "2024-01-01T00:00:00Z"})", decoder)
                    .isEmpty());
    EXPECT_THAT(failures(decodeReport<Entry>(R"({"report_count": "1", "created_at": "soon"})", decoder)),
        ElementsAre("reportCount, 1:18, typeMismatch", "createdAt, 1:37, dataCorrupted"));
}

TEST(DecodeReport, TellsOfWhatIsNoJSONAsOneFailure)
{
    const auto report = decodeReport<User>("{\"name\":\n nul}");

    EXPECT_THAT(failures(report), ElementsAre(", 2:2, dataCorrupted"));
    EXPECT_EQ(report.failures[0].excerpt, "{\"name\": nul}");
    EXPECT_THAT(failuresOf<User>(""), ElementsAre(", 1:1, dataCorrupted"));
    EXPECT_THAT(failuresOf<User>(std::string(600, '[')), ElementsAre(", 1:513, dataCorrupted"));
}

TEST(DecodeReport, ShowsTextInOtherEncodings)
{
    std::string text = "\xFF\xFE";
    for (const char unit : std::string_view(R"({"name":"Ann","age":true})"))
        text += std::string({unit, '\0'});

    const auto report = decodeReport<User>(text);
    const auto cut = decodeReport<User>(text.substr(0, 21));

    EXPECT_THAT(failures(report), ElementsAre("age, 1:21, typeMismatch"));
    EXPECT_EQ(report.failures[0].excerpt, R"({"name":"Ann","age":true})");
    EXPECT_THAT(failures(cut), ElementsAre(", 1:10, dataCorrupted"));
    EXPECT_EQ(cut.failures[0].excerpt, R"({"name":")");
}

TEST(DecodeReport, StaysLinearInAListThatIsWrongThroughout)
{
    constexpr std::size_t count = 5'000;
    std::string text = "[";
    for (std::size_t number = 0; number < count; ++number)
        text += number == 0 ? R"({"age": "x", "name": 1})" : R"(, {"age": "x", "name": 1})";
    text += "]";

    const auto report = decodeReport<std::vector<User>>(text);

    ASSERT_EQ(report.failures.size(), 2 * count);
    EXPECT_EQ(report.failures.back().position, TextPosition::in(text, text.rfind("\"x\"")));
}

TEST(DecodeReport, ReportsOnAWholeResponse)
{
    const LogCapture log;
    int calls = 0;
    //! [Reporting on a response]
    ServiceDecoder services;
    services.register_<User>("user", [&](const User&) { ++calls; });
    services.register_<Settings>("settings", [&](const Settings&) { ++calls; });

    const auto report = decodeReport(
        services, R"({"settings": {"isDark": 1, "fontSize": "big"}, "user": {"name": "Ann"}})");
    //! [Reporting on a response]

    EXPECT_THAT(failures(report),
        ElementsAre("user, 1:56, keyNotFound", "settings > isDark, 1:25, typeMismatch",
            "settings > fontSize, 1:40, typeMismatch"));
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(log.count(), 0U);
}

TEST(DecodeReport, IgnoresMembersOfAResponseThatDecodingIgnores)
{
    ServiceDecoder services;
    services.register_<User>("user", [](const User&) {});
    services.register_<Settings>("settings", [](const Settings&) {});

    EXPECT_TRUE(decodeReport(services, wholeResponse).isEmpty());
    EXPECT_TRUE(decodeReport(services, R"({"user": null, "extra": 7})").isEmpty());
    EXPECT_TRUE(decodeReport(services, "{}").isEmpty());
}

TEST(DecodeReport, ReportsOnAResponseThatIsNoObject)
{
    ServiceDecoder services;
    services.register_<User>("user", [](const User&) {});

    EXPECT_THAT(failures(decodeReport(services, "[]")), ElementsAre(", 1:1, typeMismatch"));
    EXPECT_THAT(failures(decodeReport(services, "{\n")), ElementsAre(", 2:1, dataCorrupted"));
}

TEST(DecodeReport, FindsEveryObjectGoodWithoutARegistration)
{
    const ServiceDecoder services;

    EXPECT_TRUE(decodeReport(services, wholeResponse).isEmpty());
    EXPECT_FALSE(decodeReport(services, "7").isEmpty());
}

TEST(DecodeReport, IsAValue)
{
    const auto report = decodeReport<int>("true");

    EXPECT_EQ(report, decodeReport<int>("true"));
    EXPECT_FALSE(report == decodeReport<int>(" true"));
    EXPECT_EQ(report.description(), "the root, line 1, column 1: Expected Int32 but found a boolean: true");
}
