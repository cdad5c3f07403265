#include "Orrenby/Platform/Store/PersistentStore.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Store/StoreCore.hpp"
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
    using Outcome = Result<Ref<PersistentStore>, StoreError>;
    try {
        return Outcome::success(open(std::move(model), settings));
    } catch (const StoreError& error) {
        return Outcome::failure(error);
    }
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
