#include "Orrenby/Platform/Store/PersistentStore.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Store/StoreCore.hpp"
#include "Orrenby/Platform/Store/StoreOutcome.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

Ref<PersistentStore> PersistentStore::open(
    Ref<const NSManagedObjectModel> model, const StoreSettings& settings)
{
    return std::make_shared<PersistentStore>(Private{}, std::move(model), settings);
}

Result<Ref<PersistentStore>, StoreError> PersistentStore::tryOpen(
    Ref<const NSManagedObjectModel> model, const StoreSettings& settings)
{
    return detail::storeOutcome([&] { return open(std::move(model), settings); });
}

PersistentStore::PersistentStore(
    Private, Ref<const NSManagedObjectModel> model, const StoreSettings& settings)
    : m_model(std::move(model))
{
    if (m_model == nullptr)
        fatalError("A store has a model", "Platform/PersistentStore", 31);
    m_core = detail::Owned<detail::StoreCore>::make(*m_model, settings);
}

PersistentStore::~PersistentStore() = default;

} // namespace orrenby
