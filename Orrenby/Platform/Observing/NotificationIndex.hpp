#pragma once

/// @file
/// Finds the registrations that want a notification. Not in the umbrella header: part of
/// NotificationCenter.hpp.

#include "Orrenby/Platform/Observing/NotificationList.hpp"
#include <array>
#include <cstddef>
#include <mutex>
#include <unordered_map>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The registrations that matched a notification at one moment, for one post.
class NotificationWalk {
public:
    NotificationWalk() = default;
    NotificationWalk(const NotificationWalk&) = delete;
    NotificationWalk& operator=(const NotificationWalk&) = delete;
    ~NotificationWalk();

    void add(Ref<NotificationList> list) noexcept;

    /// The next registration by order; null at the end. Removed ones come, too.
    NotificationRegistration* next() noexcept;

private:
    struct Position {
        Ref<NotificationList> list;
        std::size_t place = 0;
    };

    std::array<Position, 4> m_positions;
    std::size_t m_count = 0;
};

/// The registrations of a center: one list for each combination of name and sender that somebody wants.
///
/// Safe to use from several threads. Nothing foreign runs under the lock, not even a destructor.
class NotificationIndex {
public:
    NotificationIndex() = default;
    NotificationIndex(const NotificationIndex&) = delete;
    NotificationIndex& operator=(const NotificationIndex&) = delete;
    ~NotificationIndex() = default;

    Ref<NotificationToken> add(const NotificationOptions& options, NotificationCenter::Callback callback);

    /// Whether there was such a registration.
    bool remove(const NotificationToken& token);

    void begin(NotificationWalk& walk, const NotificationName& name, const NotificationSender& sender);

    std::size_t count() const;

private:
    /// A key as it is looked up, without copies.
    struct Wanted {
        const NotificationName* name;     ///< Null: every name.
        const NotificationSender* sender; ///< Null: any sender.
    };

    struct Hash {
        using is_transparent = void;
        std::size_t operator()(const Ref<const NotificationKey>& key) const noexcept;
        std::size_t operator()(const Wanted& wanted) const noexcept;
    };

    struct Equal {
        using is_transparent = void;
        bool operator()(
            const Ref<const NotificationKey>& first, const Ref<const NotificationKey>& second) const noexcept;
        bool operator()(const Wanted& wanted, const Ref<const NotificationKey>& key) const noexcept;
        bool operator()(const Ref<const NotificationKey>& key, const Wanted& wanted) const noexcept
        {
            return (*this)(wanted, key);
        }
    };

    using Lists = std::unordered_map<Ref<const NotificationKey>, Ref<NotificationList>, Hash, Equal>;

    /// The same list, or a copy in its place while posts walk it.
    static NotificationList& changeable(Ref<NotificationList>& list);

    /// Takes out what wants senders that are gone, once the lists have doubled since the last time.
    std::vector<Ref<NotificationList>> prune();

    mutable std::mutex m_mutex;
    Lists m_lists;
    std::size_t m_pruneAt = 16;
};

} // namespace orrenby::detail
