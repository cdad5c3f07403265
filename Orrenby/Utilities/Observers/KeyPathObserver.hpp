#pragma once

/// @file
/// Typed observing of an object's values.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Object.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Observing/KeyPath.hpp"
#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include "Orrenby/Utilities/Observers/KeyPathHandlers.hpp"
#include "Orrenby/Utilities/Observers/KeyPathObservation.hpp"
#include "Orrenby/Utilities/Observers/ObservedValue.hpp"
#include <concepts>
#include <memory>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Observes one object and hands each real change to a handler, with the values in their own types. Its
/// registrations end with it.
///
/// @snippet Tests/Utilities/Observers/KeyPathObserverTests.cpp Observing values by key path
///
/// Made with `make`, held by `Ref`; it keeps the object alive, the object does not keep it. A path has one
/// handler: observing it again replaces the handler, yet makes one more registration with the object. The one
/// handler then runs as often for each change, and `unobserve` takes back one registration and the handler.
///
/// Handlers run on the thread that changes the value, before the change returns. Not synchronised: observe
/// and unobserve while no other thread changes the object.
template <typename Observed> class KeyPathObserver : public detail::KeyPathHandlers {
public:
    /// The types of the callbacks' arguments under shorter names.
    template <typename Value> using Observation = KeyPathObservation<Value>;
    template <typename Value> using Change = KeyPathChange<Value>;

    /// @param object  Not empty.
    explicit KeyPathObserver(Ref<Observed> object)
        : detail::KeyPathHandlers(object)
        , m_object(std::move(object))
    {
        static_assert(std::derived_from<Observed, ObservableObject>, "only observable objects are observed");
    }

    /// Ends the process: without an object there is nothing to observe.
    KeyPathObserver() = default;

    /// What is observed; kept alive by the observer.
    const Ref<Observed>& object() const noexcept { return m_object; }

    /// Calls `handler` at once with the value at `path`, then with every change of it.
    ///
    /// Only changes to a different value are told, as `==` sees it. A value that can be empty, an optional or
    /// a `Ref`, is always told; where it is absent it is empty. Any other is told only while it is there:
    /// neither when the path leads through an empty reference, nor when a raw value stands for no case of its
    /// enumeration; changes from or to such a state are not told.
    ///
    /// A path without a coding string cannot be observed: nothing happens, and the handler is never called.
    /// The object of the path may be a base class of this one.
    ///
    /// @returns This observer, for the next call.
    template <detail::BaseOf<Observed> Root, detail::Comparable Value,
        std::invocable<const KeyPathObservation<Value>&> Handler>
    Ref<KeyPathObserver> observe(
        const KeyPath<Root, Value>& path, Handler handler, TraceSite site = TraceSite::current())
    {
        using Told = detail::ToldValue<Value>;
        auto self = std::static_pointer_cast<KeyPathObserver>(this->self());
        const auto keyPath = path.codingString();
        if (!keyPath)
            return self;
        if (auto value = Told::from(currentValue(*keyPath)))
            handler(KeyPathObservation<Value>::initial(*std::move(value)));
        KeyPathHandlers::observe(
            *keyPath,
            [handler = std::move(handler)](const KeyValueChange& change) mutable {
                auto value = Told::from(change.newValue);
                auto oldValue = Told::from(change.oldValue);
                if (value && oldValue && !(*value == *oldValue))
                    handler(KeyPathObservation<Value>::change({*std::move(value), *std::move(oldValue)}));
            },
            site);
        return self;
    }

    /// Takes back the latest registration for `path`, and its handler. Ignored when there is none.
    template <detail::BaseOf<Observed> Root, typename Value>
    void unobserve(const KeyPath<Root, Value>& path, TraceSite site = TraceSite::current())
    {
        if (const auto keyPath = path.codingString())
            KeyPathHandlers::unobserve(*keyPath, site);
    }

private:
    Ref<Observed> m_object;
};

} // namespace orrenby
