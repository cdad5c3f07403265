#pragma once

/// @file
/// The lock inside a `Synchronized`, of a kind that is chosen when it is made.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/MutexLock.hpp"
#include "Orrenby/Utilities/ReadersWriterLock.hpp"
#include <concepts>
#include <variant>

namespace orrenby::inline ORRENBY_ABI {

/// How a `Synchronized` is locked: everything one after the other, or readers side by side.
enum class SynchronizedKind { mutex, readersWriter };

namespace detail {

/// One of the two locks, in place. The choice costs one branch for each operation.
class SynchronizedLock {
public:
    explicit SynchronizedLock(SynchronizedKind kind) noexcept
        : m_lock(made(kind))
    {}

    template <std::invocable Body> decltype(auto) read(Body&& body)
    {
        if (auto* const readersWriter = std::get_if<ReadersWriterLock>(&m_lock))
            return readersWriter->read(static_cast<Body&&>(body));
        return std::get_if<MutexLock>(&m_lock)->read(static_cast<Body&&>(body));
    }

    template <std::invocable Body> decltype(auto) write(Body&& body)
    {
        if (auto* const readersWriter = std::get_if<ReadersWriterLock>(&m_lock))
            return readersWriter->write(static_cast<Body&&>(body));
        return std::get_if<MutexLock>(&m_lock)->write(static_cast<Body&&>(body));
    }

private:
    using Either = std::variant<MutexLock, ReadersWriterLock>;

    static Either made(SynchronizedKind kind) noexcept
    {
        if (kind == SynchronizedKind::readersWriter)
            return Either(std::in_place_type<ReadersWriterLock>);
        return Either(std::in_place_type<MutexLock>);
    }

    Either m_lock;
};

} // namespace detail

} // namespace orrenby
