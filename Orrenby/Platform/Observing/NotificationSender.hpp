#pragma once

/// @file
/// Whom a notification comes from.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// An object in the role of a sender: any object held by a `Ref`, or nobody.
///
/// Senders are the same when the object is, through whatever interface it is seen. An object that is being
/// released has no `Ref` any more, so it is too late for it to send.
///
/// A value that keeps the object alive. Not synchronised.
class NotificationSender {
public:
    /// Nobody, as an empty reference is.
    NotificationSender() noexcept = default;
    NotificationSender(std::nullptr_t) noexcept {}

    /// An object; an empty reference is nobody.
    template <class T>
    NotificationSender(const Ref<T>& object) noexcept
        : m_object(object)
        , m_address(wholeObject(object.get()))
        , m_toAny(&toAny<T>)
    {}

    /// The object as a `T`, which may be any class that it has; empty when there is none, or it is no `T`.
    template <class T> Ref<T> object() const { return m_toAny ? m_toAny(m_object).object<T>() : nullptr; }

    /// Whether there is a sender.
    explicit operator bool() const noexcept { return m_address != nullptr; }

    /// The object without its type; empty for nobody.
    const Ref<const void>& reference() const noexcept { return m_object; }

    /// Where the whole object lies.
    const void* address() const noexcept { return m_address; }

    friend bool operator==(const NotificationSender& first, const NotificationSender& second) noexcept
    {
        return first.m_address == second.m_address;
    }

private:
    template <class T> static const void* wholeObject(const T* object) noexcept
    {
        if constexpr (std::is_polymorphic_v<T>)
            return dynamic_cast<const void*>(object);
        else
            return object;
    }

    template <class T> static Any toAny(const Ref<const void>& object)
    {
        return Any(std::const_pointer_cast<T>(std::static_pointer_cast<const T>(object)));
    }

    Ref<const void> m_object;
    const void* m_address = nullptr;
    /// Makes the reference typed again. Only called with what was made from a `Ref` of that type.
    Any (*m_toAny)(const Ref<const void>& object) = nullptr;
};

} // namespace orrenby
