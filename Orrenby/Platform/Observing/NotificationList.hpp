#pragma once

/// @file
/// The registrations that want the same notifications. Not in the umbrella header: part of
/// NotificationCenter.hpp.

#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// What a group of registrations wants.
struct NotificationKey {
    std::optional<NotificationName> name;
    const void* sender = nullptr; ///< Where the sender lies; null for any.
    /// Tells the sender from a later object in the same place: its count stays while this refers to it.
    WeakRef<const void> owner;

    bool isDead() const noexcept { return sender != nullptr && owner.expired(); }
};

/// One registration. Kept by its list, and by the posts that walk it.
struct NotificationRegistration {
    NotificationRegistration(std::optional<OperationQueue> itsQueue, NotificationCenter::Callback itsCallback)
        : queue(std::move(itsQueue))
        , callback(std::move(itsCallback))
    {}

    const std::optional<OperationQueue> queue;
    NotificationCenter::Callback callback;
    std::atomic<bool> isRemoved = false;
};

/// Registrations of one key, in their order.
///
/// Posts walk it without the lock of its index. As long as one does, it does not change: the index puts a
/// copy in its place and changes that. Removed registrations leave a gap; half of the places at most are
/// gaps.
class NotificationList {
public:
    struct Place {
        std::uint64_t number = 0;
        Ref<NotificationRegistration> registration; ///< Empty in a gap.
    };

    explicit NotificationList(Ref<const NotificationKey> key) noexcept
        : m_key(std::move(key))
    {}

    const Ref<const NotificationKey>& key() const noexcept { return m_key; }
    const std::vector<Place>& places() const noexcept { return m_places; }
    std::size_t count() const noexcept { return m_places.size() - m_gaps; }

    /// A list with the same registrations that nobody walks.
    Ref<NotificationList> copy() const;

    /// The number is higher than all before.
    void append(std::uint64_t number, Ref<NotificationRegistration> registration)
    {
        m_places.push_back({number, std::move(registration)});
    }

    /// The registration of this number; empty when there is none.
    Ref<NotificationRegistration> find(std::uint64_t number) const;

    /// Leaves a gap in its place.
    void remove(std::uint64_t number);

    /// The next three: what a post says of itself; the first and the last under the lock of the index.
    void beginWalk() noexcept { m_walks.fetch_add(1, std::memory_order_relaxed); }
    void endWalk() noexcept { m_walks.fetch_sub(1, std::memory_order_release); }
    bool isWalked() const noexcept { return m_walks.load(std::memory_order_acquire) != 0; }

private:
    std::vector<Place>::const_iterator placeOf(std::uint64_t number) const;

    const Ref<const NotificationKey> m_key;
    std::vector<Place> m_places;
    std::size_t m_gaps = 0;
    std::atomic<std::uint32_t> m_walks = 0;
};

} // namespace orrenby::detail
