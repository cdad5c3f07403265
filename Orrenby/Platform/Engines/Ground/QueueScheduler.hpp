#pragma once

/// @file
/// A queue as a place where a stream goes on.

#include "Orrenby/Platform/Engines/Ground/Retained.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"

namespace orrenby::inline ORRENBY_ABI {

class DispatchQueue;
class OperationQueue;

namespace detail {

/// Runs work on a queue of either kind. Safe to use from several threads.
class ORRENBY_EXPORT QueueScheduler : public Counted {
public:
    virtual void post(UniqueFunction<void()> work) const = 0;
};

ORRENBY_EXPORT Retained<const QueueScheduler> schedulerOn(const DispatchQueue& queue);
/// Each piece of work becomes an operation of normal priority.
ORRENBY_EXPORT Retained<const QueueScheduler> schedulerOn(const OperationQueue& queue);

} // namespace detail

} // namespace orrenby
