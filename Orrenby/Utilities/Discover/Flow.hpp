#pragma once

/// @file
/// One navigation unit of an application: the flow interface.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Utilities/Discover/Context.hpp"
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// One navigation unit: it owns a context and can be started and ended.
///
/// A flow does not record whether it runs; its context tells. An interface: application flows derive from
/// `AbstractFlow`, which brings sub-flows.
///
/// Use from the main thread.
class ORRENBY_EXPORT Flow {
public:
    virtual ~Flow() = default;

    /// The context that this flow switches on and off. Never empty while the flow lives.
    virtual Ref<Context> _context() const = 0;

    /// While the context is active it does nothing.
    virtual void start() = 0;

    /// While the context is inactive it does nothing.
    virtual void end() = 0;
};

/// Flows in the order in which they were attached.
using Flows = std::vector<Ref<Flow>>;

} // namespace orrenby
