#pragma once

/// @file
/// Values that tell their observers when they are set.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Observing/KeyName.hpp"
#include "Orrenby/Platform/Observing/ObservableKey.hpp"
#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include <concepts>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// All of a property but its name, so that it is compiled once for each type of value.
///
/// Its public members are those of what derives from it.
template <typename T> class PropertyValue : public ObservableKey {
public:
    /// The type of the value.
    using Value = T;

    /// The value as it is. Valid until it is set.
    const T& get() const noexcept { return m_value; }
    operator const T&() const noexcept { return m_value; }

    /// Stores `value`. Observers are told of every call, also when it brings an equal value.
    void set(T value) { take(value); }

    /// Changes the value in place as one change, which observers are told of.
    template <std::invocable<T&> Change> void modify(Change&& makeChange)
    {
        if (isObserved())
            change([&] { makeChange(m_value); });
        else
            makeChange(m_value);
    }

protected:
    /// With the value that `T()` is.
    PropertyValue(ObservableObject& owner, const KeyDescription& description)
        : ObservableKey(owner, description)
        , m_value()
    {}

    /// With a value of its own.
    PropertyValue(ObservableObject& owner, const KeyDescription& description, T value)
        : ObservableKey(owner, description)
        , m_value(std::move(value))
    {}
    ~PropertyValue() override = default;

    /// Sets the value to what is moved out of `value`.
    void take(T& value)
    {
        if (isObserved())
            change([&] { m_value = std::move(value); });
        else
            m_value = std::move(value);
    }

private:
    Any anyValue() const override { return observedValue(m_value); }
    Ref<ObservableObject> objectValue() const override { return nextObject(m_value); }

    T m_value;
};

} // namespace detail

/// A value of an observable object, found under `Name` and observed by it.
///
/// @snippet Tests/Platform/Observing/PropertyTests.cpp Declaring properties
///
/// `T` is any type that can be copied: also an optional, a `Ref` to a further observable object, through
/// which key paths lead on, or an enumeration. Observers see a raw-representable value as its raw value,
/// anything else as `Any` keeps it.
///
/// Setting a value that nobody observes costs a load and a test more than an assignment. Not synchronised:
/// as with any member, the threads that read and set it must agree among themselves.
template <typename T, KeyName Name> class Property final : public detail::PropertyValue<T> {
public:
    /// Declares the value to the object that holds it, with the value that `T()` is.
    explicit Property(ObservableObject& owner)
        : detail::PropertyValue<T>(owner, detail::keyDescription<Name>)
    {}

    /// The same with a value of its own: `Property<int, "age"> age{*this, 18};`
    Property(ObservableObject& owner, T value)
        : detail::PropertyValue<T>(owner, detail::keyDescription<Name>, std::move(value))
    {}

    /// Sets the value and tells the observers, also when it is equal to the old one.
    Property& operator=(T value)
    {
        this->take(value);
        return *this;
    }
};

} // namespace orrenby
