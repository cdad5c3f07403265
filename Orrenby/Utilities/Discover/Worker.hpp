#pragma once

/// @file
/// What runs in the background of a context: the worker interface.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// A unit of background behaviour. It works while its context is active.
///
/// An interface: application workers derive from `AbstractWorker`, which guards both calls and keeps
/// subscriptions. Any other class that has a worker's life may stand in the same list.
///
/// Use from the main thread.
class ORRENBY_EXPORT Worker {
public:
    virtual ~Worker() = default;

    /// Between its start and its stop.
    virtual bool isWorking() const = 0;

    /// On a working worker it does nothing.
    virtual void start() = 0;

    /// On an idle worker it does nothing.
    virtual void stop() = 0;
};

/// Workers in the order in which they start and stop: `Workers {loader, monitor}`. None of the references is
/// empty.
using Workers = std::vector<Ref<Worker>>;

} // namespace orrenby
