#include "Orrenby/Utilities/Identifier.hpp"

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <sstream>
#include <unordered_set>

using namespace orrenby;

namespace house {

//! [Identifying]
struct Person {
    using IdentifierType = std::string;

    Identifier<Person> identifier = "";
    std::string name;

    friend bool operator==(const Person&, const Person&) = default;
};

struct Room {
    using IdentifierType = std::int64_t;

    Identifier<Room> identifier = 0;
    Identifier<Person> keeper = ""; // no room is taken for it

    friend bool operator==(const Room&, const Room&) = default;
};
//! [Identifying]

/// Has identifiers that are made from nothing but themselves, and no form in JSON.
struct Badge {
    class IdentifierType {
    public:
        explicit IdentifierType(double weight)
            : m_weight(weight)
        {}
        double weight() const { return m_weight; }
        friend bool operator==(const IdentifierType&, const IdentifierType&) = default;

    private:
        double m_weight;
    };
    friend bool operator==(const Badge&, const Badge&) = default;
};

struct Grade {
    using IdentifierType = char32_t;
    friend bool operator==(const Grade&, const Grade&) = default;
};

struct Shelf {
    using IdentifierType = std::uint8_t;
    friend bool operator==(const Shelf&, const Shelf&) = default;
};

struct NotHashed {
    using IdentifierType = std::string;
    friend bool operator==(const NotHashed&, const NotHashed&) = default;
};

} // namespace house

namespace {

using namespace house;

template <class T>
concept TellsWhetherItIsEmpty = requires(const T& value)
{
    value.isEmpty();
};

template <class Value> std::size_t hashOf(const Value& value) { return std::hash<Value>{}(value); }

} // namespace

template <> struct std::hash<Person> {
    std::size_t operator()(const Person& person) const { return hashOf(person.identifier); }
};
template <> struct std::hash<Room> {
    std::size_t operator()(const Room& room) const { return hashOf(room.identifier); }
};
template <> struct std::hash<Badge> {
    std::size_t operator()(const Badge&) const { return 1; }
};
template <> struct std::hash<Badge::IdentifierType> {
    std::size_t operator()(const Badge::IdentifierType& raw) const { return hashOf(raw.weight()); }
};
template <> struct std::hash<Grade> {
    std::size_t operator()(const Grade&) const { return 1; }
};
template <> struct std::hash<Shelf> {
    std::size_t operator()(const Shelf&) const { return 1; }
};

TEST(Identifier, WrapsARawValue)
{
    const Identifier<Person> person(std::string("ada"));

    EXPECT_EQ(person.rawValue(), "ada");
    EXPECT_EQ(Identifier<Person>::make("ada"), person);
    EXPECT_EQ(Identifier<Badge>(Badge::IdentifierType(1.5)).rawValue().weight(), 1.5);
}

TEST(Identifier, IsWrittenAsATextLiteral)
{
    const Identifier<Person> person = "ada";

    EXPECT_EQ(person.rawValue(), "ada");
    EXPECT_EQ(person, "ada");
    EXPECT_NE(person, "bob");
}

TEST(Identifier, IsWrittenAsALiteralOfSeveralScalarValues)
{
    const Identifier<Person> flag = "\U0001F1EB\U0001F1F7";

    EXPECT_EQ(flag.rawValue(), "\xF0\x9F\x87\xAB\xF0\x9F\x87\xB7");
}

TEST(Identifier, IsWrittenAsACharacterLiteral)
{
    const Identifier<Grade> grade = U'\U0001F600';

    EXPECT_EQ(grade.rawValue(), char32_t(0x1F600));
}

TEST(Identifier, IsWrittenAsAnIntegerLiteral)
{
    const Identifier<Room> room = 7;
    const Identifier<Shelf> shelf = 255;

    EXPECT_EQ(room.rawValue(), 7);
    EXPECT_EQ(room, 7);
    EXPECT_EQ(shelf.rawValue(), 255);
    EXPECT_EQ(Identifier<Room>(std::numeric_limits<std::int64_t>::min()).rawValue(),
        std::numeric_limits<std::int64_t>::min());
}

TEST(Identifier, TakesTheLiteralsOfItsRawValueAlone)
{
    EXPECT_FALSE((std::is_constructible_v<Identifier<Person>, int>));
    EXPECT_FALSE((std::is_convertible_v<char, Identifier<Person>>));
    EXPECT_FALSE((std::is_constructible_v<Identifier<Room>, const char*>));
    EXPECT_FALSE((std::is_convertible_v<bool, Identifier<Room>>));
    EXPECT_FALSE((std::is_convertible_v<double, Identifier<Room>>));
    EXPECT_FALSE((std::is_convertible_v<const char*, Identifier<Badge>>));
    EXPECT_FALSE((std::is_convertible_v<int, Identifier<Badge>>));
    EXPECT_FALSE((std::is_convertible_v<char, Identifier<Grade>>));
}

TEST(Identifier, IsNoIdentifierOfAnythingElse)
{
    struct Guest {
        using IdentifierType = std::string;
    };

    EXPECT_FALSE((std::is_same_v<Identifier<Person>, Identifier<Guest>>));
    EXPECT_FALSE((std::is_constructible_v<Identifier<Person>, Identifier<Guest>>));
    EXPECT_FALSE((std::is_constructible_v<Identifier<Person>, Identifier<Room>>));
    EXPECT_FALSE((std::is_convertible_v<std::string, Identifier<Person>>));
}

