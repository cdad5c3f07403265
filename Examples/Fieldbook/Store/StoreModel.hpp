#pragma once

/// @file
/// What the store of the application holds, and what it held in earlier versions.

#include "Orrenby/Platform/Store/NSManagedObjectModel.hpp"
#include "Orrenby/Platform/Store/StoreMigration.hpp"
#include <vector>

namespace fieldbook {

/// Version 1: reports, which knew nothing of being sent, and settings.
orrenby::Ref<const orrenby::NSManagedObjectModel> firstStoreModel();

/// Version 2, the present one: reports, settings and the outbox.
orrenby::Ref<const orrenby::NSManagedObjectModel> storeModel();

/// The way from the first version to the present one. Reports of version 1 count as not sent.
std::vector<orrenby::MigrationStep> storeMigration();

} // namespace fieldbook
