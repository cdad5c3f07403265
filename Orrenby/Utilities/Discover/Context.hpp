#pragma once

/// @file
/// What a flow switches on and off: the context interface.

#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// The non-visual state of one flow. It is on while its flow runs.
///
/// An interface: application contexts derive from `AbstractContext`, which brings workers and subscriptions.
///
/// Use from the main thread.
class ORRENBY_EXPORT Context {
public:
    virtual ~Context() = default;

    /// From its activation until its deactivation.
    virtual bool isActive() const = 0;

    /// On an active context it does nothing.
    virtual void activate() = 0;

    /// On an inactive context it does nothing.
    virtual void deactivate() = 0;
};

} // namespace orrenby