TEST(Identifier, EqualsAndHashesByItsRawValue)
{
    const Identifier<Person> first = "ada", same = "ada", other = "bob";

    EXPECT_EQ(first, same);
    EXPECT_NE(first, other);
    EXPECT_EQ(hashOf(first), hashOf(same));
    EXPECT_EQ(hashOf(first), hashOf(std::string("ada")));
    EXPECT_EQ(hashOf(Identifier<Room>(7)), hashOf(std::int64_t(7)));
}

TEST(Identifier, IsAKey)
{
    const std::unordered_set<Identifier<Person>> people = {"ada", "bob", "ada"};

    EXPECT_EQ(people.size(), 2u);
    EXPECT_TRUE(people.contains("bob"));
}

TEST(Identifier, IsEmptyWhenItsTextIs)
{
    EXPECT_TRUE(Identifier<Person>("").isEmpty());
    EXPECT_FALSE(Identifier<Person>(" ").isEmpty());
    EXPECT_TRUE(TellsWhetherItIsEmpty<Identifier<Person>>);
    EXPECT_FALSE(TellsWhetherItIsEmpty<Identifier<Room>>);
}

TEST(Identifier, IsEncodedAsItsRawValue)
{
    EXPECT_EQ(JSONEncoder().encodeText(Identifier<Person>("abc")), R"("abc")");
    EXPECT_EQ(JSONEncoder().encodeText(Room{7, "ada"}), R"({"identifier":7,"keeper":"ada"})");
}

TEST(Identifier, IsDecodedFromItsRawValue)
{
    const auto room = JSONDecoder().decode<Room>(R"({"identifier": 7, "keeper": "ada"})");

    EXPECT_EQ(room, (Room{7, "ada"}));
    EXPECT_EQ(JSONDecoder().decode<Identifier<Person>>(R"("abc")"), "abc");
    EXPECT_EQ(
        JSONDecoder().decode<std::vector<Identifier<Room>>>("[1, 2]"), (std::vector<Identifier<Room>>{1, 2}));
}

TEST(Identifier, PassesOnWhyItsRawValueIsNotDecoded)
{
    try {
        JSONDecoder().decode<Room>(R"({"identifier": "7", "keeper": "ada"})");
        FAIL();
    } catch (const DecodingError& error) {
        EXPECT_EQ(error.kind(), DecodingError::Kind::TypeMismatch);
        EXPECT_EQ(error.typeName(), "Int");
        EXPECT_THAT(error.context().codingPath, testing::ElementsAre(CodingKey("identifier")));
    }
    EXPECT_THROW(JSONDecoder().decode<Identifier<Shelf>>("256"), DecodingError);
    EXPECT_THROW(JSONDecoder().decode<Identifier<Person>>("null"), DecodingError);
}

TEST(Identifier, IsCodedOnlyWhereItsRawValueIs)
{
    EXPECT_TRUE(DecodableType<Identifier<Person>>);
    EXPECT_TRUE(EncodableType<Identifier<Room>>);
    EXPECT_FALSE(DecodableType<Identifier<Badge>>);
    EXPECT_FALSE(EncodableType<Identifier<Badge>>);
}

TEST(Identifier, IsRepresentedByItsRawValue)
{
    EXPECT_TRUE(RawRepresentable<Identifier<Person>>);
    EXPECT_EQ(RawRepresentation<Identifier<Room>>::make(7), Identifier<Room>(7));
    EXPECT_EQ(RawRepresentation<Identifier<Room>>::rawValue(7), 7);
}

TEST(Identifier, AsksEntitiesForAHash)
{
    EXPECT_TRUE(Identifiable<Person>);
    EXPECT_TRUE(Identifiable<Badge>);
    EXPECT_FALSE(Identifiable<NotHashed>);
    EXPECT_FALSE(Identifiable<std::string>);
}

TEST(Identifier, Prints)
{
    std::ostringstream stream;
    stream << Identifier<Person>("ada");

    EXPECT_EQ(stream.str(), "ada");
    EXPECT_EQ(describe(Identifier<Room>(7)), "7");
    EXPECT_EQ(debugDescribe(Identifier<Person>("ada")), R"(Identifier<Person>("ada"))");
    EXPECT_EQ(typeName<Identifier<Room>>(), "Identifier<Room>");
}

TEST(Identifier, IsKeptInAnAny)
{
    const Any any = Identifier<Person>("ada");

    EXPECT_EQ(any, Any(Identifier<Person>("ada")));
    EXPECT_NE(any, Any("ada"));
    EXPECT_EQ(any.cast<Identifier<Person>>(), Identifier<Person>("ada"));
}

TEST(Identifier, IsAsLargeAsItsRawValue)
{
    EXPECT_EQ(sizeof(Identifier<Room>), sizeof(std::int64_t));
    EXPECT_TRUE(std::is_trivially_copyable_v<Identifier<Room>>);
}

TEST(IdentifierDeathTest, TakesNoIntegerThatDoesNotFit)
{
    const auto message = "Fatal error: The integer does not fit in the raw value: file Utilities/Identifier";

    EXPECT_DEATH(static_cast<void>(Identifier<Shelf>(256)), message);
    EXPECT_DEATH(static_cast<void>(Identifier<Shelf>(-1)), message);
    EXPECT_DEATH(static_cast<void>(Identifier<Room>(std::numeric_limits<std::uint64_t>::max())), message);
}
