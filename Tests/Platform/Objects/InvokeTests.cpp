#include "Orrenby/Platform/Objects/Invoke.hpp"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace {

namespace detail = orrenby::detail;

struct Person {
    std::string name = "Ada";

    std::string greeting(const std::string& word) const { return word + " " + name; }
    void rename(std::string newName) { name = std::move(newName); }
};
struct Colleague : Person {};

struct Quiet {
    constexpr int operator()(int value) const noexcept { return value; }
};
struct ByValueCategory {
    int operator()() & { return 1; }
    int operator()() && { return 2; }
};

int twice(int value) { return 2 * value; }

TEST(Invoke, CallsFunctionsAndObjects)
{
    EXPECT_EQ(detail::invoke(twice, 4), 8);
    EXPECT_EQ(detail::invoke(&twice, 4), 8);
    EXPECT_EQ(detail::invoke([](int first, int second) { return first - second; }, 7, 4), 3);
}

TEST(Invoke, CallsAnObjectAsWhatItIsGivenAs)
{
    ByValueCategory object;

    EXPECT_EQ(detail::invoke(object), 1);
    EXPECT_EQ(detail::invoke(std::move(object)), 2);
}

TEST(Invoke, CallsMemberFunctionsOnObjectsPointersAndWrappers)
{
    Colleague person;

    EXPECT_EQ(detail::invoke(&Person::greeting, person, "Hello"), "Hello Ada");
    EXPECT_EQ(detail::invoke(&Person::greeting, &person, "Hello"), "Hello Ada");
    EXPECT_EQ(detail::invoke(&Person::greeting, std::make_shared<Person>(), "Hello"), "Hello Ada");
    EXPECT_EQ(detail::invoke(&Person::greeting, std::ref(person), "Hello"), "Hello Ada");
    detail::invoke(&Person::rename, person, "Grace");
    EXPECT_EQ(person.name, "Grace");
}

TEST(Invoke, ReadsAndWritesDataMembers)
{
    Colleague person;

    detail::invoke(&Person::name, person) = "Grace";
    const auto moved = detail::invoke(&Person::name, std::move(person));

    EXPECT_EQ(moved, "Grace");
    EXPECT_EQ(detail::invoke(&Person::name, std::make_shared<Person>()), "Ada");
    EXPECT_EQ(detail::invoke(&Person::name, std::cref(person)), person.name);
}

TEST(Invoke, GivesExactlyWhatTheStandardOneGives)
{
    static_assert(
        std::is_same_v<decltype(detail::invoke(&Person::name, std::declval<Person&>())), std::string&>);
    static_assert(std::is_same_v<decltype(detail::invoke(&Person::name, std::declval<const Person&>())),
        const std::string&>);
    static_assert(
        std::is_same_v<decltype(detail::invoke(&Person::name, std::declval<Person>())), std::string&&>);
    static_assert(noexcept(detail::invoke(Quiet(), 1)) && !noexcept(detail::invoke(twice, 1)));
    static_assert(detail::invoke(Quiet(), 3) == 3);

    auto person = Person();
    EXPECT_EQ(&detail::invoke(&Person::name, person), &person.name);
}

} // namespace
