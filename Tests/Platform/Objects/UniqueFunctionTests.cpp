#include "Orrenby/Platform/Objects/UniqueFunction.hpp"

#include <array>
#include <gmock/gmock.h>
#include <memory>
#include <string>

using namespace orrenby;

namespace {

/// Counts how many of its kind are alive.
struct Counted {
    explicit Counted(int& counter)
        : alive(&counter)
    {
        ++counter;
    }
    Counted(Counted&& other) noexcept
        : alive(other.alive)
    {
        ++*alive;
    }
    ~Counted() { --*alive; }
    int operator()() { return *alive; }
    int* alive;
};

struct LargeCounted : Counted {
    using Counted::Counted;
    std::array<void*, 8> ballast{};
};

struct Person {
    std::string name;
    std::size_t nameLength() const { return name.size(); }
};

int twice(int number) { return 2 * number; }

} // namespace

static_assert(!std::is_copy_constructible_v<UniqueFunction<void()>>);
static_assert(std::is_nothrow_move_constructible_v<UniqueFunction<void()>>);
static_assert(std::is_nothrow_move_assignable_v<UniqueFunction<void()>>);
static_assert(!std::is_constructible_v<UniqueFunction<void()>, int>);
static_assert(!std::is_constructible_v<UniqueFunction<std::string()>, int (*)()>);

TEST(UniqueFunction, OwnsWhatCannotBeCopied)
{
    //! [Passing a callable on]
    UniqueFunction<int(int)> add = [base = std::make_unique<int>(40)](int number) { return *base + number; };
    UniqueFunction<int(int)> taken = std::move(add);

    const int sum = taken(2);
    const bool isEmpty = !add;
    //! [Passing a callable on]

    EXPECT_EQ(sum, 42);
    EXPECT_TRUE(isEmpty);
}

TEST(UniqueFunction, IsEmptyWithoutACallable)
{
    int (*pointer)(int) = nullptr;

    EXPECT_FALSE(UniqueFunction<int(int)>());
    EXPECT_FALSE(UniqueFunction<int(int)>(nullptr));
    EXPECT_FALSE(UniqueFunction<int(int)>(pointer));
    EXPECT_TRUE(UniqueFunction<void()>() == nullptr);
}

TEST(UniqueFunction, TerminatesWhenAnEmptyOneIsCalled)
{
    UniqueFunction<void()> function;

    EXPECT_DEATH(
        function(), "Fatal error: Call of an empty UniqueFunction: file Platform/UniqueFunction, line 95\n");
}

TEST(UniqueFunction, CallsFunctionsAndMembers)
{
    UniqueFunction<int(int)> function = twice;
    UniqueFunction<std::size_t(const Person&)> method = &Person::nameLength;
    UniqueFunction<std::string(const Person*)> member = &Person::name;
    const Person ada{"Ada"};

    EXPECT_EQ(function(21), 42);
    EXPECT_EQ(method(ada), 3U);
    EXPECT_EQ(member(&ada), "Ada");
}

TEST(UniqueFunction, PassesArgumentsThrough)
{
    UniqueFunction<std::string(std::unique_ptr<int>, std::string&)> function = [](std::unique_ptr<int> number,
                                                                                   std::string& text) {
        text += "!";
        return text + std::to_string(*number);
    };
    std::string text = "a";

    EXPECT_EQ(function(std::make_unique<int>(7), text), "a!7");
    EXPECT_EQ(text, "a!");
}

TEST(UniqueFunction, ReturnsReferences)
{
    int number = 1;
    UniqueFunction<int&()> function = [&]() -> int& { return number; };
    function() = 5;

    EXPECT_EQ(number, 5);
}

TEST(UniqueFunction, DropsAResultThatIsNotWanted)
{
    int calls = 0;
    UniqueFunction<void()> function = [&] { return ++calls; };
    function();

    EXPECT_EQ(calls, 1);
}

TEST(UniqueFunction, KeepsTheStateOfItsCallable)
{
    UniqueFunction<int()> next = [count = 0]() mutable { return ++count; };
    next();
    auto moved = std::move(next);

    EXPECT_EQ(moved(), 2);
}

TEST(UniqueFunction, DestroysASmallCallableOnce)
{
    int alive = 0;
    {
        UniqueFunction<int()> function = Counted(alive);
        EXPECT_EQ(function(), 1);
        auto moved = std::move(function);
        EXPECT_EQ(moved(), 1);
        moved = nullptr;
        EXPECT_EQ(alive, 0);
    }
    EXPECT_EQ(alive, 0);
}

TEST(UniqueFunction, DestroysALargeCallableOnce)
{
    int alive = 0;
    {
        UniqueFunction<int()> function = LargeCounted(alive);
        UniqueFunction<int()> other = Counted(alive);
        other = std::move(function);
        EXPECT_EQ(other(), 1);
    }
    EXPECT_EQ(alive, 0);
}

TEST(UniqueFunction, SurvivesMovingToItself)
{
    UniqueFunction<int()> function = [text = std::string("long enough to live on the heap, certainly")] {
        return static_cast<int>(text.size());
    };
    auto& same = function;
    function = std::move(same);

    EXPECT_EQ(function(), 42);
}

TEST(UniqueFunction, MayBeReplacedByTheDestructorOfItsOldCallable)
{
    UniqueFunction<int()> function;
    struct Replacing {
        explicit Replacing(UniqueFunction<int()>& owner)
            : target(&owner)
        {}
        Replacing(Replacing&& other) noexcept
            : target(std::exchange(other.target, nullptr))
        {}
        ~Replacing()
        {
            if (target != nullptr)
                *target = [] { return 3; };
        }
        int operator()() const { return 1; }

        UniqueFunction<int()>* target;
    };
    function = Replacing(function);
    function = [] { return 2; };

    EXPECT_EQ(function(), 3);
}

TEST(UniqueFunction, LetsExceptionsThrough)
{
    UniqueFunction<void()> function = [] { throw 5; };

    EXPECT_THROW(function(), int);
}
