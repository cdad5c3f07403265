#pragma once

/// @file
/// What the members that declare a key have in common.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/RawRepresentable.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Observing/KeyName.hpp"
#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include <atomic>
#include <concepts>
#include <memory>
#include <span>
#include <string_view>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A member of an observable object that can be found by its name.
///
/// It belongs to the object for good: neither copied nor moved. A later member hides an earlier one of the
/// same name. Costs four words and no allocation.
class ORRENBY_EXPORT ObservableKey {
public:
    ObservableKey(const ObservableKey&) = delete;
    ObservableKey& operator=(const ObservableKey&) = delete;

    std::string_view key() const noexcept { return m_description.name; }

protected:
    ObservableKey(ObservableObject& owner, const KeyDescription& description) noexcept;
    virtual ~ObservableKey();

    /// Whether somebody may be told of a change. One load and a test.
    bool isObserved() const noexcept
    {
        return (m_owner.m_observedBits.load(std::memory_order_relaxed) & m_description.bit) != 0;
    }

    /// Makes a change between its announcement and telling of it. Afterwards this object may be gone; when
    /// that happens before the change, the change is not made.
    template <typename Store> void change(Store&& store)
    {
        changeWith([](void* context) { (*static_cast<std::remove_reference_t<Store>*>(context))(); },
            std::addressof(store));
    }

private:
    friend class orrenby::ObservableObject;
    friend class ObservingCore;

    virtual Any anyValue() const = 0;
    /// The value as the next object of a path; empty when it is none.
    virtual Ref<ObservableObject> objectValue() const;
    /// The keys of the same object that the value is computed from. Static text.
    virtual std::span<const std::string_view> dependencies() const noexcept;

    void changeWith(void (*store)(void*), void* context);

    ObservableObject& m_owner;
    const ObservableKey* const m_earlier;
    const KeyDescription& m_description;
};

/// The form in which observers see a value: raw-representable values as their raw value.
template <typename T> Any observedValue(const T& value)
{
    if constexpr (RawRepresentable<T>)
        return Any(RawRepresentation<T>::rawValue(value));
    else if constexpr (AnyOptional<T>)
        return value.has_value() ? observedValue(*value) : Any();
    else
        return Any(value);
}

template <typename T> inline constexpr bool refersToObservable = false;
template <typename T>
inline constexpr bool
    refersToObservable<Ref<T>> = std::derived_from<T, ObservableObject> && !std::is_const_v<T>;

/// A value as the next object of a path.
template <typename T> Ref<ObservableObject> nextObject(const T& value)
{
    if constexpr (refersToObservable<T>)
        return value;
    else if constexpr (AnyOptional<T>)
        return value.has_value() ? nextObject(*value) : nullptr;
    else if constexpr (isRef<T>)
        return Any(value).template object<ObservableObject>();
    else
        return nullptr;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
