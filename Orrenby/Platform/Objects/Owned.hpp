#pragma once

/// @file
/// A pointer to the part of an object that its header does not show. Not in the umbrella header: it serves
/// the insides of other classes.

#include "Orrenby/Platform/Export.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Owns one object alone, as `std::unique_ptr` does, and costs whoever includes the class around it next to
/// nothing: a standard one takes as long to compile as a hundred lines, for each type.
///
/// `T` may be incomplete where the class around it is declared. That class then declares its destructor and,
/// if it has them, its moves, and defines them where `T` is complete. Neither arrays nor deleters.
///
/// Not synchronised.
template <class T> class Owned {
public:
    /// Owns nothing.
    Owned() noexcept = default;
    /// Takes over what `new` gave.
    explicit Owned(T* object) noexcept
        : m_object(object)
    {}
    Owned(Owned&& other) noexcept
        : m_object(other.release())
    {}
    /// Deletes what was owned, after the new object is in its place.
    Owned& operator=(Owned&& other) noexcept
    {
        Owned(std::move(other)).swap(*this);
        return *this;
    }
    ~Owned()
    {
        static_assert(sizeof(T) > 0, "the type has to be complete where its owner is destroyed");
        delete m_object;
    }

    template <class... Arguments> static Owned make(Arguments&&... arguments)
    {
        return Owned(new T(std::forward<Arguments>(arguments)...));
    }

    T* get() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    T* operator->() const noexcept { return m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

    /// Gives the object away; nothing is owned any more.
    T* release() noexcept { return std::exchange(m_object, nullptr); }

    void swap(Owned& other) noexcept { std::swap(m_object, other.m_object); }

private:
    T* m_object = nullptr;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
