#pragma once

/// @file
/// Keeps what is costly to make, as long as there is room.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Owned.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// A cache of whatever keys and values.
class ORRENBY_EXPORT CacheCore {
public:
    /// A key as it is asked for: what it hashes to, and how it compares to a kept one.
    struct Key {
        std::size_t hash;
        const void* asked;
        bool (*isEqual)(const void* kept, const void* asked);
    };

    CacheCore();
    CacheCore(const CacheCore&) = delete;
    CacheCore& operator=(const CacheCore&) = delete;
    ~CacheCore();

    Ref<void> object(const Key& key);
    void setObject(Ref<void> object, const Key& key, std::shared_ptr<const void> kept);
    void removeObject(const Key& key);
    void removeAll();
    std::size_t countLimit() const noexcept;
    void setCountLimit(std::size_t limit);
    std::size_t count() const;

private:
    struct Contents;
    Owned<Contents> m_contents;
};

template <class Key> struct CacheLookup {
    using type = Key;
};
template <> struct CacheLookup<std::string> {
    using type = std::string_view;
};

} // namespace detail

/// Maps keys to shared objects, and may forget them.
///
/// With a count limit it keeps that many objects at most: the one that was stored or asked for the longest
/// ago goes first. Nothing else makes it forget, so that tests know what they get; callers must be ready to
/// make an object again all the same. Forgetting drops the cache's reference; who holds the object keeps it.
///
/// @snippet Tests/Platform/Time/CacheTests.cpp Making things once
///
/// @tparam Key  What `std::hash` and `==` know. Keys that are texts may be asked for by any text.
///
/// Held by `Ref`, as `std::make_shared` makes it. Storing and finding take constant time. Safe to use from
/// several threads: two that miss at the same time may both make an object, and the later store wins. What is
/// forgotten is released without a lock held.
template <class Key, class Value> class Cache {
public:
    /// `Key`, or a piece of text where that is text.
    using Lookup = typename detail::CacheLookup<Key>::type;

    Cache() = default;
    Cache(const Cache&) = delete;
    Cache& operator=(const Cache&) = delete;

    /// What was stored under `key`, or an empty reference. Counts as a use.
    Ref<Value> object(const Lookup& key) const
    {
        return std::static_pointer_cast<Value>(m_core.object(asked(key)));
    }

    /// Stores `object` in place of what was stored under `key`. An empty reference removes that.
    void setObject(Ref<Value> object, const Lookup& key)
    {
        if (object)
            m_core.setObject(std::move(object), asked(key), std::make_shared<const Key>(key));
        else
            removeObject(key);
    }

    /// No effect when nothing is stored under the key.
    void removeObject(const Lookup& key) { m_core.removeObject(asked(key)); }

    /// Empties the cache; the limit stays.
    void removeAll() { m_core.removeAll(); }

    /// The objects kept at most; 0, as at first, stands for no limit.
    std::size_t countLimit() const noexcept { return m_core.countLimit(); }

    /// Forgets at once what exceeds the new limit.
    void setCountLimit(std::size_t limit) { m_core.setCountLimit(limit); }

    /// The objects kept now.
    std::size_t count() const { return m_core.count(); }

private:
    static detail::CacheCore::Key asked(const Lookup& key)
    {
        return {std::hash<Lookup>()(key), &key, [](const void* kept, const void* other) {
                    return *static_cast<const Key*>(kept) == *static_cast<const Lookup*>(other);
                }};
    }

    mutable detail::CacheCore m_core;
};

} // namespace orrenby
