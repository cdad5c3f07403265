#include "Orrenby/Platform/Time/Cache.hpp"

#include <atomic>
#include <gmock/gmock.h>
#include <thread>
#include <vector>

using namespace orrenby;

namespace {

using Words = Cache<std::string, std::string>;

Ref<std::string> word(const char* text) { return std::make_shared<std::string>(text); }

/// Which of the keys have something.
std::string present(const Words& words, std::string_view keys)
{
    std::string result;
    for (std::size_t place = 0; place < keys.size(); ++place)
        if (words.object(keys.substr(place, 1)))
            result += keys[place];
    return result;
}

struct AllAlike {
    int number;
    friend bool operator==(AllAlike, AllAlike) = default;
};

} // namespace

template <> struct std::hash<AllAlike> {
    std::size_t operator()(AllAlike) const noexcept { return 1; }
};

TEST(Cache, GivesWhatWasStored)
{
    //! [Making things once]
    Cache<std::string, std::string> greetings;
    greetings.setCountLimit(10);

    auto greeting = greetings.object("de");
    if (!greeting) {
        greeting = std::make_shared<std::string>("Guten Tag");
        greetings.setObject(greeting, "de");
    }
    //! [Making things once]

    EXPECT_EQ(greetings.object("de"), greeting);
}

TEST(Cache, IsEmptyAtFirst)
{
    const Words words;

    EXPECT_EQ(words.object("a"), nullptr);
    EXPECT_EQ(words.count(), 0u);
    EXPECT_EQ(words.countLimit(), 0u);
}

TEST(Cache, ReplacesWhatHasTheSameKey)
{
    Words words;
    const auto first = word("first");
    words.setObject(first, "a");

    words.setObject(word("second"), "a");

    EXPECT_EQ(*words.object("a"), "second");
    EXPECT_EQ(words.count(), 1u);
    EXPECT_EQ(first.use_count(), 1);
}

TEST(Cache, ForgetsWhatIsReplacedByNothing)
{
    Words words;
    words.setObject(word("first"), "a");

    words.setObject(nullptr, "a");

    EXPECT_EQ(words.count(), 0u);
}

TEST(Cache, ForgetsWhatIsRemoved)
{
    Words words;
    words.setObject(word("first"), "a");
    words.setObject(word("second"), "b");

    words.removeObject("a");
    words.removeObject("none");

    EXPECT_EQ(present(words, "ab"), "b");
}

TEST(Cache, ForgetsEverything)
{
    Words words;
    words.setCountLimit(3);
    words.setObject(word("first"), "a");
    words.setObject(word("second"), "b");

    words.removeAll();
    words.removeAll();

    EXPECT_EQ(present(words, "ab"), "");
    EXPECT_EQ(words.countLimit(), 3u);
}

TEST(Cache, KeepsAsManyAsTheLimitSays)
{
    Words words;
    words.setCountLimit(2);

    for (const auto* key : {"a", "b", "c"})
        words.setObject(word(key), key);

    EXPECT_EQ(present(words, "abc"), "bc");
}

TEST(Cache, ForgetsWhatWasNotAskedForTheLongest)
{
    Words words;
    words.setCountLimit(2);
    words.setObject(word("first"), "a");
    words.setObject(word("second"), "b");

    const auto used = words.object("a");
    words.setObject(word("third"), "c");

    EXPECT_EQ(present(words, "abc"), "ac");
}

TEST(Cache, ForgetsAtOnceWhenTheLimitFalls)
{
    Words words;
    for (const auto* key : {"a", "b", "c", "d"})
        words.setObject(word(key), key);

    words.setCountLimit(1);

    EXPECT_EQ(present(words, "abcd"), "d");
}

TEST(Cache, KeepsEverythingWithoutALimit)
{
    Words words;
    words.setCountLimit(1);
    words.setCountLimit(0);

    for (int number = 0; number < 1'000; ++number)
        words.setObject(word("any"), std::to_string(number));

    EXPECT_EQ(words.count(), 1'000u);
}

TEST(Cache, LeavesAForgottenObjectToItsHolders)
{
    Words words;
    const auto held = word("held");
    words.setObject(held, "a");

    words.removeAll();

    EXPECT_EQ(*held, "held");
    EXPECT_EQ(held.use_count(), 1);
}

TEST(Cache, TellsKeysOfOneHashApart)
{
    Cache<AllAlike, int> numbers;
    numbers.setCountLimit(2);

    for (int number = 0; number < 3; ++number)
        numbers.setObject(std::make_shared<int>(number), AllAlike{number});

    EXPECT_EQ(numbers.object(AllAlike{0}), nullptr);
    EXPECT_EQ(*numbers.object(AllAlike{1}), 1);
    EXPECT_EQ(*numbers.object(AllAlike{2}), 2);
}

TEST(Cache, MayBeUsedByWhatItForgets)
{
    Words words;
    const auto storesOnItsWayOut = [&](std::string* text) {
        words.setObject(word("last"), "b");
        delete text;
    };
    words.setObject(std::shared_ptr<std::string>(new std::string("first"), storesOnItsWayOut), "a");

    words.removeObject("a");

    EXPECT_EQ(present(words, "ab"), "b");
}

TEST(Cache, ServesSeveralThreads)
{
    Words words;
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&, thread] {
            for (int turn = 0; turn < 2'000; ++turn) {
                words.setCountLimit(10);
                const auto key = std::to_string((turn * 7 + thread) % 20);
                if (const auto found = words.object(key); found && *found != key)
                    ++wrong;
                words.setObject(std::make_shared<std::string>(key), key);
                if (turn % 500 == 0)
                    words.removeAll();
            }
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(words.count(), 10u);
}
