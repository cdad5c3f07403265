#include "Orrenby/Platform/Engines/Ground/EndNode.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

void EndAction::set(UniqueFunction<void()> action) noexcept
{
    m_action = std::move(action);
    auto expected = State::Open;
    if (!m_state.compare_exchange_strong(expected, State::Set, std::memory_order_acq_rel))
        std::exchange(m_action, {})();
}

void EndAction::run() noexcept
{
    // Still open: who sets the action will find that the end has come, and run it there.
    if (m_state.exchange(State::Ended, std::memory_order_acq_rel) == State::Set)
        std::exchange(m_action, {})();
}

void EndAction::detach() noexcept { run(); }

} // namespace orrenby::detail
