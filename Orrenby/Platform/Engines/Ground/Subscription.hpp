#pragma once

/// @file
/// One running subscription: a single heap block that holds the handle's state and every node of the chain.

#include "Orrenby/Platform/Engines/Ground/Receiver.hpp"
#include "Orrenby/Platform/Engines/Ground/Retained.hpp"
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Which engine made a stream object.
enum class Engine : std::uint8_t { Combine, Rx };

/// A node through which a source reaches the subscription.
class ORRENBY_EXPORT SourceLink : public Node {
public:
    /// Takes the subscription off the source: nothing more is delivered on this thread, and soon nothing on
    /// others.
    virtual void detach() noexcept = 0;

    /// Returns when no other thread is still delivering through this link. Comes after `detach()`.
    virtual void wait() noexcept = 0;

private:
    SourceLink* m_nextSource = nullptr;
    friend class Subscription;
};

/// The state behind a cancellation handle.
///
/// Two counts keep it: handles, whose last one cancels, and references, held by all handles together and by
/// every source that could still be delivering; the block goes away with the last reference. So a handle may
/// be dropped inside its own callback. The nodes lie behind this object in the same block.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT Subscription {
public:
    /// The bytes that a node takes in a block.
    template <class N> static constexpr std::size_t bytesFor()
    {
        static_assert(alignof(N) <= alignof(std::max_align_t), "Over-aligned callbacks are not supported");
        return (sizeof(N) + alignof(std::max_align_t) - 1) / alignof(std::max_align_t)
            * alignof(std::max_align_t);
    }

    /// Lays the nodes of one chain behind each other. Used while a subscription is being built, on one
    /// thread.
    class Builder {
    public:
        /// Makes a block with room for `bytes` bytes of nodes and keeps `description` alive with it. It has
        /// one handle.
        Builder(std::size_t bytes, Retained<const Counted> description, Engine engine);

        Subscription& subscription() const noexcept { return *m_subscription; }

        /// Goes on with the same subscription in another block, which a node of it owns.
        Builder continuedIn(void* block) const noexcept
        {
            return Builder(*m_subscription, static_cast<std::byte*>(block));
        }

        template <class N, class... A> N& add(A&&... arguments)
        {
            auto* const node = new (m_next) N(std::forward<A>(arguments)...);
            m_next += bytesFor<N>();
            m_subscription->keep(*node);
            return *node;
        }

        template <class N, class... A> N& addSource(A&&... arguments)
        {
            auto& node = add<N>(std::forward<A>(arguments)...);
            m_subscription->keepSource(node);
            return node;
        }

    private:
        Builder(Subscription& subscription, std::byte* next) noexcept
            : m_subscription(&subscription)
            , m_next(next)
        {}

        Subscription* m_subscription;
        std::byte* m_next;
    };

    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

    /// Ends all deliveries. Idempotent; afterwards nothing reaches the callback on this thread.
    void cancel() noexcept;

    /// As `cancel()`, and returns only when no other thread is inside the callback any more.
    void cancelAndWait() noexcept;

    bool isCancelled() const noexcept { return m_isCancelled.load(std::memory_order_relaxed); }
    Engine engine() const noexcept { return m_engine; }

    /// Counted per process from 1, so that a run repeats.
    std::uint64_t serial() const noexcept { return m_serial; }

    void retainHandle() noexcept { m_handles.fetch_add(1, std::memory_order_relaxed); }
    void releaseHandle() noexcept;
    void retain() noexcept { m_references.fetch_add(1, std::memory_order_relaxed); }
    void release() noexcept;

    /// How many exist in the process at this moment, running or cancelled. For summaries and tests.
    static std::int64_t liveCount() noexcept;

private:
    Subscription(Retained<const Counted> description, Engine engine) noexcept;
    ~Subscription();
    void detachSources() noexcept;
    void keep(Node& node) noexcept;
    void keepSource(SourceLink& source) noexcept;

    std::atomic<std::uint32_t> m_references = 1;
    std::atomic<std::uint32_t> m_handles = 1;
    std::atomic<bool> m_isCancelled = false;
    const Engine m_engine;
    const std::uint64_t m_serial;
    Node* m_lastNode = nullptr;
    SourceLink* m_firstSource = nullptr;
    const Retained<const Counted> m_description;
};

} // namespace orrenby::detail
