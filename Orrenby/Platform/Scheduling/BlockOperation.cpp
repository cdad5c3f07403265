#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/World/Signal.hpp"
#include <cstddef>
#include <memory>
#include <mutex>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// The further blocks of an operation that has begun. Whoever has time takes the next one.
class BlockOperation::Blocks {
public:
    explicit Blocks(std::vector<UniqueFunction<void()>> blocks) noexcept
        : m_blocks(std::move(blocks))
        , m_unfinished(m_blocks.size())
    {}

    /// Runs blocks until none is left to take.
    void help()
    {
        while (runNext()) {}
    }

    void waitUntilFinished() { m_areFinished.wait(); }

private:
    bool runNext()
    {
        auto block = UniqueFunction<void()>();
        {
            const auto lock = std::lock_guard(m_mutex);
            if (m_next == m_blocks.size())
                return false;
            block = std::move(m_blocks[m_next++]);
        }
        block();
        block = nullptr;
        auto isLast = false;
        {
            const auto lock = std::lock_guard(m_mutex);
            isLast = --m_unfinished == 0;
        }
        if (isLast)
            m_areFinished.set();
        return true;
    }

    std::mutex m_mutex;
    std::vector<UniqueFunction<void()>> m_blocks;
    std::size_t m_next = 0;
    std::size_t m_unfinished;
    detail::Signal m_areFinished;
};

BlockOperation::BlockOperation() = default;
BlockOperation::~BlockOperation() = default;

BlockOperation::BlockOperation(UniqueFunction<void()> block)
    : m_work{.first = std::move(block), .others = {}}
{}

void BlockOperation::addExecutionBlock(UniqueFunction<void()> block)
{
    const auto lock = std::lock_guard(m_blocksMutex);
    if (m_hasBegun)
        fatalError("A block cannot be added to an operation that has begun",
            "Platform/Scheduling/BlockOperation", 67);
    if (m_work.first)
        m_work.others.push_back(std::move(block));
    else
        m_work.first = std::move(block);
}

/// Leaves nothing behind, and lets nothing be added any more.
BlockOperation::Work BlockOperation::takeWork() noexcept
{
    const auto lock = std::lock_guard(m_blocksMutex);
    m_hasBegun = true;
    return std::exchange(m_work, {});
}

void BlockOperation::main()
{
    auto [first, others] = takeWork();
    if (others.empty()) {
        if (first)
            first();
        return;
    }
    const auto count = others.size();
    const auto blocks = std::make_shared<Blocks>(std::move(others));
    for (std::size_t helper = 0; helper < count; ++helper)
        DispatchQueue::global().async([blocks] { blocks->help(); });
    first();
    first = nullptr;
    blocks->help();
    blocks->waitUntilFinished();
}

void BlockOperation::letGoOfWork() noexcept { takeWork(); }

} // namespace orrenby
