#include "Orrenby/Platform/Observing/ObservingCore.hpp"
#include "Orrenby/Platform/Observing/KeyName.hpp"
#include "Orrenby/Platform/Observing/ObservableKey.hpp"
#include <algorithm>
#include <array>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// Entries that a change holds without an allocation.
constexpr std::size_t entriesInPlace = 3;

} // namespace

Ref<ObservingCore> ObservingCore::find(const ObservableObject& object)
{
    auto* const core = object.m_core.load(std::memory_order_acquire);
    return core != nullptr ? core->shared_from_this() : nullptr;
}

Ref<ObservingCore> ObservingCore::of(ObservableObject& object)
{
    if (auto core = find(object))
        return core;
    const auto made = std::make_shared<ObservingCore>(object);
    made->m_self = made;
    ObservingCore* existing = nullptr;
    if (object.m_core.compare_exchange_strong(existing, made.get(), std::memory_order_acq_rel))
        return made;
    made->m_self = nullptr;
    return existing->shared_from_this();
}

Ref<ObservableObject> ObservingCore::nextObject(const ObservableObject& object, std::string_view key)
{
    if (const auto* const declared = object.declaredKey(key))
        return declared->objectValue();
    const auto value = object.valueForUndefinedKey(key);
    return value ? value->object<ObservableObject>() : nullptr;
}

void ObservingCore::addDependencies(
    const ObservableObject& object, std::string_view key, std::vector<std::string_view>& dependencies)
{
    const auto* const declared = object.declaredKey(key);
    if (declared == nullptr)
        return;
    for (const std::string_view name : declared->dependencies())
        if (std::find(dependencies.begin(), dependencies.end(), name) == dependencies.end()) {
            dependencies.push_back(name);
            addDependencies(object, name, dependencies);
        }
}

bool ObservingCore::Link::isAffectedBy(std::string_view key) const noexcept
{
    return registration->keyAt(level) == key
        || std::find(dependencies.begin(), dependencies.end(), key) != dependencies.end();
}

void ObservingCore::add(const Ref<PathRegistration>& registration)
{
    bool isFull = false;
    {
        const std::lock_guard lock(m_mutex);
        isFull = m_links.size() == m_links.capacity();
    }
    // Where nothing changes and nobody takes back, the list would otherwise grow with every observer that
    // ever was.
    if (isFull)
        dropOrphans();
    attach(registration, 0);
    registration->follow(0, *object());
}

void ObservingCore::attach(Ref<PathRegistration> registration, std::size_t level)
{
    const auto* const object = this->object();
    const std::string_view key = registration->keyAt(level);
    Link link{
        .registration = std::move(registration), .level = level, .bits = keyBit(key), .dependencies = {}};
    addDependencies(*object, key, link.dependencies);
    for (const std::string_view dependency : link.dependencies)
        link.bits |= keyBit(dependency);

    const std::lock_guard lock(m_mutex);
    m_links.push_back(std::move(link));
    updateBits();
}

void ObservingCore::detach(const PathRegistration& registration, std::size_t level)
{
    const std::lock_guard lock(m_mutex);
    const auto found = std::find_if(m_links.begin(), m_links.end(),
        [&](const Link& link) { return link.registration.get() == &registration && link.level == level; });
    if (found == m_links.end())
        return;
    m_links.erase(found);
    updateBits();
}

bool ObservingCore::remove(const KeyValueObserver& observer, std::string_view keyPath)
{
    Ref<PathRegistration> registration;
    {
        const std::lock_guard lock(m_mutex);
        const auto found = std::find_if(m_links.rbegin(), m_links.rend(), [&](const Link& link) {
            return link.level == 0 && link.registration->isFor(observer)
                && link.registration->keyPath() == keyPath;
        });
        if (found != m_links.rend()) {
            registration = std::move(found->registration);
            m_links.erase(std::prev(found.base()));
            updateBits();
        }
    }
    if (registration)
        registration->end();
    dropOrphans();
    return registration != nullptr;
}

void ObservingCore::dropOrphans()
{
    std::vector<Ref<PathRegistration>> orphans;
    {
        const std::lock_guard lock(m_mutex);
        for (const Link& link : m_links)
            if (link.registration->isOrphaned())
                orphans.push_back(link.registration);
    }
    for (const auto& orphan : orphans) {
        if (const auto root = orphan->root())
            root->detach(*orphan, 0);
        orphan->end();
    }
}

void ObservingCore::updateBits() noexcept
{
    std::uint64_t bits = 0;
    for (const Link& link : m_links)
        bits |= link.bits;
    if (auto* const object = this->object())
        object->m_observedBits.store(bits, std::memory_order_relaxed);
}

