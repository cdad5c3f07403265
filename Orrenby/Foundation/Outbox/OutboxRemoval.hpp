#pragma once

/// @file
/// Removing requests that others may be changing.
///
/// Not in the umbrella header: it serves the outbox.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"

namespace orrenby::inline ORRENBY_ABI {

class NSManagedObject;
class NSManagedObjectContext;
class OutboxEntry;
class StoreError;

namespace detail {

/// Whether a save failed because somebody else had saved this object first.
bool isConflictOf(const StoreError& error, const Ref<NSManagedObject>& object);

/// Reads the object again and gives up its changes, a deletion included. Whether it is in the store; if not,
/// it stays as it is. Throws a `StoreError` for other reasons.
bool refreshIfThere(NSManagedObjectContext& context, const Ref<NSManagedObject>& object);

/// Removes an entry and those of the same key, and saves. Whether the entry was there.
bool removeFromOutbox(const Ref<NSManagedObjectContext>& context, const Ref<OutboxEntry>& entry);

} // namespace detail

} // namespace orrenby
