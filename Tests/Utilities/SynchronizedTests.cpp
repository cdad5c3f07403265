#include "Orrenby/Utilities/Synchronized.hpp"

#include "Orrenby/Testing/TestAccess.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <barrier>
#include <gmock/gmock.h>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

using namespace orrenby;
using ::testing::Each;
using ::testing::ElementsAre;

namespace {

struct Account {
    int balance = 0;
};

struct Base {
    virtual ~Base() = default;
};
struct Derived : Base {};

std::vector<std::string> messages;

/// A box whose check reports and lets go on, so that what comes after it can be seen.
template <class T> void reportMisuse(Synchronized<T>& box)
{
    messages.clear();
    orrenby::testing::TestAccess::setUnsupportedUnsafeOperation(
        box, [](std::string_view message) { messages.emplace_back(message); });
}

/// What holds for both kinds of lock.
class SynchronizedOfEachKind : public ::testing::TestWithParam<SynchronizedKind> {};

constexpr auto mutex = SynchronizedKind::mutex;
constexpr auto readersWriter = SynchronizedKind::readersWriter;
constexpr auto readingMessage = "Accessing `value: AnyObject` is unsafe and therefore unsupported";
constexpr auto returningMessage = "Returning `rawValue: AnyObject` is unsafe and therefore unsupported";

} // namespace

INSTANTIATE_TEST_SUITE_P(Kinds, SynchronizedOfEachKind, ::testing::Values(mutex, readersWriter),
    [](const auto& tested) { return tested.param == mutex ? "mutex" : "readersWriter"; });

TEST(Synchronized, SharesAValue)
{
    //! [Sharing a value]
    Synchronized scores(std::map<std::string, int>(), SynchronizedKind::readersWriter);

    auto other = std::thread([&] { scores.apply([](auto& table) { table["Ada"] += 1; }); });
    scores.apply([](auto& table) { table["Ada"] += 2; });
    other.join();

    EXPECT_EQ(scores.map([](const auto& table) { return table.at("Ada"); }), 3);
    //! [Sharing a value]
}

TEST_P(SynchronizedOfEachKind, ReadsWhatWasApplied)
{
    Synchronized<int> box(5, GetParam());

    box.apply([](int& value) { value += 1; });

    EXPECT_EQ(box.value(), 6);
}

TEST_P(SynchronizedOfEachKind, MapsItsValue)
{
    const Synchronized<std::string> box("four", GetParam());

    EXPECT_EQ(box.map([](const std::string& text) { return text.size(); }), 4u);
    EXPECT_EQ(box.map(&std::string::size), 4u);
}

TEST_P(SynchronizedOfEachKind, IsGivenBackWhenABodyThrows)
{
    Synchronized<int> box(5, GetParam());

    EXPECT_THROW(box.apply([](int&) { throw std::runtime_error("body"); }), std::runtime_error);
    EXPECT_THROW(box.map([](int) -> int { throw std::runtime_error("body"); }), std::runtime_error);

    EXPECT_EQ(box.value(), 5);
    box.apply([](int& value) { value = 7; });
    EXPECT_EQ(box.value(), 7);
}

TEST_P(SynchronizedOfEachKind, KeepsAChangeMadeBeforeTheBodyThrew)
{
    Synchronized<int> box(5, GetParam());

    EXPECT_THROW(box.apply([](int& value) {
        value = 6;
        throw std::runtime_error("body");
    }),
        std::runtime_error);

    EXPECT_EQ(box.value(), 6);
}

