#pragma once

/// @file
/// The registration of a file descriptor with a run loop.

#include "Orrenby/Platform/Export.hpp"
#include <memory>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

class RunLoopCore;
struct DescriptorEntry;

} // namespace detail

/// Keeps a run loop watching a file descriptor (`RunLoop::watch`). Dropping it ends that.
///
/// It may be dropped inside its own callback, which then returns as usual, inside that of another watch, and
/// on another thread, where a call that is going on is not waited for. After the drop no call begins. It may
/// outlive its loop.
///
/// Movable, not copyable. A watch is not synchronised, but it may be dropped on any thread.
class ORRENBY_EXPORT DescriptorWatch {
public:
    /// Watches nothing.
    DescriptorWatch() noexcept;
    DescriptorWatch(DescriptorWatch&& other) noexcept;
    DescriptorWatch& operator=(DescriptorWatch&& other) noexcept;
    ~DescriptorWatch();

    /// Whether it still watches: it was not moved from, and the thread of its loop has not ended.
    bool isActive() const noexcept;

private:
    friend class detail::RunLoopCore;

    DescriptorWatch(
        std::weak_ptr<detail::RunLoopCore> loop, std::shared_ptr<detail::DescriptorEntry> entry) noexcept;

    std::weak_ptr<detail::RunLoopCore> m_loop;
    std::shared_ptr<detail::DescriptorEntry> m_entry;
};

} // namespace orrenby
