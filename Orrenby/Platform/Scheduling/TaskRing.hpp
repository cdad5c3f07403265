#pragma once

/// @file
/// A line of tasks. Not in the umbrella header: part of the queues' own workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Scheduling/QueueCore.hpp"
#include <cstddef>
#include <memory>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// First in, first out, in one block that doubles when it is full. Not synchronised.
class TaskRing {
public:
    bool isEmpty() const noexcept { return m_size == 0; }
    const QueueTask& front() const noexcept { return m_tasks[m_first]; }

    void append(QueueTask&& task)
    {
        if (m_size == m_capacity)
            grow();
        m_tasks[(m_first + m_size) & (m_capacity - 1)] = std::move(task);
        ++m_size;
    }

    QueueTask takeFirst() noexcept
    {
        auto result = std::move(m_tasks[m_first]);
        m_first = (m_first + 1) & (m_capacity - 1);
        if (--m_size == 0 && m_capacity > keptCapacity) {
            m_tasks.reset();
            m_capacity = 0;
            m_first = 0;
        }
        return result;
    }

private:
    /// A burst should not hold its memory for ever.
    static constexpr std::size_t keptCapacity = 4096;

    void grow()
    {
        const auto capacity = m_capacity == 0 ? 16 : 2 * m_capacity;
        auto tasks = std::make_unique<QueueTask[]>(capacity);
        for (std::size_t index = 0; index < m_size; ++index)
            tasks[index] = std::move(m_tasks[(m_first + index) & (m_capacity - 1)]);
        m_tasks = std::move(tasks);
        m_capacity = capacity;
        m_first = 0;
    }

    std::unique_ptr<QueueTask[]> m_tasks;
    std::size_t m_capacity = 0; ///< 0 or a power of two.
    std::size_t m_first = 0;
    std::size_t m_size = 0;
};

} // namespace orrenby::detail
