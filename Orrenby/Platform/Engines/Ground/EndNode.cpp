#include "Orrenby/Platform/Engines/Ground/EndNode.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

void EndAction::set(UniqueFunction<void()> action, UniqueFunction<void()> wait) noexcept
{
    m_action = std::move(action);
    m_wait = std::move(wait);
    auto expected = State::Open;
    if (!m_state.compare_exchange_strong(expected, State::Set, std::memory_order_acq_rel))
        std::exchange(m_action, {})();
}

void EndAction::run() noexcept
{
    // Still open: who sets the action will find that the end has come, and run it there.
    auto seen = State::Open;
    if (m_state.compare_exchange_strong(seen, State::EndedWhileOpen, std::memory_order_acq_rel))
        return;
    seen = State::Set;
    if (m_state.compare_exchange_strong(seen, State::Ended, std::memory_order_acq_rel))
        std::exchange(m_action, {})();
}

void EndAction::detach() noexcept { run(); }

void EndAction::wait() noexcept
{
    if (m_state.load(std::memory_order_acquire) == State::Ended && m_wait)
        m_wait();
}

} // namespace orrenby::detail
