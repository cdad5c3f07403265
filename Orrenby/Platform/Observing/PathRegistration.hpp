#pragma once

/// @file
/// One observer's registration for one key path.
/// Not in the umbrella header: objects keep it to themselves.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Observing/KeyValueObserver.hpp"
#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

class ObservingCore;

/// The keys of a path; empty when it is malformed. They refer to the text of `keyPath`.
std::vector<std::string_view> keysOfPath(std::string_view keyPath);

/// The value at the end of a path that leads on from `object` by `keys`, which are not empty.
std::optional<Any> valueOfPath(const ObservableObject& object, std::span<const std::string_view> keys);

/// A registration: its root object links it under the first key, and each object further along the path
/// under the key that leads on from there.
///
/// The observer is held weakly, objects not at all. Safe to use from several threads. Its lock is taken
/// before that of an object, never the other way round, and never while foreign code runs.
class PathRegistration : public std::enable_shared_from_this<PathRegistration> {
public:
    PathRegistration(const Ref<ObservingCore>& root, const Ref<KeyValueObserver>& observer,
        std::string_view keyPath, ObservingOptions options);
    PathRegistration(const PathRegistration&) = delete;
    PathRegistration& operator=(const PathRegistration&) = delete;

    const std::string& keyPath() const noexcept { return m_keyPath; }
    std::string_view keyAt(std::size_t level) const noexcept { return m_keys[level]; }
    bool isEndAt(std::size_t level) const noexcept { return level + 1 == m_keys.size(); }
    const ObservingOptions& options() const noexcept { return m_options; }

    bool isActive() const noexcept { return m_isActive.load(std::memory_order_acquire); }
    bool isFor(const KeyValueObserver& observer) const noexcept { return m_identity == &observer; }
    bool isOrphaned() const noexcept { return m_observer.expired(); }
    Ref<KeyValueObserver> observer() const noexcept { return m_observer.lock(); }
    Ref<ObservingCore> root() const noexcept { return m_root.lock(); }

    /// Whether the object of `core` is the one at `level` at present.
    bool leadsThrough(std::size_t level, const ObservingCore& core) const;

    /// Finds the objects behind `object`, which is at `level`, and moves the links there.
    void follow(std::size_t level, ObservableObject& object);

    /// The value at the end of the path, which leads on from `object` at `level`.
    std::optional<Any> value(std::size_t level, const ObservableObject& object) const
    {
        return valueOfPath(object, std::span(m_keys).subspan(level));
    }

    /// No call reaches the observer any more, and no object further along the path links here. The root has
    /// let go already.
    void end();

private:
    bool install(std::size_t level, ObservableObject* object);

    const WeakRef<KeyValueObserver> m_observer;
    const KeyValueObserver* const m_identity;
    const WeakRef<ObservingCore> m_root;
    const std::string m_keyPath;
    const std::vector<std::string_view> m_keys;
    const ObservingOptions m_options;
    std::atomic<bool> m_isActive = true;

    mutable std::mutex m_mutex;
    /// What is linked at the levels from 1 on; empty where the path is interrupted.
    std::vector<Ref<ObservingCore>> m_linked;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
