#pragma once

/// @file
/// The hop that does something once when its stream ends, however it ends.

#include "Orrenby/Platform/Engines/Ground/Subscription.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Runs an action when the source has ended or the subscription was cancelled, whichever comes first, once.
///
/// It is the source link in front of the real one, so a cancelled subscription is off its source before the
/// action runs.
class ORRENBY_EXPORT EndAction : public SourceLink {
public:
    explicit EndAction(Subscription& subscription) noexcept
        : m_subscription(subscription)
    {}

    /// Sets what to do. If the end has come already, it is done at once. Call it once at most.
    void set(UniqueFunction<void()> action) noexcept;

    void run() noexcept;
    void detach() noexcept override;
    void wait() noexcept override {}

private:
    enum class State : std::uint8_t { Open, Set, Ended };

    Subscription& m_subscription;
    UniqueFunction<void()> m_action;
    std::atomic<State> m_state = State::Open;
};

/// Passes everything on, and runs an `EndAction` before it passes on the end.
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
        m_downstream.finish();
    }

private:
    EndAction& m_action;
    Receiver<T>& m_downstream;
};

} // namespace orrenby::detail
