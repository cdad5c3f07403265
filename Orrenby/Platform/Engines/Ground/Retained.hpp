#pragma once

/// @file
/// Shared ownership with the count inside the object: one word per handle, one block per object.

#include "Orrenby/Platform/Export.hpp"
#include <atomic>
#include <cstdint>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Base of what stream handles share. Born with a count of one, which belongs to the `Retained` that adopts
/// it.
///
/// Counting is safe to use from several threads.
class ORRENBY_EXPORT Counted {
public:
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    void retain() const noexcept { m_references.fetch_add(1, std::memory_order_relaxed); }

    void release() const noexcept
    {
        if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

protected:
    Counted() = default;
    virtual ~Counted();

private:
    mutable std::atomic<std::uint32_t> m_references = 1;
};

/// One share of a counted object. A moved-from one is empty.
template <class T> class Retained {
public:
    Retained() = default;

    /// Takes over the count that the object was born with.
    static Retained adopting(T* object) noexcept
    {
        auto result = Retained();
        result.m_object = object;
        return result;
    }

    /// Adds a share to an object that somebody else keeps alive right now.
    static Retained sharing(T* object) noexcept
    {
        object->retain();
        return adopting(object);
    }

    Retained(const Retained& other) noexcept
        : m_object(other.m_object)
    {
        if (m_object)
            m_object->retain();
    }

    Retained(Retained&& other) noexcept
        : m_object(std::exchange(other.m_object, nullptr))
    {}

    template <class Derived>
    Retained(Retained<Derived> other) noexcept
        : m_object(other.leak())
    {}

    Retained& operator=(Retained other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    ~Retained()
    {
        if (m_object)
            m_object->release();
    }

    T* get() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    T* operator->() const noexcept { return m_object; }
    explicit operator bool() const noexcept { return m_object; }

    /// Gives the share away without dropping it.
    T* leak() noexcept { return std::exchange(m_object, nullptr); }

private:
    T* m_object = nullptr;
};

} // namespace orrenby::detail
