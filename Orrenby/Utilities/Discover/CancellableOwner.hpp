#pragma once

/// @file
/// The subscriptions that a context or a worker keeps while it is on.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Utilities/Streams/AnyCancellable.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// Keeps handles of subscriptions, which are cancelled all together when the owner is switched off.
///
/// The common part of `AbstractContext` and `AbstractWorker`; nothing else derives from it. A handle gets in
/// by `publisher.sink(f).store(owner)`.
///
/// @snippet Tests/Utilities/Discover/CancellableOwnerTests.cpp Keeping a subscription in its owner
///
/// Each of the three operations may be overridden; the owner's own life goes through them. Not synchronised.
class ORRENBY_EXPORT CancellableOwner {
public:
    CancellableOwner(const CancellableOwner&) = delete;
    CancellableOwner& operator=(const CancellableOwner&) = delete;

    /// The handles at this moment. Holding the copy keeps the subscriptions alive. O(n).
    virtual Streams::CancellableSet cancellables() const;

    /// Takes the place of all handles kept so far; those that nobody else holds are thereby cancelled.
    virtual void setCancellables(Streams::CancellableSet cancellables);

    /// Calls `change` once with the set itself. Within the call nothing else may touch this owner's handles.
    virtual void modifyCancellables(UniqueFunction<void(Streams::CancellableSet&)> change);

protected:
    CancellableOwner() = default;
    virtual ~CancellableOwner();

    /// Cancels what is kept now, then replaces it by the empty set. What comes in meanwhile is dropped by
    /// that.
    void cancelCancellables();

    /// Drops everything. Part of the end of an owner, so it goes past the overrides.
    void releaseCancellables();

private:
    Streams::CancellableSet m_cancellables;
};

} // namespace orrenby
