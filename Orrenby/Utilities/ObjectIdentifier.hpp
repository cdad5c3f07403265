#pragma once

/// @file
/// Which object something is, apart from what it is like.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include <compare>
#include <cstddef>
#include <functional>
#include <string>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

/// The identity of an object: equal for two references exactly when both refer to the same object.
///
/// It is the address of the whole object, whatever interface the object is seen through, and does not keep
/// the object alive. Identifiers of two objects tell them apart as long as both live; once an object is gone,
/// a later one may have its address. What must outlive its object is a `WeakBox`.
///
/// An object without virtual functions is identified by the address of the class it is seen as.
///
/// A plain value of 8 bytes. Not synchronised.
class ORRENBY_EXPORT ObjectIdentifier {
public:
    /// The identity of nothing.
    constexpr ObjectIdentifier() noexcept = default;

    /// That of the object, through whatever interface it is seen; `nullptr` is nothing.
    template <class T>
    explicit ObjectIdentifier(const T* object) noexcept
        : m_address(wholeObject(object))
    {}

    /// That of the object that is referred to; an empty reference is nothing.
    template <class T>
    explicit ObjectIdentifier(const Ref<T>& object) noexcept
        : ObjectIdentifier(object.get())
    {}

    /// Where the whole object lies. Not to be followed: it says nothing about whether the object lives.
    const void* address() const noexcept { return m_address; }

    std::size_t hash() const noexcept { return std::hash<const void*>{}(m_address); }

    /// `ObjectIdentifier(0x` with the address in 16 hexadecimal digits and `)`.
    std::string debugDescription() const;

    friend constexpr bool operator==(ObjectIdentifier, ObjectIdentifier) noexcept = default;

private:
    template <class T> static const void* wholeObject(const T* object) noexcept
    {
        if constexpr (std::is_polymorphic_v<T>)
            return dynamic_cast<const void*>(object);
        else
            return object;
    }

    const void* m_address = nullptr;
};

} // namespace orrenby

template <> struct std::hash<orrenby::ObjectIdentifier> {
    std::size_t operator()(orrenby::ObjectIdentifier identifier) const noexcept { return identifier.hash(); }
};