TEST_P(SynchronizedOfEachKind, LosesNoChangeOfSeveralThreads)
{
    Synchronized<std::vector<int>> box({0, 0}, GetParam());
    const auto change = [&] {
        for (int round = 0; round < 2'000; ++round)
            box.apply([](auto& pair) {
                ++pair[0];
                --pair[1];
            });
    };
    std::vector<int> sums;

    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread)
        threads.emplace_back(change);
    for (int round = 0; round < 2'000; ++round)
        sums.push_back(box.map([](const auto& pair) { return pair[0] + pair[1]; }));
    for (auto& thread : threads)
        thread.join();

    EXPECT_THAT(box.value(), ElementsAre(6'000, -6'000));
    EXPECT_THAT(sums, Each(0));
}

TEST_P(SynchronizedOfEachKind, CopiesAResultThatRefersIntoTheValue)
{
    Synchronized<Account> box(Account{5}, GetParam());

    const auto balance = box.map(&Account::balance);
    box.apply([](Account& account) { account.balance = 6; });

    EXPECT_TRUE((std::is_same_v<decltype(box.map(&Account::balance)), int>));
    EXPECT_EQ(balance, 5);
}

TEST_P(SynchronizedOfEachKind, HoldsWhatCannotBeCopied)
{
    Synchronized<std::unique_ptr<int>> box(std::make_unique<int>(1), GetParam());

    box.apply([](std::unique_ptr<int>& number) { *number += 1; });

    EXPECT_EQ(box.map([](const std::unique_ptr<int>& number) { return *number; }), 2);
}

TEST_P(SynchronizedOfEachKind, MapsToNothing)
{
    const Synchronized<int> box(5, GetParam());
    int seen = 0;

    box.map([&](int value) { seen = value; });

    EXPECT_EQ(seen, 5);
}

TEST(Synchronized, LetsReadersRunSideBySide)
{
    const Synchronized<int> box(5, readersWriter);
    std::barrier<> meeting(2); // both readers have to be inside to pass it
    const auto read = [&](int value) {
        meeting.arrive_and_wait();
        return value;
    };

    int seen = 0;
    auto other = std::thread([&] { seen = box.map(read); });

    EXPECT_EQ(box.map(read), 5);
    other.join();
    EXPECT_EQ(seen, 5);
}

TEST(Synchronized, LetsReadersOfAMutexRunOneAfterTheOther)
{
    const Synchronized<int> box(5, mutex);
    int inside = 0;
    int most = 0;
    const auto read = [&] {
        for (int round = 0; round < 5'000; ++round)
            box.map([&](int) {
                most = std::max(most, ++inside);
                --inside;
            });
    };

    auto other = std::thread(read);
    read();
    other.join();

    EXPECT_EQ(most, 1);
}

TEST(Synchronized, TakesChangesThatReturnNothingOnly)
{
    const auto changes = [](int& value) { value = 1; };
    const auto answers = [](int& value) { return value; };

    EXPECT_TRUE((detail::ChangeOf<decltype(changes), int>));
    EXPECT_FALSE((detail::ChangeOf<decltype(answers), int>));
}

TEST(Synchronized, HasOneTypeOfKindForAllValues)
{
    EXPECT_TRUE((std::is_same_v<Synchronized<int>::Kind, Synchronized<std::string>::Kind>));
    EXPECT_EQ(Synchronized<int>::Kind::mutex, mutex);
    EXPECT_LT(mutex, readersWriter);
    EXPECT_EQ(std::hash<SynchronizedKind>{}(mutex), std::hash<SynchronizedKind>{}(mutex));
}

TEST(Synchronized, IsNotCopied)
{
    EXPECT_FALSE(std::is_copy_constructible_v<Synchronized<int>>);
    EXPECT_FALSE(std::is_copy_assignable_v<Synchronized<int>>);
}

TEST(SynchronizedDeathTest, EndsTheProcessWhenAReferenceIsRead)
{
    const Synchronized box(std::make_shared<Account>(), mutex);

    EXPECT_DEATH((void)box.value(),
        "^Fatal error: Accessing `value: AnyObject` is unsafe and therefore unsupported: file "
        "Utilities/Synchronized, line 25\n$");
}

TEST(SynchronizedDeathTest, EndsTheProcessWhenAReferenceToAConstantObjectIsRead)
{
    const Synchronized<Ref<const Account>> box(std::make_shared<Account>(), readersWriter);

    EXPECT_DEATH((void)box.value(), "^Fatal error: Accessing `value: AnyObject` is unsafe");
}

TEST(SynchronizedDeathTest, EndsTheProcessWhenTheObjectItselfIsReturned)
{
    const Synchronized box(std::make_shared<Account>(), mutex);

    EXPECT_DEATH(box.map([](const Ref<Account>& account) { return account; }),
        "^Fatal error: Returning `rawValue: AnyObject` is unsafe and therefore unsupported: file "
        "Utilities/Synchronized, line 25\n$");
}

TEST(SynchronizedDeathTest, EndsTheProcessWhenTheObjectIsReturnedAsAnotherClass)
{
    const Synchronized box(std::make_shared<Derived>(), readersWriter);

    EXPECT_DEATH(box.map([](const Ref<Derived>& object) { return Ref<const Base>(object); }),
        "^Fatal error: Returning `rawValue: AnyObject` is unsafe");
}

TEST(SynchronizedDeathTest, EndsTheProcessWhenAHandleIsRead)
{
    const Synchronized box(Streams::PassthroughSubject<int, Never>(), mutex);

    EXPECT_DEATH((void)box.value(), "^Fatal error: Accessing `value: AnyObject` is unsafe");
}

TEST(SynchronizedDeathTest, EndsTheProcessWhenTheHandleItselfIsReturned)
{
    const Synchronized box(Streams::PassthroughSubject<int, Never>(), mutex);

    EXPECT_DEATH(box.map([](const auto& subject) { return subject; }),
        "^Fatal error: Returning `rawValue: AnyObject` is unsafe");
}

TEST(Synchronized, ReturnsAHandleOfAnotherType)
{
    const Synchronized box(Streams::PassthroughSubject<int, Never>(), mutex);

    const auto publisher = box.map([](const auto& subject) { return subject.eraseToAnyPublisher(); });

    EXPECT_TRUE((std::is_same_v<decltype(publisher), const Streams::AnyPublisher<int, Never>>));
}

TEST_P(SynchronizedOfEachKind, ComputesFromAnObject)
{
    const Synchronized box(std::make_shared<Account>(Account{5}), GetParam());

    EXPECT_EQ(box.map([](const Ref<Account>& account) { return account->balance + 1; }), 6);
}

TEST_P(SynchronizedOfEachKind, ReturnsAnotherObject)
{
    const Synchronized box(std::make_shared<Account>(Account{5}), GetParam());

    const auto copy = box.map(
        [](const Ref<Account>& account) { return std::make_shared<Account>(*account); });

    EXPECT_EQ(copy->balance, 5);
}

TEST(Synchronized, ReturnsAnEmptyReference)
{
    const Synchronized<Ref<Account>> box(nullptr, mutex);

    EXPECT_EQ(box.map([](const Ref<Account>& account) { return account; }), nullptr);
}

TEST_P(SynchronizedOfEachKind, ChangesAndReplacesAnObject)
{
    Synchronized box(std::make_shared<Account>(Account{5}), GetParam());
    const auto balance = [](const Ref<Account>& account) { return account->balance; };

    box.apply([](Ref<Account>& account) { account->balance = 6; });
    EXPECT_EQ(box.map(balance), 6);

    box.apply([](Ref<Account>& account) { account = std::make_shared<Account>(Account{7}); });
    EXPECT_EQ(box.map(balance), 7);
}

TEST_P(SynchronizedOfEachKind, IsGivenBackWhenABodyThatWouldReturnAnObjectThrows)
{
    const Synchronized box(std::make_shared<Account>(Account{5}), GetParam());

    EXPECT_THROW(box.map([](const Ref<Account>&) -> Ref<Account> { throw std::runtime_error("body"); }),
        std::runtime_error);

    EXPECT_EQ(box.map([](const Ref<Account>& account) { return account->balance; }), 5);
}

TEST_P(SynchronizedOfEachKind, GivesTheObjectWhereTheCheckLetsGoOn)
{
    const auto account = std::make_shared<Account>();
    Synchronized box(account, GetParam());
    reportMisuse(box);

    EXPECT_EQ(box.value(), account);
    EXPECT_EQ(box.map([](const Ref<Account>& held) { return held; }), account);
    EXPECT_THAT(messages, ElementsAre(readingMessage, returningMessage));
}
