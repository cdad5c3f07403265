#include "Orrenby/Utilities/Discover/CancellableOwner.hpp"

#include <utility>

namespace orrenby::inline ORRENBY_ABI {

CancellableOwner::~CancellableOwner() = default;

Streams::CancellableSet CancellableOwner::cancellables() const { return m_cancellables; }

void CancellableOwner::setCancellables(Streams::CancellableSet cancellables)
{
    // What goes away with the old handles may already look at the new ones.
    m_cancellables.swap(cancellables);
}

void CancellableOwner::modifyCancellables(UniqueFunction<void(Streams::CancellableSet&)> change)
{
    change(m_cancellables);
}

void CancellableOwner::cancelCancellables()
{
    for (const auto& cancellable : cancellables())
        cancellable.cancel();
    setCancellables({});
}

void CancellableOwner::releaseCancellables() { CancellableOwner::setCancellables({}); }

} // namespace orrenby
