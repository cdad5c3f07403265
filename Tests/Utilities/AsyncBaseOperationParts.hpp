#pragma once

/// @file
/// Asynchronous operations that a test completes, and what they tell their observers.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/AsyncBaseOperation.hpp"
#include "Tests/Support/OperationParts.hpp"
#include <string>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::testing {

/// Leaves its completions to the test.
class Pending : public AsyncBaseOperation {
public:
    void execute(Completion completion) override { completions.push_back(std::move(completion)); }

    void complete() { completions.back()(); }

    std::vector<Completion> completions;
};

/// Is done at once.
class Immediate : public AsyncBaseOperation {
public:
    void execute(Completion completion) override
    {
        ++executions;
        completion();
    }

    int executions = 0;
};

inline const std::vector<std::string> bothStates = {"isExecuting", "isFinished"};

/// What an executing operation tells when it finishes.
inline const Entries finishing = {"will isFinished", "will isExecuting", "did isExecuting", "did isFinished"};

/// What an operation tells in a run from its start to its end.
inline const Entries normalRun = {"will isExecuting", "did isExecuting", "will isFinished",
    "will isExecuting", "did isExecuting", "did isFinished"};

/// Executing, finished.
inline std::vector<bool> states(const AsyncBaseOperation& operation)
{
    return {operation.isExecuting(), operation.isFinished()};
}

} // namespace orrenby::testing
