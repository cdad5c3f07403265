#pragma once

/// @file
/// A weak reference that can be the key of a map.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Utilities/ObjectIdentifier.hpp"
#include <cstddef>
#include <functional>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// An object of class `U` can be seen as a `T`; everything can be seen as `void`.
template <class U, class T>
concept SeenAs = std::is_convertible_v<U*, T*>;

} // namespace detail

/// Refers to an object without keeping it alive, and still knows which one it was when the object is gone.
///
/// Equality and hash look at the object's identity alone, recorded when the box is made: boxes of one object
/// are equal, also after its end, and a box never equals that of a later object that happens to get the same
/// address. So a map with boxes as keys finds its entries again whatever became of the objects.
///
/// @snippet Tests/Utilities/WeakBoxTests.cpp Keying on an object
///
/// `WeakBox<void>` takes objects of any type. An object is the same through whatever interface a box got to
/// see it; a `Ref<void>` hides the whole object, so do not box one that was made from an interface. Boxes of
/// an empty reference are equal, and empty from the start. The references must share one count, as copies of
/// what `make` gives do: two counts that were begun for one object are two owners, whose boxes differ.
///
/// Copying is one atomic addition, comparing and hashing touch no counter. Not synchronised, but copies may
/// live in several threads, and so may the object.
template <class T> class WeakBox {
public:
    /// Remembers the object without keeping it.
    template <detail::SeenAs<T> U>
    explicit WeakBox(const Ref<U>& object) noexcept
        : m_object(object)
        , m_objectIdentifier(object)
    {}

    /// The object, or an empty reference once it is gone. It is gone, too, while its `release` runs.
    Ref<T> object() const noexcept { return m_object.lock(); }

    /// Another thread may let go of the object right after this answer; hold `object()` where that matters.
    bool containsObject() const noexcept { return !m_object.expired(); }

    /// Whether `object` is the one in the box. An empty box contains nothing, not even an empty reference.
    template <class U> bool contains(const Ref<U>& object) const noexcept
    {
        return m_objectIdentifier == ObjectIdentifier(object) && containsObject();
    }

    /// The identity as it was recorded. Unlike the box it does not tell the object from a later one at the
    /// same address.
    ObjectIdentifier objectIdentifier() const noexcept { return m_objectIdentifier; }

    std::size_t hash() const noexcept { return m_objectIdentifier.hash(); }

    friend bool operator==(const WeakBox& first, const WeakBox& second) noexcept
    {
        return first.m_objectIdentifier == second.m_objectIdentifier && first.hasOwnerOf(second);
    }

private:
    /// The reference count of an object stays while a box refers to it, so its address, unlike the object's,
    /// cannot be taken by a successor.
    bool hasOwnerOf(const WeakBox& other) const noexcept
    {
        return !m_object.owner_before(other.m_object) && !other.m_object.owner_before(m_object);
    }

    WeakRef<T> m_object;
    ObjectIdentifier m_objectIdentifier;
};

/// Of the reference's own type.
template <class T> WeakBox(const Ref<T>&) -> WeakBox<T>;

} // namespace orrenby

template <class T> struct std::hash<orrenby::WeakBox<T>> {
    std::size_t operator()(const orrenby::WeakBox<T>& box) const noexcept { return box.hash(); }
};
