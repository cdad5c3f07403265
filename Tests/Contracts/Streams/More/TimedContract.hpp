#pragma once

/// @file
/// Tests of operators that do something later, in a world that stands still.

#include "Orrenby/Testing/MarbleSource.hpp"
#include "Orrenby/Testing/Recorder.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"
#include <string>
#include <string_view>

namespace orrenby::testing {

/// Runs a test on both engines under virtual time. A frame of marbles takes 10 ms.
class TimedContract : public BothEngines {
protected:
    VirtualWorld& world() { return m_world; }

    /// What `apply` makes of the stream.
    template <class Apply> std::string marbles(std::string_view stream, const Apply& apply)
    {
        const auto source = MarbleSource<char, Trouble>(stream);
        const auto recorder = Recorder(apply(source.asPublisher()));
        m_world.runAll();
        return recorder.marbles();
    }

private:
    VirtualWorld m_world;
};

inline void sendTrouble(const NumberSubject& subject) { subject.send(Trouble{1}); }

/// Once cancelled, nothing is kept by what still waits in a queue. `begin` brings the operator to wait.
template <class Apply, class Begin>
void expectToKeepNothingWhileADelayIsPending(VirtualWorld& world, const Apply& apply, const Begin& begin)
{
    const auto before = Streams::liveSubscriptionCount();
    const auto kept = std::make_shared<int>(0);
    {
        const auto subject = NumberSubject();
        auto calls = 0;
        auto handle = apply(subject.asPublisher().map([kept](int value) {
            return value + *kept;
        })).sink([kept, &calls](const auto&) { ++calls; });
        begin(subject);
        EXPECT_GT(world.pendingCount(), 0U);
        calls = 0;

        handle = {};

        EXPECT_EQ(Streams::liveSubscriptionCount(), before);
        EXPECT_EQ(kept.use_count(), 1);
        EXPECT_GT(world.pendingCount(), 0U);
        world.runAll();
        EXPECT_EQ(calls, 0);
    }
    EXPECT_EQ(world.pendingCount(), 0U);
}

} // namespace orrenby::testing
