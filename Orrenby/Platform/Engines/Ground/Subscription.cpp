#include "Orrenby/Platform/Engines/Ground/Subscription.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {
constinit std::atomic<std::uint64_t> startedCount = 0;
constinit std::atomic<std::uint64_t> endedCount = 0;

// Nodes begin at the first place behind the block's head that suits any type.
constexpr std::size_t headBytes = (sizeof(Subscription) + alignof(std::max_align_t) - 1)
    / alignof(std::max_align_t) * alignof(std::max_align_t);
}

Node::~Node() = default;

Subscription::Builder::Builder(std::size_t bytes, Retained<const Counted> description, Engine engine)
{
    auto* const block = static_cast<std::byte*>(::operator new(headBytes + bytes));
    m_subscription = new (block) Subscription(std::move(description), engine);
    m_next = block + headBytes;
}

Subscription::Subscription(Retained<const Counted> description, Engine engine) noexcept
    : m_engine(engine)
    , m_serial(startedCount.fetch_add(1, std::memory_order_relaxed) + 1)
    , m_description(std::move(description))
{}

Subscription::~Subscription()
{
    while (m_lastNode) {
        auto* const previous = m_lastNode->m_previous;
        m_lastNode->~Node();
        m_lastNode = previous;
    }
}

void Subscription::keep(Node& node) noexcept
{
    node.m_previous = m_lastNode;
    m_lastNode = &node;
}

void Subscription::keepSource(SourceLink& source) noexcept
{
    source.m_nextSource = m_firstSource;
    m_firstSource = &source;
}

void Subscription::cancel() noexcept
{
    retain(); // a clean-up may drop the handle through which it was called
    detachSources();
    release();
}

void Subscription::cancelAndWait() noexcept
{
    retain();
    detachSources();
    for (auto* source = m_firstSource; source; source = source->m_nextSource)
        source->wait();
    release();
}

void Subscription::detachSources() noexcept
{
    m_isCancelled.store(true, std::memory_order_relaxed);
    for (auto* source = m_firstSource; source; source = source->m_nextSource)
        source->detach();
}

void Subscription::releaseHandle() noexcept
{
    if (m_handles.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        detachSources(); // the handles' common reference keeps the block until it is released below
        release();
    }
}

void Subscription::release() noexcept
{
    if (m_references.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    this->~Subscription();
    ::operator delete(this);
    endedCount.fetch_add(1, std::memory_order_relaxed);
}

std::int64_t Subscription::liveCount() noexcept
{
    // Read the ended ones first, so that the difference never falls below zero.
    const auto ended = endedCount.load(std::memory_order_acquire);
    return static_cast<std::int64_t>(startedCount.load(std::memory_order_acquire) - ended);
}

} // namespace orrenby::detail