std::size_t ObservingCore::observerCount()
{
    const std::lock_guard lock(m_mutex);
    return static_cast<std::size_t>(std::count_if(
        m_links.begin(), m_links.end(), [](const Link& link) { return !link.registration->isOrphaned(); }));
}

void ObservingCore::objectEnds() noexcept
{
    std::vector<Link> links;
    std::vector<OpenChange> openChanges;
    Ref<ObservingCore> self;
    {
        const std::lock_guard lock(m_mutex);
        m_object.store(nullptr, std::memory_order_release);
        links.swap(m_links);
        openChanges.swap(m_openChanges);
        self.swap(m_self);
    }
    for (const Link& link : links)
        if (link.level == 0)
            link.registration->end();
}

void ObservingCore::change(const ObservableKey& key, void (*store)(void*), void* context)
{
    alignas(Entry) std::array<std::byte, entriesInPlace * sizeof(Entry)> buffer;
    std::pmr::monotonic_buffer_resource memory(buffer.data(), buffer.size());
    Entries entries(&memory);
    entries.reserve(entriesInPlace);
    collect(key.key(), &key, entries);

    announce(entries);
    if (object() == nullptr)
        return;
    store(context);
    tell(entries);
}

void ObservingCore::willChange(std::string_view key)
{
    Entries entries;
    collect(key, nullptr, entries);
    if (entries.empty())
        return;

    announce(entries);
    const std::lock_guard lock(m_mutex);
    m_openChanges.push_back(
        {.thread = std::this_thread::get_id(), .key = std::string(key), .entries = std::move(entries)});
}

void ObservingCore::didChange(std::string_view key)
{
    Entries entries;
    {
        const std::lock_guard lock(m_mutex);
        const auto found = std::find_if(
            m_openChanges.rbegin(), m_openChanges.rend(), [&](const OpenChange& open) {
                return open.thread == std::this_thread::get_id() && open.key == key;
            });
        if (found == m_openChanges.rend())
            return;
        entries = std::move(found->entries);
        m_openChanges.erase(std::prev(found.base()));
    }
    tell(entries);
}

void ObservingCore::collect(std::string_view key, const ObservableKey* declared, Entries& entries)
{
    bool hasOrphans = false;
    {
        const std::lock_guard lock(m_mutex);
        for (const Link& link : m_links) {
            if (!link.isAffectedBy(key))
                continue;
            const auto& registration = link.registration;
            if (registration->isOrphaned()) {
                hasOrphans = true;
                continue;
            }
            const bool isWholePath = link.level == 0 && registration->isEndAt(0);
            if (isWholePath) {
                entries.push_back({.registration = registration,
                    .level = 0,
                    .key = registration->keyAt(0) == key ? declared : nullptr});
                continue;
            }
            // A path may lead through this object twice: the change is told once, from the nearer place on.
            const auto known = std::find_if(entries.begin(), entries.end(),
                [&](const Entry& entry) { return entry.registration == registration; });
            if (known == entries.end())
                entries.push_back({.registration = registration, .level = link.level, .key = nullptr});
            else
                known->level = std::min(known->level, link.level);
        }
    }
    if (hasOrphans)
        dropOrphans();
}

void ObservingCore::announce(Entries& entries) noexcept
{
    for (const Entry& entry : entries)
        if (entry.registration->options().prior) {
            KeyValueChange change{.isPrior = true};
            if (entry.registration->options().old)
                change.oldValue = value(entry);
            call(entry, change);
        }
    // Only now: those who were told before may have changed the value.
    for (Entry& entry : entries)
        if (entry.registration->options().old)
            entry.oldValue = value(entry);
}

void ObservingCore::tell(Entries& entries) noexcept
{
    for (const Entry& entry : entries)
        if (!entry.registration->isEndAt(entry.level) && entry.registration->leadsThrough(entry.level, *this))
            if (auto* const object = this->object())
                entry.registration->follow(entry.level, *object);

    for (Entry& entry : entries) {
        if (!entry.registration->leadsThrough(entry.level, *this))
            continue;
        KeyValueChange change{.oldValue = std::move(entry.oldValue)};
        if (entry.registration->options().new_)
            change.newValue = value(entry);
        call(entry, change);
    }
}

void ObservingCore::call(const Entry& entry, const KeyValueChange& change) const
{
    if (!entry.registration->isActive())
        return;
    const auto root = entry.registration->root();
    auto* const object = root ? root->object() : nullptr;
    const auto observer = entry.registration->observer();
    if (observer && object != nullptr)
        observer->observeValue(entry.registration->keyPath(), *object, change);
}

std::optional<Any> ObservingCore::value(const Entry& entry) const
{
    const auto* const object = this->object();
    if (object == nullptr)
        return std::nullopt;
    if (entry.key != nullptr)
        return entry.key->anyValue();
    return entry.registration->value(entry.level, *object);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
