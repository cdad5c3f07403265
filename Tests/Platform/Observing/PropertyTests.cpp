#include "Orrenby/Platform/Observing/Property.hpp"

#include "Tests/Platform/Observing/ObservingParts.hpp"
#include <array>
#include <gmock/gmock.h>
#include <type_traits>

using namespace orrenby;
using namespace orrenby::tests;
using testing::ElementsAre;

namespace {

enum class Suit { Hearts, Spades };
enum class Unlisted { One, Two };

struct Point {
    int x = 0;
    int y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

class Card : public ObservableObject {
public:
    Property<Suit, "suit"> suit{*this, Suit::Spades};
    Property<std::optional<Suit>, "trump"> trump{*this};
    Property<Unlisted, "unlisted"> unlisted{*this, Unlisted::Two};
    Property<Point, "place"> place{*this};
    Property<std::optional<int>, "rank"> rank{*this};
    Property<std::vector<int>, "history"> history{*this, {1, 2}};
};

} // namespace

template <> inline constexpr auto orrenby::allCases<Suit> = std::array{Suit::Hearts, Suit::Spades};

TEST(Property, HoldsItsValue)
{
    //! [Declaring properties]
    class Song : public ObservableObject {
    public:
        Property<std::string, "title"> title{*this, "Untitled"};
        Property<int, "plays"> plays{*this};
    };
    Song song;

    song.title = "Morning";
    song.plays.set(song.plays + 1);

    EXPECT_EQ(song.title.get(), "Morning");
    EXPECT_EQ(song.valueForKey("plays"), Any(1));
    //! [Declaring properties]
}

TEST(Property, BeginsWithItsTypesOwnValue)
{
    const Card card;

    EXPECT_EQ(card.rank.get(), std::nullopt);
    EXPECT_EQ(card.place.get(), Point());
}

TEST(Property, TellsOfEqualValuesToo)
{
    Person person;
    const auto recorder = makeRecorder();
    person.addObserver(recorder, "age", oldAndNew);

    person.age = 18;

    EXPECT_THAT(recorder->told, ElementsAre("age: 18 -> 18"));
}

TEST(Property, IsModifiedInPlaceAsOneChange)
{
    Card card;
    const auto recorder = makeRecorder();
    card.addObserver(recorder, "history", oldAndNew);

    card.history.modify([](auto& history) {
        history.push_back(3);
        history.push_back(4);
    });

    EXPECT_THAT(recorder->told, ElementsAre("history: [1, 2] -> [1, 2, 3, 4]"));
}

TEST(Property, IsModifiedWithoutObservers)
{
    Card card;

    card.place.modify([](Point& place) { place.x = 3; });

    EXPECT_EQ(card.place.get(), (Point{3, 0}));
}

TEST(Property, TellsAnEmptyOptionalAsNull)
{
    Card card;
    const auto recorder = makeRecorder();
    card.addObserver(recorder, "rank", oldAndNew);

    card.rank = 7;
    card.rank = std::nullopt;

    EXPECT_THAT(recorder->told, ElementsAre("rank: <null> -> 7", "rank: 7 -> <null>"));
}

TEST(Property, TellsARawRepresentableValueAsItsRawValue)
{
    Card card;
    const auto recorder = makeRecorder();
    card.addObserver(recorder, "suit", oldAndNew);
    card.addObserver(recorder, "trump", oldAndNew);

    card.suit = Suit::Hearts;
    card.trump = Suit::Spades;

    EXPECT_THAT(recorder->told, ElementsAre("suit: 1 -> 0", "trump: <null> -> 1"));
}

TEST(Property, TellsOtherValuesAsTheyAre)
{
    Card card;

    card.place = Point{1, 2};

    EXPECT_EQ(card.valueForKey("place")->cast<Point>(), (Point{1, 2}));
    EXPECT_EQ(card.valueForKey("unlisted")->cast<Unlisted>(), Unlisted::Two);
}

TEST(Property, IsHiddenByALaterOneOfTheSameName)
{
    class Base : public ObservableObject {
    public:
        Property<int, "size"> size{*this, 1};
    };
    class Derived : public Base {
    public:
        Property<std::string, "size"> size{*this, "large"};
    };
    const Derived derived;

    EXPECT_EQ(derived.valueForKey("size"), Any("large"));
}

TEST(Property, HoldsAReferenceToItsOwnClass)
{
    const auto person = std::make_shared<Person>();
    person->friend_ = std::make_shared<Person>();
    person->friend_.get()->friend_ = person;

    EXPECT_EQ(person->valueForKeyPath("friend.friend")->object<Person>(), person);
    person->friend_ = nullptr;
}

TEST(Property, BelongsToItsObject)
{
    using Age = decltype(Person::age);

    EXPECT_FALSE(std::is_copy_constructible_v<Age>);
    EXPECT_FALSE(std::is_move_constructible_v<Age>);
    EXPECT_FALSE(std::is_copy_assignable_v<Age>);
}

TEST(Property, CostsFourWordsBesidesItsValue)
{
    EXPECT_LE(sizeof(Property<void*, "any">), 5 * sizeof(void*));
}
