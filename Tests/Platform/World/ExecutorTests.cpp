#include "Orrenby/Platform/World/Executor.hpp"

#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/Signal.hpp"
#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <deque>
#include <gmock/gmock.h>
#include <limits>
#include <mutex>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::detail::Signal;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::Lt;

namespace {

constexpr auto forever = std::numeric_limits<double>::infinity();

class TestJob final : public Job {
public:
    explicit TestJob(UniqueFunction<void()> work)
        : m_work(std::move(work))
    {}

    void run() noexcept override { m_work(); }

private:
    UniqueFunction<void()> m_work;
};

Executor& executor() { return *Executor::system(); }

double now() { return Clock::system()->monotonicSeconds(); }

/// How many threads a program has that started none. One more may watch over all others, where that is built
/// in.
#if defined(__SANITIZE_THREAD__)
constexpr std::size_t initialThreads = 2;
#else
constexpr std::size_t initialThreads = 1;
#endif

} // namespace

TEST(Executor, RunsAJobOnAThreadOfItsOwn)
{
    auto done = Signal();
    auto thread = std::thread::id();
    auto job = TestJob([&] {
        thread = std::this_thread::get_id();
        done.set();
    });

    executor().execute(job);
    done.wait();

    EXPECT_NE(thread, std::this_thread::get_id());
}

TEST(Executor, IsTheSameForEverybody) { EXPECT_EQ(Executor::system(), Executor::system()); }

TEST(Executor, LetsAJobBeHandedOverAgainWhileItRuns)
{
    auto done = Signal();
    auto count = 0;
    auto self = static_cast<Job*>(nullptr);
    auto job = TestJob([&] {
        if (++count == 1000)
            done.set();
        else
            executor().execute(*self);
    });
    self = &job;

    executor().execute(job);
    done.wait();

    EXPECT_EQ(count, 1000);
}

TEST(Executor, RunsTwoJobsAtOnce)
{
    // Each blocks without the executor's knowledge until the other has begun, so no third thread comes to
    // help.
    auto begun = std::array<Signal, 2>();
    auto done = std::array<Signal, 2>();
    const auto meet = [&](std::size_t own) {
        begun[own].set();
        while (!begun[1 - own].isSignalled())
            begun[1 - own].block(1);
        done[own].set();
    };
    auto first = TestJob([&] { meet(0); });
    auto second = TestJob([&] { meet(1); });

    executor().execute(first);
    executor().execute(second);
    done[0].wait();
    done[1].wait();

    EXPECT_TRUE(begun[0].isSignalled() && begun[1].isSignalled());
}

TEST(Executor, RunsNoMoreJobsAtOnceThanTheMachineHasProcessors)
{
    constexpr auto jobCount = 200;
    auto done = Signal();
    auto left = std::atomic(jobCount);
    auto running = std::atomic(0U);
    auto most = std::atomic(0U);
    auto jobs = std::deque<TestJob>();
    for (int count = 0; count < jobCount; ++count)
        jobs.emplace_back([&] {
            const auto others = running.fetch_add(1);
            for (auto seen = most.load(); seen <= others && !most.compare_exchange_weak(seen, others + 1);) {}
            for (int turn = 0; turn < 20; ++turn)
                std::this_thread::yield();
            --running;
            if (--left == 0)
                done.set();
        });

    for (auto& job : jobs)
        executor().execute(job);
    done.wait();

    EXPECT_LE(most, std::max(2U, std::thread::hardware_concurrency()));
}

