#pragma once

/// @file
/// The operation queues that the contract suite runs against, under a world held by the test and under the
/// platform's own.

#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Tests/Support/Queues.hpp"
#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::testing {

struct OperationQueueCase {
    const char* name;
    bool isVirtual;
    bool isSerial;
    bool isMain;
    OperationQueue (*make)();
};

inline std::vector<OperationQueueCase> operationQueueCases()
{
    auto cases = std::vector<OperationQueueCase>();
    for (const auto isVirtual : {true, false}) {
        cases.push_back({"Serial", isVirtual, true, false, [] {
                             auto queue = OperationQueue();
                             queue.setMaxConcurrentOperationCount(1);
                             return queue;
                         }});
        cases.push_back({"Paired", isVirtual, false, false, [] {
                             auto queue = OperationQueue();
                             queue.setMaxConcurrentOperationCount(2);
                             return queue;
                         }});
        cases.push_back({"Unlimited", isVirtual, false, false, [] { return OperationQueue(); }});
        cases.push_back({"OnSerialQueue", isVirtual, true, false, [] {
                             auto queue = OperationQueue();
                             queue.setUnderlyingQueue(DispatchQueue::serial("underlying"));
                             return queue;
                         }});
        cases.push_back({"OnConcurrentQueue", isVirtual, false, false, [] {
                             auto queue = OperationQueue();
                             queue.setUnderlyingQueue(DispatchQueue::concurrent("underlying"));
                             return queue;
                         }});
        cases.push_back({"Main", isVirtual, true, true, OperationQueue::main});
    }
    return cases;
}

/// One queue, and the means to let it do its work.
class OperationQueueContract : public ::testing::TestWithParam<OperationQueueCase> {
protected:
    OperationQueueContract()
    {
        if (GetParam().isVirtual)
            world.emplace();
        queue.emplace(GetParam().make());
    }

    bool isVirtual() const { return GetParam().isVirtual; }

    /// Blocks run one at a time, so what they note is in the order in which they began.
    bool isOrdered() const { return isVirtual() || GetParam().isSerial; }

    /// Returns when the queue is empty.
    void settle()
    {
        if (isVirtual())
            world->runAll();
        else if (GetParam().isMain)
            while (queue->operationCount() != 0)
                RunLoop::main().runFor(0.001);
        else
            queue->waitUntilAllOperationsAreFinished();
        ASSERT_EQ(queue->operationCount(), 0U);
    }

    std::optional<VirtualWorld> world;
    std::optional<OperationQueue> queue;
};

inline std::string nameOfOperationQueue(const ::testing::TestParamInfo<OperationQueueCase>& info)
{
    return std::string(info.param.name) + (info.param.isVirtual ? "Virtual" : "Real");
}

} // namespace orrenby::testing
