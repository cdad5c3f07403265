#pragma once

/// @file
/// A store: one file of objects, or one in memory.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Owned.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectModel.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include "Orrenby/Platform/Store/StoreSettings.hpp"
#include <memory>

namespace orrenby::inline ORRENBY_ABI {

class NSManagedObjectContext;

namespace detail {

class StoreCore;

} // namespace detail

/// The objects of one model, kept in a file or in memory.
///
/// A store is only opened here; its objects are worked with in contexts, of which it may have any number.
///
/// @snippet Tests/Platform/Store/PersistentStoreTests.cpp Keeping objects
///
/// A new file gets the tables of the model. An existing one must have been made for a model that stores
/// alike, else opening fails with `SchemaMismatch` and leaves the file as it is. A save is in the file whole,
/// or not at all, also when the process ends in the middle of it. Several processes may have the file open:
/// whoever saves while another does waits for the busy timeout.
///
/// Closed when the last reference and the last context are gone. Safe to use from several threads; contexts
/// of one store take turns.
class ORRENBY_EXPORT PersistentStore {
    struct Private {};

public:
    /// Opens the file of the settings, or makes it. Throws a `StoreError`.
    static Ref<PersistentStore> open(
        Ref<const NSManagedObjectModel> model, const StoreSettings& settings = {});

    /// `open` that gives the failure instead of throwing it.
    static Result<Ref<PersistentStore>, StoreError> tryOpen(
        Ref<const NSManagedObjectModel> model, const StoreSettings& settings = {});

    /// For `open` only.
    PersistentStore(Private, Ref<const NSManagedObjectModel> model, const StoreSettings& settings);
    PersistentStore(const PersistentStore&) = delete;
    PersistentStore& operator=(const PersistentStore&) = delete;
    ~PersistentStore();

    /// The model that it was opened with.
    const Ref<const NSManagedObjectModel>& model() const noexcept { return m_model; }

private:
    friend class NSManagedObjectContext;

    Ref<const NSManagedObjectModel> m_model;
    detail::Owned<detail::StoreCore> m_core;
};

} // namespace orrenby
