#pragma once

/// @file
/// An operation queue in a world that the test drives, and operations that write down that they ran.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Tests/Support/OperationParts.hpp"
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace orrenby::inline ORRENBY_ABI::testing {

using Priority = Operation::QueuePriority;

/// Everything here runs on one thread that the test drives.
class OperationQueueTest : public ::testing::Test {
protected:
    Ref<NamedOperation> named(const std::string& name, Priority priority = Priority::Normal) const
    {
        auto operation = make<NamedOperation>(m_ran, name);
        operation->setQueuePriority(priority);
        return operation;
    }

    /// Cannot begin before the other has finished.
    Ref<NamedOperation> namedAfter(const Ref<Operation>& other, const std::string& name) const
    {
        auto operation = named(name);
        operation->addDependency(other);
        return operation;
    }

    /// A block that writes its name.
    auto writing(const std::string& name) const
    {
        return [ran = m_ran, name] { ran->push_back(name); };
    }

    const Entries& ran() const { return *m_ran; }

    VirtualWorld m_world;
    OperationQueue m_queue;

private:
    std::shared_ptr<Entries> m_ran = std::make_shared<Entries>();
};

using OperationQueueDeathTest = OperationQueueTest;

} // namespace orrenby::testing
