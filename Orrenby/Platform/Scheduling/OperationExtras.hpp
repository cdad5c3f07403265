#pragma once

/// @file
/// What only some operations need. Not in the umbrella header: part of the operations' own workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/Operation.hpp"
#include "Orrenby/Platform/World/Signal.hpp"
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// From one operation to another that has to wait for it. Whoever closes it first tells the one that waits.
class Operation::Edge {
public:
    Edge(WeakRef<Operation> dependent, bool isOpen) noexcept
        : m_dependent(std::move(dependent))
        , m_isOpen(isOpen)
    {}

    /// @param busy  See `noticeFinished`.
    void close(const detail::OperationQueueCore* busy = nullptr);
    /// Whether closing it would change nothing.
    bool isSettled() const noexcept { return !m_isOpen || m_dependent.expired(); }

private:
    const WeakRef<Operation> m_dependent;
    std::atomic<bool> m_isOpen;
};

namespace detail {

/// Guarded by the operation's lock.
struct OperationExtras {
    struct Dependency {
        Ref<Operation> operation;
        Ref<Operation::Edge> edge;
        std::uint64_t number; ///< By the order of adding.
    };

    std::string name;
    UniqueFunction<void()> completionBlock;
    std::unordered_map<const Operation*, Dependency> dependencies;
    std::uint64_t dependencyCount = 0; ///< Of all that were ever added.
    std::vector<Ref<Operation::Edge>> dependents;
    std::vector<Signal*> waiters;
};

} // namespace detail

} // namespace orrenby