TEST(ExecutorDeathTest, StartsItsThreadsForTheFirstJob)
{
    const auto runAJob = [] {
        auto done = Signal();
        auto job = TestJob([&] { done.set(); });
        executor().execute(job);
        done.wait();
    };

    EXPECT_EXIT(
        {
            const bool hasStartedNone = ::testing::internal::GetThreadCount() <= initialThreads;
            runAJob();
            std::_Exit(hasStartedNone && ::testing::internal::GetThreadCount() > initialThreads ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(Executor, IsNotStarvedByJobsThatWaitForOthers)
{
    constexpr auto waiterCount = 40;
    auto isOpen = Signal();
    auto done = Signal();
    auto left = std::atomic(waiterCount);
    auto waiters = std::deque<TestJob>();
    for (int count = 0; count < waiterCount; ++count)
        waiters.emplace_back([&] {
            isOpen.wait();
            if (--left == 0)
                done.set();
        });
    auto opener = TestJob([&] { isOpen.set(); });

    for (auto& waiter : waiters)
        executor().execute(waiter);
    executor().execute(opener);
    done.wait();

    EXPECT_EQ(left, 0);
}

TEST(Executor, RunsAJobOnceItsDeadlineHasCome)
{
    auto done = Signal();
    auto ranAt = 0.0;
    auto job = TestJob([&] {
        ranAt = now();
        done.set();
    });
    const auto deadline = now() + 0.005;

    executor().executeAt(deadline, job);
    done.wait();

    EXPECT_THAT(ranAt, Ge(deadline));
}

TEST(Executor, RunsAJobSoonWhoseDeadlineHasPassed)
{
    auto done = Signal();
    auto job = TestJob([&] { done.set(); });

    executor().executeAt(-forever, job);
    done.wait();

    EXPECT_TRUE(done.isSignalled());
}

TEST(Executor, ServesTheEarliestDeadlineFirst)
{
    auto done = Signal();
    auto mutex = std::mutex();
    auto order = std::vector<int>();
    const auto note = [&](int number) {
        auto lock = std::unique_lock(mutex);
        order.push_back(number);
        const auto isLast = order.size() == 3;
        lock.unlock(); // before the test can end
        if (isLast)
            done.set();
    };
    auto late = TestJob([&] { note(3); });
    auto middle = TestJob([&] { note(2); });
    auto early = TestJob([&] { note(1); });
    const auto start = now();

    executor().executeAt(start + 0.06, late);
    executor().executeAt(start + 0.03, middle);
    executor().executeAt(start + 0.001, early);
    done.wait();

    EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST(Executor, StopsWaitingAtTheDeadline)
{
    auto never = Signal();
    const auto deadline = now() + 0.002;

    while (now() < deadline)
        executor().wait(never, deadline);

    EXPECT_FALSE(never.isSignalled());
}

TEST(Executor, DoesNotWaitForAPassedDeadlineOrForNone)
{
    auto never = Signal();
    const auto start = now();

    executor().wait(never, start - 1);
    executor().wait(never, std::numeric_limits<double>::quiet_NaN());

    EXPECT_THAT(now() - start, Lt(60));
}

TEST(Executor, TakesJobsFromManyThreads)
{
    constexpr auto threadCount = 4;
    constexpr auto jobCount = 500;
    auto done = Signal();
    auto left = std::atomic(threadCount * jobCount);
    auto jobs = std::deque<TestJob>();
    for (int count = 0; count < threadCount * jobCount; ++count)
        jobs.emplace_back([&] {
            if (--left == 0)
                done.set();
        });
    auto threads = std::vector<std::thread>();

    for (int thread = 0; thread < threadCount; ++thread)
        threads.emplace_back([&jobs, thread] {
            for (int count = 0; count < jobCount; ++count) {
                auto& job = jobs[static_cast<std::size_t>(thread * jobCount + count)];
                if (count % 2 == 0)
                    executor().execute(job);
                else
                    executor().executeAt(now() + 0.0001, job);
            }
        });
    for (auto& thread : threads)
        thread.join();
    done.wait();

    EXPECT_EQ(left, 0);
}

TEST(Executor, RunsNothingForAJobThatIsDiscardedByDefault)
{
    auto hasRun = false;
    auto job = TestJob([&] { hasRun = true; });

    job.discard();

    EXPECT_FALSE(hasRun);
}
