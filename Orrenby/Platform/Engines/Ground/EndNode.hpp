#pragma once

/// @file
/// The hop that does something once when its stream ends, however it ends.

#include "Orrenby/Platform/Engines/Ground/Subscription.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Runs an action when the source has ended or the subscription was cancelled, whichever comes first, once.
///
/// It is the source link in front of the real one, so a cancelled subscription is off its source before the
/// action runs. `Subscription::cancelAndWait` calls the other action that may be set, and that one perhaps
/// several times, on several threads.
class ORRENBY_EXPORT EndAction : public SourceLink {
public:
    explicit EndAction(Subscription& subscription) noexcept
        : m_subscription(subscription)
    {}

    /// Sets what to do. If the end has come already, it is done at once. Call it once at most.
    /// @param wait  Returns when nothing that feeds the stream runs on other threads any more. May be empty.
    void set(UniqueFunction<void()> action, UniqueFunction<void()> wait = nullptr) noexcept;

    void run() noexcept;
    void detach() noexcept override;
    void wait() noexcept override;

    bool isCancelled() const noexcept { return m_subscription.isCancelled(); }

private:
    enum class State : std::uint8_t { Open, Set, EndedWhileOpen, Ended };

    Subscription& m_subscription;
    UniqueFunction<void()> m_action;
    UniqueFunction<void()> m_wait; // read by others once the action was set
    std::atomic<State> m_state = State::Open;
};

/// Passes everything on, and runs an `EndAction` before it passes on the end, unless that cancels it.
template <class T> class EndNode final : public Receiver<T> {
public:
    EndNode(EndAction& action, Receiver<T>& downstream) noexcept
        : m_action(action)
        , m_downstream(downstream)
    {}

    void receive(Pass<T> value) noexcept override { m_downstream.receive(value); }

    void finish() noexcept override
    {
        m_action.run();
        if (!m_action.isCancelled())
            m_downstream.finish();
    }

private:
    EndAction& m_action;
    Receiver<T>& m_downstream;
};

} // namespace orrenby::detail
