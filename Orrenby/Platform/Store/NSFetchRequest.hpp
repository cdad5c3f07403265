#pragma once

/// @file
/// Which objects of a store are wanted, and in what order.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Store/NSPredicate.hpp"
#include <cstddef>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// An attribute that decides the order. Empty values come first; texts, bytes and UUIDs compare by their
/// bytes, false comes before true.
struct NSSortDescriptor {
    std::string key = {};    ///< Of an attribute.
    bool isAscending = true; ///< The least values first.
};

/// What to fetch. Without an order the objects come as they were first saved, unsaved ones last; these also
/// decide between equals.
struct NSFetchRequest {
    std::string entity = {}; ///< The name of the entity.
    /// What they have to fulfil.
    NSPredicate predicate = {};
    /// The first one decides, the next ones among its equals.
    std::vector<NSSortDescriptor> sortDescriptors = {};
    /// How many at most; 0 sets no limit.
    std::size_t fetchLimit = 0;
    /// How many to pass over first.
    std::size_t fetchOffset = 0;
};

} // namespace orrenby
