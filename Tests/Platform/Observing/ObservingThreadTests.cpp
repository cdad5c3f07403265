#include "Orrenby/Platform/Observing/ObservableObject.hpp"

#include "Tests/Platform/Observing/ObservingParts.hpp"
#include <atomic>
#include <gmock/gmock.h>
#include <thread>

using namespace orrenby;
using namespace orrenby::tests;

namespace {

constexpr int rounds = 500;

class CountingObserver : public KeyValueObserver {
public:
    void observeValue(const std::string&, ObservableObject&, const KeyValueChange&) override { ++calls; }
    std::atomic<int> calls = 0;
};

/// Its value may be read and changed from several threads.
class SharedFlag : public ObservableObject {
public:
    void set(bool value)
    {
        willChangeValue("isSet");
        m_isSet = value;
        didChangeValue("isSet");
    }

protected:
    std::optional<Any> valueForUndefinedKey(std::string_view) const override { return Any(m_isSet.load()); }

private:
    std::atomic<bool> m_isSet = false;
};

template <typename... Bodies> void runTogether(Bodies... bodies)
{
    std::vector<std::thread> threads;
    (threads.emplace_back(bodies), ...);
    for (auto& thread : threads)
        thread.join();
}

template <typename Body> auto repeat(Body body)
{
    return [body] {
        for (int round = 0; round < rounds; ++round)
            body();
    };
}

} // namespace

TEST(ObservingThreads, TellEachOfTheirChanges)
{
    SharedFlag flag;
    const auto observer = std::make_shared<CountingObserver>();
    flag.addObserver(observer, "isSet", oldAndNew);

    runTogether(repeat([&] { flag.set(true); }), repeat([&] { flag.set(false); }));

    EXPECT_EQ(observer->calls, 2 * rounds);
}

TEST(ObservingThreads, RegisterAndRemoveWhileAnotherTellsChanges)
{
    Person person;
    const auto steady = std::make_shared<CountingObserver>();
    person.addObserver(steady, "age", oldAndNew);
    const auto comeAndGo = [&] {
        const auto passing = std::make_shared<CountingObserver>();
        person.addObserver(passing, "age", oldAndNew);
        person.removeObserver(*passing, "age");
    };

    runTogether(repeat([&] { person.age = 19; }), repeat(comeAndGo), repeat(comeAndGo));

    EXPECT_EQ(steady->calls, rounds);
    EXPECT_EQ(person.observerCount(), 1u);
}

TEST(ObservingThreads, DropObserversWhileAnotherTellsChanges)
{
    Person person;

    runTogether(repeat([&] { person.age = 19; }),
        repeat([&] { person.addObserver(std::make_shared<CountingObserver>(), "age", oldAndNew); }));

    EXPECT_EQ(person.observerCount(), 0u);
}

TEST(ObservingThreads, RegisterAtTheSameFirstMoment)
{
    for (int round = 0; round < 50; ++round) {
        Person person;
        const auto observer = std::make_shared<CountingObserver>();
        const auto registerOnce = [&] { person.addObserver(observer, "age"); };

        runTogether(registerOnce, registerOnce);

        EXPECT_EQ(person.observerCount(), 2u);
    }
}

TEST(ObservingThreads, ReplaceAnObjectAlongAPathWhileAnotherRemovesIt)
{
    for (int round = 0; round < 50; ++round) {
        Person person;
        const auto first = std::make_shared<Address>();
        const auto second = std::make_shared<Address>();
        const auto observer = std::make_shared<CountingObserver>();
        person.address = first;
        person.addObserver(observer, "address.city", {.prior = true});

        runTogether(
            [&] {
                person.address = second;
                person.address = first;
            },
            [&] { person.removeObserver(*observer, "address.city"); });

        EXPECT_EQ(person.observerCount() + first->observerCount() + second->observerCount(), 0u);
    }
}

TEST(ObservingThreads, EndObjectsThatShareTheRestOfAPath)
{
    const auto address = std::make_shared<Address>();
    const auto observer = std::make_shared<CountingObserver>();
    const auto comeAndGo = [&] {
        Person person;
        person.address = address;
        person.addObserver(observer, "address.city");
    };

    runTogether(repeat(comeAndGo), repeat(comeAndGo));

    EXPECT_EQ(address->observerCount(), 0u);
}
