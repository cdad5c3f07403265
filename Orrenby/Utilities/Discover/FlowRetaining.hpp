#pragma once

/// @file
/// The mark of a flow that keeps its sub-flows on purpose.

#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// Marks a flow class that holds on to ended sub-flows deliberately: leak detection is off for the sub-flows
/// attached to it.
///
/// @snippet Tests/Utilities/Discover/FlowRetainingTests.cpp Keeping ended sub-flows
///
/// The class that is made counts, with all its bases. Nothing is to be implemented.
class ORRENBY_EXPORT FlowRetaining {
public:
    virtual ~FlowRetaining() = default;
};

} // namespace orrenby
