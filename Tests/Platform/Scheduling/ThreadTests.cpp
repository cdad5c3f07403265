#include "Orrenby/Platform/Scheduling/Thread.hpp"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace orrenby;

namespace {

/// What a forked child of the calling thread thinks of its only thread.
bool isMainThreadInForkedChild()
{
    const auto child = fork();
    if (child == 0)
        _exit(Thread::isMainThread() ? 1 : 0);
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 1;
}

} // namespace

TEST(Thread, IsTheMainOneWhereTheProcessBegan)
{
    EXPECT_TRUE(Thread::isMainThread());
    EXPECT_TRUE(Thread::isMainThread());
}

TEST(Thread, IsNotTheMainOneElsewhere)
{
    bool first = true;
    bool second = true;

    std::thread([&] {
        first = Thread::isMainThread();
        second = Thread::isMainThread();
    }).join();

    EXPECT_FALSE(first);
    EXPECT_FALSE(second);
}

TEST(Thread, IsTheMainOneInAForkedChild)
{
    EXPECT_TRUE(Thread::isMainThread());

    EXPECT_TRUE(isMainThreadInForkedChild());
}

TEST(Thread, BecomesTheMainOneOfTheChildItForks)
{
    bool before = true;
    bool inChild = false;
    bool after = true;

    std::thread([&] {
        before = Thread::isMainThread();
        inChild = isMainThreadInForkedChild();
        after = Thread::isMainThread();
    }).join();

    EXPECT_FALSE(before);
    EXPECT_TRUE(inChild);
    EXPECT_FALSE(after);
}
