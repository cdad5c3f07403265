#include "Orrenby/Platform/Coding/Decodable.hpp"

#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

//! [Decoding by hand]
class Person {
public:
    static Person init(const Decoder& decoder)
    {
        const auto container = decoder.container();
        Person person;
        person.m_name = container.decode<std::string>("name");
        person.m_age = container.decodeIfPresent<int>("age");
        const auto address = container.nestedContainer("address");
        person.m_city = address.decode<std::string>("city");
        return person;
    }

    std::string description() const
    {
        return m_name + ", " + (m_age ? std::to_string(*m_age) : "?") + ", " + m_city;
    }

private:
    std::string m_name;
    std::optional<int> m_age;
    std::string m_city;
};
//! [Decoding by hand]

enum class Level { Low, High };

class Code {
public:
    using RawValue = std::string;
    static std::optional<Code> make(const std::string& raw)
    {
        return raw.size() == 2 ? std::optional(Code(raw)) : std::nullopt;
    }
    const std::string& rawValue() const { return m_raw; }

private:
    explicit Code(std::string raw)
        : m_raw(std::move(raw))
    {}
    std::string m_raw;
};

struct ServiceName {
    explicit ServiceName(std::string text)
        : stringValue(std::move(text))
    {}
    std::string stringValue;
};

/// Runs a function with a decoder for the text.
template <class F> struct Probe {
    static inline F* function = nullptr;
    static Probe init(const Decoder& decoder)
    {
        (*function)(decoder);
        return {};
    }
};

template <class F> void decoding(std::string_view text, F function)
{
    Probe<F>::function = &function;
    JSONDecoder().decode<Probe<F>>(text);
}

template <class F> std::string failure(F operation)
{
    try {
        operation();
        return "no failure";
    } catch (const DecodingError& error) {
        return error.description();
    }
}

struct Base {
    static Base init(const Decoder& decoder) { return {decoder.container().decode<int>("id")}; }
    int id;
};

} // namespace

template <> inline constexpr Level orrenby::allCases<Level>[] = {Level::Low, Level::High};

TEST(Decodable, LetsATypeDecodeItself)
{
    const auto text = R"({"name":"Ada","age":36,"address":{"city":"London"}})";

    EXPECT_EQ(JSONDecoder().decode<Person>(text).description(), "Ada, 36, London");
    EXPECT_EQ(JSONDecoder().decode<Person>(R"({"name":"A","age":null,"address":{"city":""}})").description(),
        "A, ?, ");
}

TEST(Decodable, TellsTheWholePathThroughNestedContainers)
{
    EXPECT_EQ(
        failure([] { JSONDecoder().decode<std::vector<Person>>(R"([{"name":"A","address":{"city":1}}])"); }),
        "typeMismatch(String, at Index 0 > address > city, line 1, column 32: Expected String but found a number)");
    EXPECT_EQ(failure([] { JSONDecoder().decode<Person>(R"({"name":"A","address":5})"); }),
        "typeMismatch(Dictionary<String, Any>, at address, line 1, column 23: Expected Dictionary<String, Any> but found a "
        "number)");
}

TEST(Decodable, MakesValuesFromTheirRawValues)
{
    EXPECT_EQ(JSONDecoder().decode<Level>("1"), Level::High);
    EXPECT_EQ(JSONDecoder().decode<Code>(R"("ab")").rawValue(), "ab");
    EXPECT_EQ(failure([] { JSONDecoder().decode<Level>("2"); }),
        "dataCorrupted(at the root, line 1, column 1: No Level has the raw value 2)");
    EXPECT_EQ(failure([] { JSONDecoder().decode<std::vector<Code>>(R"(["abc"])"); }),
        "dataCorrupted(at Index 0, line 1, column 2: No Code has the raw value \"abc\")");
    EXPECT_NE(failure([] { JSONDecoder().decode<Level>("\"1\""); }), "no failure");
}

