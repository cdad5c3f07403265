#include "Store/StoreModel.hpp"

#include "Orrenby/Foundation/Outbox/Outbox.hpp"
#include "Store/StoredReport.hpp"
#include "Store/StoredSetting.hpp"
#include <cstdint>
#include <utility>

namespace fieldbook {

namespace {

using orrenby::AttributeKind;

/// Makes objects without members of their own: earlier versions are only read by the migration.
orrenby::EntityOptions firstReports()
{
    return {.name = StoredReport::entityName,
        .attributes = {{.name = "file"}, {.name = "number", .kind = AttributeKind::Int}, {.name = "title"},
            {.name = "place"}, {.name = "observer"}, {.name = "severity"},
            {.name = "body", .isOptional = true},
            {.name = "date", .kind = AttributeKind::Date, .isOptional = true},
            {.name = "isThere", .kind = AttributeKind::Bool, .defaultValue = true}}};
}

orrenby::EntityOptions reports()
{
    auto entity = firstReports();
    entity.attributes.push_back(
        {.name = "sending", .kind = AttributeKind::Int, .defaultValue = std::int64_t(0)});
    entity.objectClass = orrenby::managedObjectClass<StoredReport>;
    return entity;
}

orrenby::EntityOptions settings()
{
    return {.name = StoredSetting::entityName,
        .attributes = {{.name = "name"}, {.name = "value"}},
        .objectClass = orrenby::managedObjectClass<StoredSetting>};
}

} // namespace

orrenby::Ref<const orrenby::NSManagedObjectModel> firstStoreModel()
{
    return orrenby::NSManagedObjectModel::make(1, {firstReports(), settings()});
}

orrenby::Ref<const orrenby::NSManagedObjectModel> storeModel()
{
    return orrenby::NSManagedObjectModel::make(
        2, {reports(), settings(), orrenby::Outbox::entity(), orrenby::Outbox::bodyEntity()});
}

std::vector<orrenby::MigrationStep> storeMigration()
{
    // Nothing is renamed or given up: new attributes begin with their default values, new entities empty.
    return {{.from = firstStoreModel(), .to = storeModel()}};
}

} // namespace fieldbook
