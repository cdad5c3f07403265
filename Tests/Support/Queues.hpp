#pragma once

/// @file
/// The dispatch queues that the contract suite runs against, under a world held by the test and under the
/// platform's own.

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/World/Signal.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include <gmock/gmock.h>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::testing {

struct QueueCase {
    const char* name;
    DispatchQueue::Kind kind;
    bool isVirtual;
    DispatchQueue (*make)();
};

inline std::vector<QueueCase> queueCases()
{
    using Kind = DispatchQueue::Kind;
    auto cases = std::vector<QueueCase>();
    for (const auto isVirtual : {true, false}) {
        cases.push_back({"Serial", Kind::Serial, isVirtual, [] { return DispatchQueue::serial("serial"); }});
        cases.push_back({"Concurrent", Kind::Concurrent, isVirtual,
            [] { return DispatchQueue::concurrent("concurrent"); }});
        cases.push_back({"Global", Kind::Concurrent, isVirtual, DispatchQueue::global});
        cases.push_back({"Main", Kind::Main, isVirtual, DispatchQueue::main});
    }
    return cases;
}

template <class Condition> std::vector<QueueCase> queueCasesWhere(Condition condition)
{
    auto cases = queueCases();
    std::erase_if(cases, [&](const auto& each) { return !condition(each); });
    return cases;
}

/// What ran, noted from any thread.
class Notes {
public:
    void add(int number)
    {
        const auto lock = std::lock_guard(m_mutex);
        m_numbers.push_back(number);
    }

    auto adding(int number)
    {
        return [this, number] { add(number); };
    }

    std::vector<int> numbers() const
    {
        const auto lock = std::lock_guard(m_mutex);
        return m_numbers;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<int> m_numbers;
};

/// One queue, and the means to let it do its work.
class QueueContract : public ::testing::TestWithParam<QueueCase> {
protected:
    QueueContract()
    {
        if (GetParam().isVirtual)
            world.emplace();
        queue.emplace(GetParam().make());
    }

    /// The global queue goes on to the next test: its work has not only run then, but is over.
    void TearDown() override
    {
        if (!isVirtual() && GetParam().kind == DispatchQueue::Kind::Concurrent && queue)
            queue->barrierSync([] {});
    }

    bool isVirtual() const { return GetParam().isVirtual; }

    /// One at a time, so what work notes is in the order in which it began.
    bool isOrdered() const { return isVirtual() || GetParam().kind != DispatchQueue::Kind::Concurrent; }

    /// Returns when `signal` has come.
    void waitFor(detail::Signal& signal)
    {
        if (isVirtual())
            world->runUntilIdle();
        if (isVirtual() && !signal.isSignalled())
            world->runAll();
        else if (GetParam().kind == DispatchQueue::Kind::Main)
            while (!signal.isSignalled())
                RunLoop::main().run(NSDefaultRunLoopMode, Date::distantFuture());
        else
            signal.wait();
        ASSERT_TRUE(signal.isSignalled());
    }

    /// Returns when all that was handed over before the call is done.
    void settle()
    {
        auto done = detail::Signal();
        queue->barrierAsync([&] { done.set(); });
        waitFor(done);
    }

    std::optional<VirtualWorld> world;
    std::optional<DispatchQueue> queue;
};

inline std::string nameOf(const ::testing::TestParamInfo<QueueCase>& info)
{
    return std::string(info.param.name) + (info.param.isVirtual ? "Virtual" : "Real");
}

} // namespace orrenby::testing
