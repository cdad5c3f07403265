#include "Orrenby/Platform/Observing/NotificationIndex.hpp"

#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// Two centers never give the same number, so a token fits one of them only.
std::atomic<std::uint64_t> lastNumber = 0;

std::size_t combined(std::size_t name, const void* sender) noexcept
{
    return name ^ (std::hash<const void*>{}(sender)*0x9E3779B97F4A7C15U);
}

template <class A, class B> bool haveSameOwner(const A& first, const B& second) noexcept
{
    return !first.owner_before(second) && !second.owner_before(first);
}

} // namespace

NotificationWalk::~NotificationWalk()
{
    for (std::size_t index = 0; index < m_count; ++index)
        m_positions[index].list->endWalk();
}

void NotificationWalk::add(Ref<NotificationList> list) noexcept
{
    list->beginWalk();
    m_positions[m_count++].list = std::move(list);
}

NotificationRegistration* NotificationWalk::next() noexcept
{
    for (;;) {
        Position* earliest = nullptr;
        for (std::size_t index = 0; index < m_count; ++index) {
            auto& position = m_positions[index];
            const auto& places = position.list->places();
            if (position.place < places.size()
                && (!earliest
                    || places[position.place].number < earliest->list->places()[earliest->place].number))
                earliest = &position;
        }
        if (!earliest)
            return nullptr;
        if (auto* const registration = earliest->list->places()[earliest->place++].registration.get())
            return registration;
    }
}

std::size_t NotificationIndex::Hash::operator()(const Ref<const NotificationKey>& key) const noexcept
{
    return combined(key->name ? key->name->hash() : 0, key->sender);
}

std::size_t NotificationIndex::Hash::operator()(const Wanted& wanted) const noexcept
{
    return combined(
        wanted.name ? wanted.name->hash() : 0, wanted.sender ? wanted.sender->address() : nullptr);
}

bool NotificationIndex::Equal::operator()(
    const Ref<const NotificationKey>& first, const Ref<const NotificationKey>& second) const noexcept
{
    return first->name == second->name && first->sender == second->sender
        && haveSameOwner(first->owner, second->owner);
}

bool NotificationIndex::Equal::operator()(
    const Wanted& wanted, const Ref<const NotificationKey>& key) const noexcept
{
    const auto isName = wanted.name ? key->name == *wanted.name : !key->name;
    if (!wanted.sender)
        return isName && !key->sender;
    return isName && key->sender == wanted.sender->address()
        && haveSameOwner(key->owner, wanted.sender->reference());
}

Ref<NotificationToken> NotificationIndex::add(
    const NotificationOptions& options, NotificationCenter::Callback callback)
{
    auto registration = std::make_shared<NotificationRegistration>(options.queue, std::move(callback));
    const auto wanted = Wanted{
        options.name ? &*options.name : nullptr, options.object ? &options.object : nullptr};
    // Dropped after the lock: what they hold may run code that uses the center.
    std::vector<Ref<NotificationList>> pruned;
    const auto lock = std::lock_guard(m_mutex);
    auto entry = m_lists.find(wanted);
    if (entry == m_lists.end()) {
        pruned = prune();
        auto key = std::make_shared<NotificationKey>();
        key->name = options.name;
        if (options.object) {
            key->sender = options.object.address();
            key->owner = options.object.reference();
        }
        auto list = std::make_shared<NotificationList>(key);
        entry = m_lists.emplace(std::move(key), std::move(list)).first;
    }
    const auto number = lastNumber.fetch_add(1, std::memory_order_relaxed) + 1;
    changeable(entry->second).append(number, std::move(registration));
    return Ref<NotificationToken>(new NotificationToken(entry->first, number));
}

bool NotificationIndex::remove(const NotificationToken& token)
{
    // Both dropped after the lock, see above.
    Ref<NotificationRegistration> registration;
    Ref<NotificationList> list;
    const auto lock = std::lock_guard(m_mutex);
    const auto entry = m_lists.find(token.m_key);
    if (entry != m_lists.end())
        registration = entry->second->find(token.m_number);
    if (!registration)
        return false;
    registration->isRemoved.store(true, std::memory_order_relaxed);
    list = entry->second;
    if (list->count() == 1)
        m_lists.erase(entry);
    else
        changeable(entry->second).remove(token.m_number);
    return true;
}

void NotificationIndex::begin(
    NotificationWalk& walk, const NotificationName& name, const NotificationSender& sender)
{
    const auto lock = std::lock_guard(m_mutex);
    const auto add = [&](const Wanted& wanted) {
        if (const auto entry = m_lists.find(wanted); entry != m_lists.end())
            walk.add(entry->second);
    };
    if (m_lists.empty())
        return;
    add({&name, nullptr});
    add({nullptr, nullptr});
    if (sender) {
        add({&name, &sender});
        add({nullptr, &sender});
    }
}

std::size_t NotificationIndex::count() const
{
    const auto lock = std::lock_guard(m_mutex);
    std::size_t count = 0;
    for (const auto& [key, list] : m_lists)
        if (!key->isDead())
            count += list->count();
    return count;
}

NotificationList& NotificationIndex::changeable(Ref<NotificationList>& list)
{
    if (list->isWalked())
        list = list->copy();
    return *list;
}

std::vector<Ref<NotificationList>> NotificationIndex::prune()
{
    std::vector<Ref<NotificationList>> pruned;
    if (m_lists.size() < m_pruneAt)
        return pruned;
    for (auto entry = m_lists.begin(); entry != m_lists.end();)
        if (entry->first->isDead()) {
            pruned.push_back(std::move(entry->second));
            entry = m_lists.erase(entry);
        } else
            ++entry;
    m_pruneAt = std::max<std::size_t>(16, m_lists.size() * 2);
    return pruned;
}

} // namespace orrenby::detail
