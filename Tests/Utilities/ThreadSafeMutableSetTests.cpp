#include "Orrenby/Utilities/ThreadSafeMutableSet.hpp"

#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;

namespace {

/// Its end asks the set that it was in.
struct Asking {
    explicit Asking(ThreadSafeMutableSet<Ref<Asking>>& owner, int& count)
        : set(owner)
        , ended(count)
    {}
    ~Asking() { ended += set.contains(nullptr) ? 0 : 1; }

    ThreadSafeMutableSet<Ref<Asking>>& set;
    int& ended;
};

} // namespace

TEST(ThreadSafeMutableSet, RemembersWhoWasSeen)
{
    //! [Remembering who was seen]
    ThreadSafeMutableSet<std::string> seen;

    auto other = std::thread([&] { seen.add("Ada"); });
    seen.add("Grace");
    other.join();

    EXPECT_TRUE(seen.contains("Ada"));
    EXPECT_TRUE(seen.contains("Grace"));
    EXPECT_FALSE(seen.contains("Alan"));
    //! [Remembering who was seen]
}

TEST(ThreadSafeMutableSet, IsEmptyAtFirst)
{
    const ThreadSafeMutableSet<int> set;

    EXPECT_FALSE(set.contains(0));
}

TEST(ThreadSafeMutableSet, ForgetsWhatWasAddedTwiceAndRemovedOnce)
{
    ThreadSafeMutableSet<int> set;

    set.add(1);
    set.add(1);
    set.remove(1);

    EXPECT_FALSE(set.contains(1));
}

TEST(ThreadSafeMutableSet, RemovesOneElementOnly)
{
    ThreadSafeMutableSet<int> set;
    set.add(1);
    set.add(2);

    set.remove(1);

    EXPECT_FALSE(set.contains(1));
    EXPECT_TRUE(set.contains(2));
}

TEST(ThreadSafeMutableSet, IgnoresTheRemovalOfWhatItDoesNotHold)
{
    ThreadSafeMutableSet<int> set;
    set.add(1);

    set.remove(2);

    EXPECT_TRUE(set.contains(1));
}

TEST(ThreadSafeMutableSet, RemovesEverything)
{
    ThreadSafeMutableSet<int> set;
    set.add(1);
    set.add(2);

    set.removeAll();
    set.removeAll();

    EXPECT_FALSE(set.contains(1));
    EXPECT_FALSE(set.contains(2));
    set.add(1);
    EXPECT_TRUE(set.contains(1));
}

TEST(ThreadSafeMutableSet, TellsObjectsApartByIdentity)
{
    ThreadSafeMutableSet<Ref<int>> set;
    const auto first = std::make_shared<int>(1);

    set.add(first);

    EXPECT_TRUE(set.contains(first));
    EXPECT_FALSE(set.contains(std::make_shared<int>(1)));
}

TEST(ThreadSafeMutableSet, KeepsTheFirstOfEqualElements)
{
    ThreadSafeMutableSet<Ref<int>> set;
    const auto object = std::make_shared<int>(1);

    set.add(object);
    set.add(object);

    EXPECT_EQ(object.use_count(), 2);
}

TEST(ThreadSafeMutableSet, LetsTheEndOfAnElementUseTheSet)
{
    ThreadSafeMutableSet<Ref<Asking>> set;
    int ended = 0;
    auto first = std::make_shared<Asking>(set, ended);
    const auto* const key = first.get();
    const auto unowned = Ref<Asking>(Ref<void>(), const_cast<Asking*>(key));
    set.add(std::move(first));
    set.add(std::make_shared<Asking>(set, ended));

    set.remove(unowned);
    EXPECT_EQ(ended, 1);

    set.removeAll();
    EXPECT_EQ(ended, 2);
}

TEST(ThreadSafeMutableSet, LosesNothingThatSeveralThreadsAdd)
{
    ThreadSafeMutableSet<int> set;
    const auto add = [&](int first) {
        for (int element = first; element < 2'000; element += 4)
            set.add(element);
    };

    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back(add, thread);
    for (auto& thread : threads)
        thread.join();

    int missing = 0;
    for (int element = 0; element < 2'000; ++element)
        missing += !set.contains(element);
    EXPECT_EQ(missing, 0);
}
