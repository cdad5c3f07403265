#include "Orrenby/Platform/Time/Cache.hpp"

#include <atomic>
#include <list>
#include <mutex>
#include <unordered_map>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

struct Entry {
    std::size_t hash;
    std::shared_ptr<const void> key;
    Ref<void> object;
};

using Entries = std::list<Entry>; // the last used one first
using Index = std::unordered_multimap<std::size_t, Entries::iterator>;

} // namespace

struct CacheCore::Contents {
    Index::iterator find(const Key& key)
    {
        auto [place, end] = index.equal_range(key.hash);
        for (; place != end; ++place)
            if (key.isEqual(place->second->key.get(), key.asked))
                return place;
        return index.end();
    }

    void moveOut(Index::iterator place, Entries& leaving)
    {
        leaving.splice(leaving.end(), entries, place->second);
        index.erase(place);
    }

    void moveOutSurplus(Entries& leaving)
    {
        const auto limit = countLimit.load(std::memory_order_relaxed);
        while (limit != 0 && entries.size() > limit) {
            const auto last = std::prev(entries.end());
            auto place = index.equal_range(last->hash).first;
            while (place->second != last)
                ++place;
            moveOut(place, leaving);
        }
    }

    std::mutex mutex;
    Entries entries;
    Index index;
    std::atomic<std::size_t> countLimit = 0;
};

CacheCore::CacheCore()
    : m_contents(Owned<Contents>::make())
{}

CacheCore::~CacheCore() = default;

Ref<void> CacheCore::object(const Key& key)
{
    const auto lock = std::lock_guard(m_contents->mutex);
    const auto place = m_contents->find(key);
    if (place == m_contents->index.end())
        return nullptr;
    auto& entries = m_contents->entries;
    entries.splice(entries.begin(), entries, place->second);
    return place->second->object;
}

// What leaves is released after the lock: it may use the cache on its way out.

void CacheCore::setObject(Ref<void> object, const Key& key, std::shared_ptr<const void> kept)
{
    Entries leaving;
    Entries coming;
    coming.push_back({key.hash, std::move(kept), std::move(object)});
    const auto lock = std::lock_guard(m_contents->mutex);
    if (const auto place = m_contents->find(key); place != m_contents->index.end())
        m_contents->moveOut(place, leaving);
    m_contents->index.emplace(key.hash, coming.begin());
    m_contents->entries.splice(m_contents->entries.begin(), coming);
    m_contents->moveOutSurplus(leaving);
}

void CacheCore::removeObject(const Key& key)
{
    Entries leaving;
    const auto lock = std::lock_guard(m_contents->mutex);
    if (const auto place = m_contents->find(key); place != m_contents->index.end())
        m_contents->moveOut(place, leaving);
}

void CacheCore::removeAll()
{
    Entries leaving;
    const auto lock = std::lock_guard(m_contents->mutex);
    m_contents->index.clear();
    leaving.swap(m_contents->entries);
}

std::size_t CacheCore::countLimit() const noexcept
{
    return m_contents->countLimit.load(std::memory_order_relaxed);
}

void CacheCore::setCountLimit(std::size_t limit)
{
    if (limit == countLimit())
        return; // so that asking for the same limit again and again costs nothing
    Entries leaving;
    const auto lock = std::lock_guard(m_contents->mutex);
    m_contents->countLimit.store(limit, std::memory_order_relaxed);
    m_contents->moveOutSurplus(leaving);
}

std::size_t CacheCore::count() const
{
    const auto lock = std::lock_guard(m_contents->mutex);
    return m_contents->entries.size();
}

} // namespace orrenby::inline ORRENBY_ABI::detail
