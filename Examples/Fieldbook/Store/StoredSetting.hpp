#pragma once

/// @file
/// A setting as the store keeps it.

#include "Orrenby/Foundation/BaseManagedObject.hpp"
#include "Orrenby/Platform/Store/ManagedMembers.hpp"
#include <string>

namespace fieldbook {

/// What the user chose, under a name: both texts, as people type them.
///
/// Use from the queue of its context.
class StoredSetting : public orrenby::BaseManagedObject {
public:
    using BaseManagedObject::BaseManagedObject;

    static constexpr auto entityName = "Setting";

    orrenby::Attribute<std::string, "name"> name{*this};
    orrenby::Attribute<std::string, "value"> text{*this};
};

} // namespace fieldbook
