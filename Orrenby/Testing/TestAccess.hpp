#pragma once

/// @file
/// The test kit's way to private state that is worth testing.

#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/TestAccess.hpp"
#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Utilities/Discover/FlowController.hpp"
#include "Orrenby/Utilities/Discover/FlowCore.hpp"
#include "Orrenby/Utilities/Streams/EngineChoice.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::testing {

/// Reads and resets private state. For tests of the library and of what is built on it; an application has no
/// use for it.
///
/// Not synchronised.
struct TestAccess {
    /// Opens the choice of the stream engine again, as in a new process. Stream objects made before must not
    /// be used any more.
    static void resetEngineChoice() noexcept { detail::engineChoice.store(0); }

    /// The engine's own object behind a subject.
    template <class Subject> static auto& core(const Subject& subject) noexcept { return subject.core(); }

    /// Makes one turn of the calling thread's `loop` without waiting.
    /// @returns Whether anything was called, timers included.
    static bool turn(RunLoop& loop, std::string_view mode) { return loop.turn(mode); }

    /// When `loop` would stop waiting because of its timers, in monotonic seconds; infinite without one.
    static double latestMoment(const RunLoop& loop, std::string_view mode) { return loop.latestMoment(mode); }

    /// Drops what was handed over to `loop` and invalidates its timers.
    static void discardAll(RunLoop& loop) { loop.discardAll(); }

    /// Replaces what a box of references does where one of them would leave it.
    template <class Box>
    static void setUnsupportedUnsafeOperation(Box& box, void (*operation)(std::string_view)) noexcept
    {
        box.m_unsupportedUnsafeOperation = operation;
    }

    /// Whether leak detection is on for the flows attached to `controller`.
    static bool isFlowLeakDetectionEnabled(const FlowController& controller) noexcept
    {
        return controller.m_isFlowLeakDetectionEnabled;
    }

    /// The same for the sub-flows of `flow`.
    static bool isFlowLeakDetectionEnabled(const detail::FlowCore& flow) noexcept
    {
        return isFlowLeakDetectionEnabled(*flow.m_flowController);
    }

    /// The component that `builder` made last. Empty if nothing else keeps it, or if it is no reference.
    template <class AnyBuilder> static Ref<const void> lastComponent(const AnyBuilder& builder) noexcept
    {
        return builder.m_lastComponent.lock();
    }

    /// The entries of `chain`, those of responders that are gone included.
    template <class AnyChain> static auto responderCount(const AnyChain& chain) noexcept
    {
        return chain.m_responders.size();
    }
};

} // namespace orrenby::testing
