#pragma once

/// @file
/// Guarded saves and transactions of store contexts.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Where a context keeps its validity among its user information, as a boolean.
inline constexpr std::string_view managedObjectContextIsValidKey = "CoreDataServiceContextIsValidKey";

namespace detail {

ORRENBY_EXPORT bool isContextValid(const Ref<NSManagedObjectContext>& context);
ORRENBY_EXPORT void saveContextChanges(const Ref<NSManagedObjectContext>& context);
ORRENBY_EXPORT Result<Void, StoreError> trySaveContextChanges(const Ref<NSManagedObjectContext>& context);

} // namespace detail

/// Whether the context was marked as valid: `context | isValid`. A fresh one was not, and what is no boolean
/// counts as false, a number too. An empty reference in place of a context is a programming error, here and
/// in what follows, and ends the process.
///
/// @snippet Tests/Foundation/NSManagedObjectContextTests.cpp Saving what is valid
///
/// Use where the context may be used.
inline constexpr auto isValid = pipeable<const Ref<NSManagedObjectContext>&>(
    [](const Ref<NSManagedObjectContext>& context) { return detail::isContextValid(context); });

/// Marks the context as valid, or not.
ORRENBY_EXPORT void setIsValid(const Ref<NSManagedObjectContext>& context, bool valid);

/// Options of `set`.
struct ContextValidity {
    bool valid = false; ///< What the context is marked as.
    /// Whether the context's parent is marked as well, if there is one. The parent's own parent never is.
    bool withParent = false;
};

/// Marks the context and perhaps its parent: `set(context, {.valid = true, .withParent = true})`.
///
/// The parent is marked on its own queue, for which the caller waits; the context on the calling thread.
ORRENBY_EXPORT void set(const Ref<NSManagedObjectContext>& context, const ContextValidity& validity);

/// Saves a valid context that has changes: `context | saveChanges`. Otherwise it does nothing.
///
/// @snippet Tests/Foundation/NSManagedObjectContextTests.cpp Saving what is valid
///
/// A save that fails throws its `StoreError`, and the changes are still there. Use where the context may be
/// used.
inline constexpr auto saveChanges = pipeable<const Ref<NSManagedObjectContext>&>(
    [](const Ref<NSManagedObjectContext>& context) { detail::saveContextChanges(context); });

/// `saveChanges` that gives the failure instead of throwing it: `context | trySaveChanges`. Without anything
/// to save, and for a context that is not valid, it is a success.
///
/// @snippet Tests/Foundation/NSManagedObjectContextTests.cpp Saving without a throw
///
/// Use where the context may be used.
inline constexpr auto trySaveChanges = pipeable<const Ref<NSManagedObjectContext>&>(
    [](const Ref<NSManagedObjectContext>& context) { return detail::trySaveContextChanges(context); });

/// Options of `commit`. What is called here must not throw: a throw ends the process.
struct CommitOptions {
    /// Called before the transaction.
    UniqueFunction<void(const Ref<NSManagedObjectContext>&)> prepare = {};
    /// Called after the save, also when the transaction or the save failed.
    UniqueFunction<void(const Ref<NSManagedObjectContext>&)> cleanup = {};
};

/// Runs a transaction on the queue of the context and saves what it changed; the caller waits.
///
/// @snippet Tests/Foundation/NSManagedObjectContextTests.cpp Committing a transaction
///
/// In this order: `prepare`, `transaction`, the save if there are changes, `cleanup`. A transaction that
/// throws is not saved, and its changes stay in the context. What it or the save throws reaches the caller
/// after `cleanup`. Whether the context is valid does not matter. It holds the context until it returns. Safe
/// to use from several threads, on the queue of the context too.
ORRENBY_EXPORT void commit(const Ref<NSManagedObjectContext>& context, CommitOptions options,
    UniqueFunction<void(const Ref<NSManagedObjectContext>&)> transaction);

/// `commit` that gives what the transaction or the save threw instead of throwing it.
///
/// @snippet Tests/Foundation/NSManagedObjectContextTests.cpp Committing without a throw
///
/// Safe to use from several threads, as `commit` is.
[[nodiscard]] ORRENBY_EXPORT Result<Void, AnyError> tryCommit(const Ref<NSManagedObjectContext>& context,
    CommitOptions options, UniqueFunction<void(const Ref<NSManagedObjectContext>&)> transaction);

} // namespace orrenby
