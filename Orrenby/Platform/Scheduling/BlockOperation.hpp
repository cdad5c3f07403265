#pragma once

/// @file
/// Operations made of closures.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/Operation.hpp"
#include "Orrenby/Platform/Scheduling/PlainMutex.hpp"
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// Runs one block, or several at the same time, and has finished when all of them have returned.
///
/// @snippet Tests/Platform/Scheduling/BlockOperationTests.cpp Waiting for several blocks
///
/// The first block runs on the thread that starts the operation; further ones begin in order there and on
/// other threads of the executor, whatever limit the operation's queue has. Blocks are destroyed once they
/// have run, or when the operation finishes without running them. A block that throws ends the process.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT BlockOperation : public Operation {
public:
    /// Without a block there is nothing to do.
    BlockOperation();
    explicit BlockOperation(UniqueFunction<void()> block);
    ~BlockOperation() override;

    /// One more block. To add one after the operation has begun is a programming error.
    void addExecutionBlock(UniqueFunction<void()> block);

    void main() override;

private:
    class Blocks;
    struct Work {
        UniqueFunction<void()> first = {};
        std::vector<UniqueFunction<void()>> others = {};
    };

    Work takeWork() noexcept;
    void letGoOfWork() noexcept final;

    detail::PlainMutex m_blocksMutex;
    Work m_work;
    bool m_hasBegun = false;
};

} // namespace orrenby