TEST(Decodable, GivesMembersInAnyOrderAndAgain)
{
    decoding(R"({"a":1,"b":2,"c":3})", [](const Decoder& decoder) {
        const auto container = decoder.container();

        EXPECT_EQ(container.decode<int>("c"), 3);
        EXPECT_EQ(container.decode<int>("a"), 1);
        EXPECT_EQ(container.decode<int>("a"), 1);
        EXPECT_EQ(container.decode<int>("b"), 2);
        EXPECT_THAT(container.allKeys(), ElementsAre("a", "b", "c"));
    });
}

TEST(Decodable, TellsNullFromAbsent)
{
    decoding(R"({"null":null,"one":1})", [](const Decoder& decoder) {
        const auto container = decoder.container();

        EXPECT_TRUE(container.contains("null"));
        EXPECT_FALSE(container.contains("absent"));
        EXPECT_TRUE(container.decodeNil("null"));
        EXPECT_FALSE(container.decodeNil("one"));
        EXPECT_EQ(container.decodeIfPresent<int>("null"), std::nullopt);
        EXPECT_EQ(container.decodeIfPresent<int>("absent"), std::nullopt);
        EXPECT_EQ(container.decodeIfPresent<int>("one"), 1);
        EXPECT_EQ(container.decode<std::optional<int>>("null"), std::nullopt);
        EXPECT_EQ(failure([&] { container.decode<std::optional<int>>("absent"); }),
            "keyNotFound(absent, at the root, line 1, column 1: No value under the key \"absent\")");
        EXPECT_NE(failure([&] { container.decodeNil("absent"); }), "no failure");
        EXPECT_NE(failure([&] { container.nestedContainer("absent"); }), "no failure");
    });
}

TEST(Decodable, TakesKeysOfATypeOfOnesOwn)
{
    decoding(R"({"user":1,"settings":2})", [](const Decoder& decoder) {
        const auto container = decoder.container<ServiceName>();

        EXPECT_EQ(container.decode<int>(ServiceName("settings")), 2);
        EXPECT_EQ(container.allKeys()[0].stringValue, "user");
    });
}

TEST(Decodable, DecodesABaseFromTheMemberSuper)
{
    decoding(R"({"super":{"id":4},"other":{"id":5}})", [](const Decoder& decoder) {
        const auto container = decoder.container();

        EXPECT_EQ(Base::init(container.superDecoder()).id, 4);
        EXPECT_EQ(Base::init(container.superDecoder("other")).id, 5);
        EXPECT_THAT(container.superDecoder().codingPath(), ElementsAre("super"));
    });
    decoding("{}", [](const Decoder& decoder) {
        EXPECT_EQ(failure([&] { Base::init(decoder.container().superDecoder()); }),
            "valueNotFound(Dictionary<String, Any>, at super: Expected Dictionary<String, Any> but found null)");
    });
}

TEST(Decodable, TellsTheKindWithoutTrying)
{
    decoding(R"([null,true,1,"a",[],{}])", [](const Decoder& decoder) {
        auto list = decoder.unkeyedContainer();
        std::vector<JSONKind> kinds;
        while (!list.isAtEnd())
            kinds.push_back(list.superDecoder().kind());

        EXPECT_THAT(kinds,
            ElementsAre(JSONKind::Null, JSONKind::Bool, JSONKind::Number, JSONKind::Text, JSONKind::List,
                JSONKind::Object));
        EXPECT_EQ(decoder.singleValueContainer().kind(), JSONKind::List);
    });
}

TEST(Decodable, MakesErrorsForThePlaceThatATypeComplainsAbout)
{
    decoding(R"({"a":7})", [](const Decoder& decoder) {
        EXPECT_EQ(DecodingError::dataCorruptedError(decoder.singleValueContainer(), "Odd").description(),
            "dataCorrupted(at the root, line 1, column 1: Odd)");
        EXPECT_EQ(DecodingError::dataCorrupted(decoder.container().errorContext("a", "Odd")).description(),
            "dataCorrupted(at a, line 1, column 6: Odd)");
    });
}
