#pragma once

/// @file
/// The base of objects whose values can be observed by name.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Observing/KeyValueObserver.hpp"
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

class ObservableKey;
class ObservingCore;

} // namespace detail

/// Base of classes whose values can be read by name and whose changes can be observed.
///
/// A value's name is its key. `Property` members declare their keys themselves and tell their observers of
/// every `set`, `Computed` members of every change of what they depend on; whatever else changes is told with
/// `willChangeValue` and `didChangeValue`. Not a class with a life of its own: derive from it beside one.
///
/// Keys joined by dots are a key path, which leads from object to object: "address.city". Its observers are
/// told when the value at its end changes, and when any object along it is replaced.
///
/// @snippet Tests/Platform/Observing/ObservableObjectTests.cpp Observing an object by name
///
/// Order: observers are called in the order of their registration, on the thread that changes the value,
/// before the change returns. A change that is made from within an observer is told completely before the
/// remaining observers are called for the outer one. An observer's new value is read when its turn comes, so
/// the last call always brings the value that holds.
///
/// Not copyable. Registering, removing and telling are safe from several threads, and no lock is held while
/// an observer runs. The values themselves are not synchronised, and following a path reads those along it.
class ORRENBY_EXPORT ObservableObject {
public:
    ObservableObject(const ObservableObject&) = delete;
    ObservableObject& operator=(const ObservableObject&) = delete;

    /// Drops all registrations. Nobody is told.
    virtual ~ObservableObject();

    /// From now on `observer` is told of changes of the value at `keyPath`.
    ///
    /// The observer is held weakly. Registering the same observer again on the same path makes a second
    /// registration: it is called twice for each change. An unknown key has no value, and its observer is
    /// told only when somebody reports its changes; the same holds behind an empty reference. A path without
    /// keys, or with an empty one, is a programming error.
    void addObserver(const Ref<KeyValueObserver>& observer, std::string_view keyPath,
        ObservingOptions options = {}, TraceSite site = TraceSite::current());

    /// Takes back the latest of the observer's registrations for `keyPath`; ignored when there is none.
    ///
    /// It takes effect at once on the calling thread, also for a change that is being told. Another thread
    /// may be inside the observer at this moment.
    void removeObserver(
        const KeyValueObserver& observer, std::string_view keyPath, TraceSite site = TraceSite::current());

    /// Says that the value of `key` is about to change: reads the old value for those who asked for it and
    /// calls those who want to be told before. A `didChangeValue` on the same thread must follow.
    ///
    /// Pairs nest, for one key as well as for several. Who registers between the two is not told.
    void willChangeValue(std::string_view key);

    /// Tells the observers of the change that the latest open `willChangeValue` of this thread announced for
    /// `key`. Ignored when there is none.
    void didChangeValue(std::string_view key);

    /// The value of `key`; nothing when this object has no such key. An empty property is null.
    std::optional<Any> valueForKey(std::string_view key) const;

    /// The value at `keyPath`; nothing when a key is unknown, the path is malformed, or it leads through
    /// something that is no observable object.
    std::optional<Any> valueForKeyPath(std::string_view keyPath) const;

    /// Registrations that changes of this object would reach: its own, and those of longer paths that lead
    /// through it. Registrations of observers that are gone do not count.
    std::size_t observerCount() const;

protected:
    ObservableObject() noexcept = default;

    /// The value of a key that no member declares. Override it for values that are neither a `Property` nor
    /// a `Computed`, and report their changes with `willChangeValue` and `didChangeValue`.
    virtual std::optional<Any> valueForUndefinedKey(std::string_view key) const;

private:
    friend class detail::ObservableKey;
    friend class detail::ObservingCore;

    const detail::ObservableKey* declaredKey(std::string_view key) const noexcept;

    std::atomic<detail::ObservingCore*> m_core = nullptr;
    /// The latest declared key, which leads to the earlier ones.
    const detail::ObservableKey* m_keys = nullptr;
    /// One bit for each observed key, shared by keys of equal bits: what is not set here needs no telling.
    std::atomic<std::uint64_t> m_observedBits = 0;
};

} // namespace orrenby
