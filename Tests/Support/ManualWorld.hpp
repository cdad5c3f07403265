#pragma once

/// @file
/// A world of one thread whose clock moves only when everybody waits.

#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/Executor.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <algorithm>
#include <cmath>
#include <concepts>
#include <cstdlib>
#include <deque>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <utility>

namespace orrenby::testing {

/// Begins on a whole second, so that dates and intervals add up without rounding.
class ManualClock final : public Clock {
public:
    Date now() const override { return Date(m_calendar + m_seconds); }
    double monotonicSeconds() const override { return m_seconds; }
    bool runsByItself() const override { return false; }

    void moveTo(double seconds) { m_seconds = std::max(m_seconds, seconds); }
    void pass(double seconds) { m_seconds += seconds; }
    void setCalendar(Date now) { m_calendar = now.secondsSince1970() - m_seconds; }

private:
    double m_seconds = 1024;
    double m_calendar = 1048576;
};

/// Runs jobs on the thread that waits, and moves the clock when there is none.
class ManualExecutor final : public Executor {
public:
    explicit ManualExecutor(std::shared_ptr<ManualClock> clock)
        : m_clock(std::move(clock))
    {}

    void execute(Job& job) override { m_jobs.push_back(&job); }

    void executeAt(double deadline, Job& job) override
    {
        job.deadline = deadline;
        const auto later = [](double moment, const Job* other) { return moment < other->deadline; };
        m_delayed.insert(std::upper_bound(m_delayed.begin(), m_delayed.end(), deadline, later), &job);
    }

    void wait(Waiter& waiter, double deadline) override
    {
        while (!waiter.isSignalled() && m_clock->monotonicSeconds() < deadline) {
            while (!m_delayed.empty() && m_delayed.front()->deadline <= m_clock->monotonicSeconds()) {
                m_jobs.push_back(m_delayed.front());
                m_delayed.pop_front();
            }
            if (!m_jobs.empty()) {
                auto& job = *m_jobs.front();
                m_jobs.pop_front();
                job.run();
                continue;
            }
            const auto next = m_delayed.empty() ? deadline : std::min(deadline, m_delayed.front()->deadline);
            if (std::isinf(next)) {
                ADD_FAILURE() << "Everybody waits for ever";
                std::abort();
            }
            m_clock->moveTo(next);
            ++m_moves;
        }
    }

    /// How often the clock was moved, which is how often somebody would have woken.
    int moves() const { return m_moves; }

private:
    std::shared_ptr<ManualClock> m_clock;
    std::deque<Job*> m_jobs;
    std::deque<Job*> m_delayed;
    int m_moves = 0;
};

class ManualWorld {
public:
    ManualClock& clock() { return *m_clock; }
    ManualExecutor& executor() { return *m_executor; }

private:
    static World worldWith(std::shared_ptr<Clock> clock, std::shared_ptr<Executor> executor)
    {
        auto world = World::current();
        world.setClock(std::move(clock));
        world.setExecutor(std::move(executor));
        return world;
    }

    std::shared_ptr<ManualClock> m_clock = std::make_shared<ManualClock>();
    std::shared_ptr<ManualExecutor> m_executor = std::make_shared<ManualExecutor>(m_clock);
    World::Override m_override{worldWith(m_clock, m_executor)};
};

/// Runs `body` on a thread, and so with a run loop, of its own.
template <class F> void onThreadOfItsOwn(F&& body)
{
    auto thread = std::thread(std::forward<F>(body));
    thread.join();
}

/// Lets `body`, which may take the world, use a loop of its own in a world whose clock it holds.
template <class F> void inManualWorld(F&& body)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([&] {
        if constexpr (std::invocable<F&, ManualWorld&>)
            body(world);
        else
            body();
    });
}

} // namespace orrenby::testing
