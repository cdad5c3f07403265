#pragma once

/// @file
/// What an observed object knows of its observers.
/// Not in the umbrella header: an object keeps it to itself.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Observing/KeyValueObserver.hpp"
#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include "Orrenby/Platform/Observing/PathRegistration.hpp"
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The registrations and open changes of one object. Made for the first of them; it outlives the object as
/// long as somebody still tells of a change.
///
/// Safe to use from several threads. Its lock is never held while foreign code runs.
class ObservingCore : public std::enable_shared_from_this<ObservingCore> {
public:
    explicit ObservingCore(ObservableObject& object) noexcept
        : m_object(&object)
    {}
    ObservingCore(const ObservingCore&) = delete;
    ObservingCore& operator=(const ObservingCore&) = delete;

    /// The core of an object, if it has one.
    static Ref<ObservingCore> find(const ObservableObject& object);
    /// The core of an object, made when it has none.
    static Ref<ObservingCore> of(ObservableObject& object);
    /// The value of `key` as the next object of a path.
    static Ref<ObservableObject> nextObject(const ObservableObject& object, std::string_view key);

    /// The object; `nullptr` once it is gone.
    ObservableObject* object() const noexcept { return m_object.load(std::memory_order_acquire); }

    /// Tells of a change that `store` makes. It is not called when the object vanishes before.
    void change(const ObservableKey& key, void (*store)(void*), void* context);
    void willChange(std::string_view key);
    void didChange(std::string_view key);

    void add(const Ref<PathRegistration>& registration);
    void attach(Ref<PathRegistration> registration, std::size_t level);
    void detach(const PathRegistration& registration, std::size_t level);
    /// Takes back the latest registration of `observer` for `keyPath`; false when there is none.
    bool remove(const KeyValueObserver& observer, std::string_view keyPath);
    std::size_t observerCount();
    void objectEnds() noexcept;

private:
    friend class orrenby::ObservableObject;

    struct Link {
        Ref<PathRegistration> registration;
        std::size_t level;
        std::uint64_t bits;                         ///< Of its key and of those that it depends on.
        std::vector<std::string_view> dependencies; ///< Static text.

        bool isAffectedBy(std::string_view key) const noexcept;
    };

    /// What one change means for one registration.
    struct Entry {
        Ref<PathRegistration> registration;
        std::size_t level;
        const ObservableKey* key; ///< Set when the changed key is all of the path: no need to search it.
        std::optional<Any> oldValue = {};
    };
    using Entries = std::pmr::vector<Entry>;

    struct OpenChange {
        std::thread::id thread;
        std::string key;
        Entries entries;
    };

    /// Adds those whom a change of `key` concerns.
    void collect(std::string_view key, const ObservableKey* declared, Entries& entries);
    void announce(Entries& entries) noexcept;
    void tell(Entries& entries) noexcept;
    void call(const Entry& entry, const KeyValueChange& change) const;
    std::optional<Any> value(const Entry& entry) const;

    /// Adds the keys that `key` depends on, directly or through others, each once.
    static void addDependencies(
        const ObservableObject& object, std::string_view key, std::vector<std::string_view>& dependencies);
    /// Takes back the registrations whose observers are gone.
    void dropOrphans();
    void updateBits() noexcept;

    std::mutex m_mutex;
    std::atomic<ObservableObject*> m_object;
    std::vector<Link> m_links;
    std::vector<OpenChange> m_openChanges;
    Ref<ObservingCore> m_self; ///< While the object lives.
};

} // namespace orrenby::inline ORRENBY_ABI::detail
