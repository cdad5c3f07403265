#pragma once

/// @file
/// What the handles of a dispatch queue share. Not in the umbrella header: part of the queues' own workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/World/Signal.hpp"
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

class DelayedWork;

/// An entry of a queue: work, or the place of a caller of `sync`.
struct QueueTask {
    UniqueFunction<void()> work;
    Signal* turn = nullptr; ///< Whom to tell that it is his turn, instead of running work.
    QueueTurn::Kind kind = QueueTurn::Kind::Shared;
};

/// A queue of any kind. Alive as long as a handle or work of it is.
class ORRENBY_EXPORT QueueCore : public std::enable_shared_from_this<QueueCore> {
public:
    QueueCore(DispatchQueue::Kind kind, std::string label);
    QueueCore(const QueueCore&) = delete;
    QueueCore& operator=(const QueueCore&) = delete;
    virtual ~QueueCore();

    const std::string& label() const noexcept { return m_label; }
    DispatchQueue::Kind kind() const noexcept { return m_kind; }

    virtual void append(QueueTask task) = 0;
    void appendAfter(double seconds, UniqueFunction<void()> work);

    /// Returns when it is the caller's turn.
    virtual void enter(QueueTurn::Kind kind) = 0;
    virtual void leave(QueueTurn::Kind kind) noexcept = 0;

    /// Whether the calling thread runs in the name of this queue.
    virtual bool isCurrent() const noexcept { return QueueFrame::find(*this) == QueueFrame::Answer::Yes; }

protected:
    /// Pieces of work after which a queue stands in line again.
    static constexpr std::size_t workPerRun = 256;

private:
    friend class DelayedWork;

    /// Appends all delayed work up to `last`, in order. It is gone already if a later one came first.
    void appendDelayed(const DelayedWork& last);
    void discardDelayed(const DelayedWork& work) noexcept;

    const DispatchQueue::Kind m_kind;
    const std::string m_label;
    std::mutex m_delayMutex;
    std::vector<DelayedWork*> m_delayed; ///< A heap, the earliest first.
    std::size_t m_delayNumber = 0;
};

/// The main queue's, made when first asked for and never destroyed.
ORRENBY_EXPORT const std::shared_ptr<QueueCore>& mainQueueCore();

} // namespace orrenby::detail
