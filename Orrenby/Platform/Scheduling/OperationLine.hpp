#pragma once

/// @file
/// The operations that may begin. Not in the umbrella header: part of the queues' own workings.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class Operation;

namespace detail {

/// Keeps operations by their key, the smallest first.
///
/// Most come in the order of their keys: they stand in a ring, in O(1). The others stand in a tree, in
/// O(log n). The queue keeps the operations alive. Not synchronised.
class OperationLine {
public:
    bool isEmpty() const noexcept { return m_count == 0 && m_late.empty(); }

    /// Its place says in which line it stands: in none.
    void insert(Operation& operation);
    /// Not from an empty line.
    Operation& takeFirst() noexcept;
    void remove(Operation& operation) noexcept;

private:
    Operation*& at(std::size_t position) noexcept { return m_ring[position & (m_ring.size() - 1)]; }
    void append(Operation& operation);
    /// Leaves no gap at the ends of what stands in the ring.
    void trim() noexcept;

    std::vector<Operation*> m_ring; ///< Its size is 0 or a power of two. Who left early left a null.
    std::size_t m_begin = 0;        ///< Positions only grow.
    std::size_t m_end = 0;
    std::size_t m_count = 0;
    std::set<std::pair<std::uint64_t, Operation*>> m_late;
};

} // namespace detail

} // namespace orrenby
