#pragma once

/// @file
/// The base class of an application's stored objects.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Store/NSEntityDescription.hpp"
#include "Orrenby/Platform/Store/NSManagedObject.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Base of the classes of an application's stored objects. It adds nothing to `NSManagedObject` but a common
/// name.
///
/// @snippet Tests/Foundation/BaseManagedObjectTests.cpp Deriving stored objects
///
/// Made with `make`. Use from the queue of its context.
class ORRENBY_EXPORT BaseManagedObject : public NSManagedObject {
public:
    /// @param insertInto  The context that the object becomes part of; without one it belongs to none.
    explicit BaseManagedObject(
        Ref<const NSEntityDescription> entity, const Ref<NSManagedObjectContext>& insertInto = nullptr)
        : NSManagedObject(std::move(entity), insertInto)
    {}
    ~BaseManagedObject() override;
};

} // namespace orrenby
