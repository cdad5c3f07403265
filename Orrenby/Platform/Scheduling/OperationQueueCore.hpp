#pragma once

/// @file
/// What the handles of an operation queue share. Not in the umbrella header: part of the queues' own
/// workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/Operation.hpp"
#include "Orrenby/Platform/Scheduling/OperationLine.hpp"
#include "Orrenby/Platform/Scheduling/OperationPlace.hpp"
#include "Orrenby/Platform/Scheduling/SpinLock.hpp"
#include "Orrenby/Platform/World/Executor.hpp"
#include "Orrenby/Platform/World/Signal.hpp"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A queue of operations. Alive as long as a handle or an operation of it is.
///
/// All its operations form a list, in the order of adding; those that may begin stand in a line as well. To
/// begin them it calls for a *server* on the executor: one at a time is on its way, and once there it calls
/// the next one, if there is more to begin, before it starts its own. A server goes on with the next
/// operation when the one it started has finished. So there are as many as the executor lets run at once.
class OperationQueueCore : public std::enable_shared_from_this<OperationQueueCore> {
public:
    enum class Kind { Usual, Main };

    explicit OperationQueueCore(Kind kind);
    OperationQueueCore(const OperationQueueCore&) = delete;
    OperationQueueCore& operator=(const OperationQueueCore&) = delete;
    ~OperationQueueCore();

    /// The main queue's, made when first asked for and never destroyed.
    static const Ref<OperationQueueCore>& main();

    void add(const Ref<Operation>& operation, OperationPlace::Kind kind);
    /// The operation says that it may have become ready.
    ///
    /// @param busy  A queue with a server on this thread that will look for more to begin by itself.
    void noticeReady(Operation& operation, const OperationQueueCore* busy = nullptr);
    void changePriority(Operation& operation);
    /// Takes out what has finished, and gives the reference that the queue held.
    Ref<Operation> remove(Operation& operation, const OperationQueueCore* busy = nullptr);

    void waitUntilEmpty();
    bool isCurrent() const noexcept;

    std::vector<Ref<Operation>> operations() const;
    std::size_t count() const;
    bool isSuspended() const;
    void setSuspended(bool isSuspended);
    int limit() const;
    void setLimit(int limit);
    std::optional<DispatchQueue> underlyingQueue() const;
    void setUnderlyingQueue(std::optional<DispatchQueue> queue);
    std::string name() const;
    void setName(std::string name);

private:
    using Lock = std::unique_lock<SpinLock>;
    class Server;
    class Errand;

    void link(const Ref<Operation>& operation, OperationPlace::Kind kind);
    void unlink(Operation& operation) noexcept;
    bool isInFrontOfBarriers(const Operation& operation) const noexcept;
    /// Puts the operation, which is ready, in line if nothing else keeps it.
    void lineUp(Operation& operation);
    /// After a barrier: what it kept back may be ready.
    std::vector<Ref<Operation>> keptBack() const;

    bool mayBegin() const noexcept;
    /// Calls for a server when there is something to begin and none is on its way. Gives the lock back.
    void callServer(Lock& lock);
    /// Begins operations until there is none, or `count` of them. Gives whether the caller has to call for
    /// the next server, because there is more.
    bool serve(std::size_t count) noexcept;
    void begin(Operation& operation);
    /// It could begin when it was put in line, but no longer.
    void putBack(Operation& operation);
    void retire(Server& server) noexcept;
    /// Lets go of everything that has not begun, without starting it: nobody will.
    void abandon() noexcept;

    const Kind m_kind;
    /// Servers and those who add meet here for moments: to sleep would cost them much more.
    mutable SpinLock m_mutex;
    OperationLine m_line;
    Operation* m_first = nullptr;
    Operation* m_last = nullptr;
    std::size_t m_count = 0;
    std::uint64_t m_number = 0;   ///< Of the latest operation.
    std::uint64_t m_barriers = 0; ///< Added so far.
    std::uint64_t m_passedBarriers = 0;
    std::size_t m_running = 0; ///< Operations that have begun.
    int m_limit;
    bool m_isSuspended = false;
    bool m_isServerCalled = false; ///< One is on its way.
    Job* m_freeServers = nullptr;
    std::optional<DispatchQueue> m_underlyingQueue;
    std::string m_name;
    std::vector<Signal*> m_waiters;
};

} // namespace orrenby::detail
