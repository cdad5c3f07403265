#include "Orrenby/Platform/Coding/Encodable.hpp"

#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include <gmock/gmock.h>
#include <limits>

using namespace orrenby;

namespace {

//! [Encoding by hand]
class Person {
public:
    explicit Person(std::string name)
        : m_name(std::move(name))
    {}

    void encode(const Encoder& encoder) const
    {
        auto container = encoder.container();
        container.encode(m_name, "name");
        container.encodeIfPresent(m_age, "age");
        auto address = container.nestedContainer("address");
        address.encode("London", "city");
    }

private:
    std::string m_name;
    std::optional<int> m_age;
};
//! [Encoding by hand]

/// Encodes what a function writes.
template <class F> struct Written {
    F function;
    void encode(const Encoder& encoder) const { function(encoder); }
};

template <class F> std::string written(F function) { return JSONEncoder().encodeText(Written<F>{function}); }

enum class Level { Low = 1, High = 5 };

struct ServiceName {
    std::string stringValue;
};

} // namespace

template <> inline constexpr Level orrenby::allCases<Level>[] = {Level::Low, Level::High};

TEST(Encodable, LetsATypeEncodeItself)
{
    EXPECT_EQ(JSONEncoder().encodeText(Person("Ada")), R"({"name":"Ada","address":{"city":"London"}})");
}

TEST(Encodable, EncodesTheRawValue)
{
    EXPECT_EQ(JSONEncoder().encodeText(std::vector{Level::High, Level::Low}), "[5,1]");
}

TEST(Encodable, TakesTheLastOfRepeatedMembers)
{
    EXPECT_EQ(written([](const Encoder& encoder) {
        auto container = encoder.container();
        container.encode(1, "a");
        container.encode(2, "b");
        container.encode("x", "a");
    }),
        R"({"a":"x","b":2})");
    EXPECT_EQ(written([](const Encoder& encoder) {
        auto container = encoder.container();
        for (int number = 0; number < 12; ++number)
            container.encode(number, std::to_string(number % 11));
    }),
        R"({"0":11,"1":1,"2":2,"3":3,"4":4,"5":5,"6":6,"7":7,"8":8,"9":9,"10":10})");
}

TEST(Encodable, GoesOnWithAContainerThatIsAskedForAgain)
{
    EXPECT_EQ(written([](const Encoder& encoder) {
        encoder.container().encode(1, "a");
        encoder.container().encode(2, "b");
    }),
        R"({"a":1,"b":2})");
}

TEST(Encodable, FillsNestedContainersInAnyOrder)
{
    EXPECT_EQ(written([](const Encoder& encoder) {
        auto container = encoder.container();
        auto list = container.nestedUnkeyedContainer("list");
        auto object = container.nestedContainer("object");
        container.encode(0, "last");
        object.encode(1, "a");
        list.encode(2);
        auto inner = list.nestedContainer();
        object.encodeNil("b");
        list.encodeNil();
        inner.encode(3, "deep");
        list.encode("text");
    }),
        R"({"list":[2,{"deep":3},null,"text"],"object":{"a":1,"b":null},"last":0})");
}

TEST(Encodable, EncodesABaseUnderItsOwnKey)
{
    EXPECT_EQ(written([](const Encoder& encoder) {
        auto container = encoder.container();
        Person("Base").encode(container.superEncoder());
        container.superEncoder("empty");
        encoder.container().encode(1, "own");
    }),
        R"({"super":{"name":"Base","address":{"city":"London"}},"empty":{},"own":1})");
}

TEST(Encodable, MakesAnEmptyObjectOfAValueThatEncodesNothing)
{
    EXPECT_EQ(written([](const Encoder&) {}), "{}");
    EXPECT_EQ(written([](const Encoder& encoder) { encoder.unkeyedContainer(); }), "[]");
}

TEST(Encodable, StandsForAnotherValue)
{
    EXPECT_EQ(written([](const Encoder& encoder) {
        encoder.singleValueContainer().encode(std::vector<int>{1, 2});
    }),
        "[1,2]");
    EXPECT_EQ(written([](const Encoder& encoder) { encoder.singleValueContainer().encodeNil(); }), "null");
    EXPECT_EQ(
        written([](const Encoder& encoder) { encoder.singleValueContainer().encode("text"); }), R"("text")");
}

TEST(Encodable, LeavesNothingOfAMemberThatFailed)
{
    EXPECT_EQ(written([](const Encoder& encoder) {
        auto container = encoder.container();
        container.encode(1, "a");
        EXPECT_THROW(container.encode(std::vector<double>{1, std::numeric_limits<double>::infinity()}, "b"),
            EncodingError);
        EXPECT_THROW(container.encode("\xFF", "b"), EncodingError);
        container.encode(2, "c");
        auto list = container.nestedUnkeyedContainer("list");
        EXPECT_THROW(list.encode(std::numeric_limits<double>::infinity()), EncodingError);
        list.encode(3);
    }),
        R"({"a":1,"c":2,"list":[3]})");
}

TEST(Encodable, KnowsItsPath)
{
    written([](const Encoder& encoder) {
        auto list = encoder.container().nestedUnkeyedContainer("a");
        list.encode(0);
        const auto inner = list.superEncoder();

        EXPECT_THAT(inner.codingPath(), ::testing::ElementsAre(CodingKey("a"), CodingKey::place(1)));
        EXPECT_EQ(list.count(), 2U);
    });
}

TEST(Encodable, TakesKeysOfATypeOfOnesOwn)
{
    EXPECT_EQ(written([](const Encoder& encoder) {
        encoder.container<ServiceName>().encode(1, ServiceName{"user"});
    }),
        R"({"user":1})");
}

TEST(EncodableDeathTest, HasOneForm)
{
    EXPECT_DEATH(written([](const Encoder& encoder) {
        encoder.unkeyedContainer();
        encoder.container();
    }),
        "A value was encoded in two forms at once: file Platform/Encoder, line 14");
}
