#pragma once

/// @file
/// The clean-up actions of a future.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/PlainMutex.hpp"
#include <memory>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Collects actions that attempts have left behind, until one of a future's subscriptions ends and all are
/// run. Shared by the future and its live subscriptions.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT CleanUps {
public:
    using Action = UniqueFunction<void()>;

    /// Adds an action at the end. Once nobody owns the actions any more, it is dropped without being run. An
    /// empty one is ignored.
    static void add(const std::weak_ptr<CleanUps>& cleanUps, Action action) noexcept;

    /// Runs all actions in the order of their coming, each once: those that it causes to come wait for the
    /// next run. No lock is held meanwhile.
    void run() noexcept;

private:
    PlainMutex m_mutex;
    std::vector<Action> m_actions;
};

} // namespace orrenby::detail
