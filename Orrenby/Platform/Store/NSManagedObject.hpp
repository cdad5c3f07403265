#pragma once

/// @file
/// Objects that a store keeps.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Lifetime.hpp"
#include "Orrenby/Platform/Objects/Object.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include "Orrenby/Platform/Store/NSEntityDescription.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectID.hpp"
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class NSManagedObjectContext;

namespace detail {

struct ManagedRecord;

} // namespace detail

/// An object whose values a store keeps.
///
/// Its values are read and set by their names, or through members of a class of one's own:
///
/// @snippet Tests/Platform/Store/NSManagedObjectTests.cpp Declaring a class of stored objects
///
/// A context shows each stored object as exactly one `NSManagedObject`. One that nobody refers to any more
/// goes away, its unsaved changes do not: the context keeps them and shows them by a new object when it is
/// asked. A class of one's own therefore keeps nothing in members of its own, and its constructor sets no
/// values.
///
/// Values can be observed under their names. An object that is reached through a relationship has its values
/// read from the store when they are first needed (a *fault*), which throws a `StoreError` when that fails.
///
/// An object without a context keeps its values like any other, but is never saved.
///
/// Use from the queue of its context; the last reference may be dropped anywhere.
class ORRENBY_EXPORT NSManagedObject : public Lifetime,
                                       public ObservableObject,
                                       public std::enable_shared_from_this<NSManagedObject> {
public:
    /// A new object with the default values of its entity, part of `context` from now on, if there is one.
    /// The entity is one of the context's model, anything else a programming error.
    explicit NSManagedObject(
        Ref<const NSEntityDescription> entity, const Ref<NSManagedObjectContext>& insertInto = nullptr);
    ~NSManagedObject() override;

    /// What it consists of. Never changes.
    const Ref<const NSEntityDescription>& entity() const noexcept;

    /// Temporary until the object was saved to a store.
    NSManagedObjectID objectID() const;

    /// The context; empty for an object without one, and when it is gone.
    Ref<NSManagedObjectContext> managedObjectContext() const;

    /// Whether it was inserted, and not yet saved.
    bool isInserted() const noexcept;
    /// Whether it was deleted, saved or not.
    bool isDeleted() const noexcept;
    /// Whether it is stored and has unsaved changes.
    bool isUpdated() const noexcept;

    /// Whether the next save of its context writes anything for it.
    bool hasChanges() const noexcept { return isInserted() || isUpdated() || (isDeleted() && isTracked()); }
    /// Whether its values were not read yet.
    bool isFault() const noexcept;

    /// The value of an attribute; of a to-one relationship the object or null, of a to-many one an `NSSet` of
    /// objects. An unknown key is a programming error.
    Any value(std::string_view key) const;

    /// Sets an attribute, or a to-one relationship to an object of the same context; null empties either.
    ///
    /// A value of another kind than the attribute's, an object of another entity or context, an unknown key
    /// and a to-many relationship are programming errors.
    void setValue(std::string_view key, Any value);

    /// The object at the end of a to-one relationship; empty when there is none.
    Ref<NSManagedObject> object(std::string_view relationship) const;

    /// Sets it; an empty reference ends the relationship.
    void setObject(std::string_view relationship, const Ref<NSManagedObject>& object);

    /// The members of a to-many relationship, in the order in which they were first saved, unsaved ones last.
    std::vector<Ref<NSManagedObject>> objects(std::string_view relationship) const;
    /// Adds a member; ignored when it is one already.
    void addObject(std::string_view relationship, const Ref<NSManagedObject>& object);
    /// Takes a member out; ignored when it is none.
    void removeObject(std::string_view relationship, const Ref<NSManagedObject>& object);

    /// `Person/p12`
    std::string description() const;

    /// For the members that stand for values: the value at a place. Attributes come first.
    const Any& valueAt(std::size_t slot) const;
    void setValueAt(std::size_t attribute, Any value);

protected:
    std::optional<Any> valueForUndefinedKey(std::string_view key) const override;

private:
    friend class NSManagedObjectContext;

    void release() noexcept final;
    bool isTracked() const noexcept;
    /// The context; a programming error without one.
    NSManagedObjectContext& context() const;
    Ref<detail::ManagedRecord> recordOf(const Ref<NSManagedObject>& object, std::size_t relationship) const;
    std::size_t relationshipIndex(std::string_view name, bool isToMany) const;

    Ref<detail::ManagedRecord> m_record;
};

/// Names `T` as the class of an entity's objects: `EntityOptions{.objectClass = managedObjectClass<Person>}`.
/// `T` inherits the constructors of `NSManagedObject`.
template <class T> Ref<NSManagedObject> managedObjectClass(const Ref<const NSEntityDescription>& entity)
{
    return make<T>(entity, Ref<NSManagedObjectContext>());
}

} // namespace orrenby
