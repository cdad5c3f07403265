#pragma once

/// @file
/// A value that several threads share, reachable only under its lock.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Objects/TestAccess.hpp"
#include "Orrenby/Utilities/ReferenceType.hpp"
#include "Orrenby/Utilities/SynchronizedLock.hpp"
#include <concepts>
#include <functional>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Changes a `T` in place and gives nothing back.
template <class Body, class T>
concept ChangeOf = std::invocable<Body, T&> && std::is_void_v<std::invoke_result_t<Body, T&>>;

} // namespace detail

/// Holds a value and hands it only to callables that run under a lock.
///
/// Reads are `value` and `map`, the only way to change the value is `apply`. With the kind `readersWriter`
/// reads run side by side and a change runs alone; with `mutex` everything runs one after the other, reads
/// included.
///
/// @snippet Tests/Utilities/SynchronizedTests.cpp Sharing a value
///
/// A body runs while the lock is held. Keep it short, do not block in it, and do not use the same box from
/// it: that waits for ever with `mutex` and is undefined with `readersWriter`. What a change replaces ends
/// under the lock too. A body that throws gives the lock back and its error passes through; what `apply`
/// changed until then stays changed.
///
/// A reference that left the box would lead to an object that the lock no longer guards. So where `T` is a
/// `ReferenceType`, reading `value` ends the process, and so does a `map` that gives the box's own object;
/// compute what is wanted inside the box instead. What a body hands out behind the box's back (raw pointers,
/// views, iterators) cannot be noticed.
///
/// No allocation of its own. Safe to use from several threads.
template <class T> class Synchronized {
public:
    /// The kinds of locks.
    using Kind = SynchronizedKind;

    /// The value that it guards, and what with.
    Synchronized(T value, Kind lock)
        : m_rawValue(std::move(value))
        , m_lock(lock)
    {}
    Synchronized(const Synchronized&) = delete;
    Synchronized& operator=(const Synchronized&) = delete;

    /// A copy of the value. Ends the process where `T` is a reference type.
    [[nodiscard]] T value() const
    {
        if constexpr (ReferenceType<T>)
            m_unsupportedUnsafeOperation("Accessing `value: AnyObject` is unsafe and therefore unsupported");
        return m_lock.read([this]() -> T { return m_rawValue; });
    }

    /// Calls `body`, which returns nothing, with the value, which it may change.
    template <detail::ChangeOf<T> Body> void apply(Body&& body)
    {
        m_lock.write([&] { std::invoke(std::forward<Body>(body), m_rawValue); });
    }

    /// What `body` makes of the value. A result that is a reference into the value is copied under the lock.
    template <std::invocable<const T&> Body>
    auto map(Body&& body) const -> std::remove_cvref_t<std::invoke_result_t<Body, const T&>>
    {
        using U = std::remove_cvref_t<std::invoke_result_t<Body, const T&>>;
        return m_lock.read([&]() -> U {
            if constexpr (detail::MayBeSameObject<T, U>)
                return checked<U>(std::invoke(std::forward<Body>(body), m_rawValue));
            else
                return std::invoke(std::forward<Body>(body), m_rawValue);
        });
    }

private:
    /// Lets every object pass but the box's own. An empty reference gives nothing away.
    template <class U> U checked(U result) const
    {
        const auto identity = detail::sharedIdentity(result);
        if (identity != ObjectIdentifier() && identity == detail::sharedIdentity(m_rawValue))
            m_unsupportedUnsafeOperation(
                "Returning `rawValue: AnyObject` is unsafe and therefore unsupported");
        return result;
    }

    static void endProcess(std::string_view message) { fatalError(message, "Utilities/Synchronized", 25); }

    friend testing::TestAccess;

    void (*m_unsupportedUnsafeOperation)(std::string_view) = endProcess;
    T m_rawValue;
    mutable detail::SynchronizedLock m_lock;
};

} // namespace orrenby
