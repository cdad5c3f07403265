#pragma once

/// @file
/// A log event that is made when somebody asks for it.

#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Utilities/Log/Event.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include "Orrenby/Utilities/Log/LoggedValue.hpp"
#include <cstdint>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// How the arguments of an entry are evaluated; one constant for all entries with arguments of these types.
struct LogOperations {
    /// Evaluates the item and finds out about it what is wanted.
    void (*readItem)(const void* arguments, LoggedValue& read);
    /// Evaluates the properties; null where there are none.
    Dictionary (*makeProperties)(const void* arguments);
};

/// Fits in one register.
struct LogState {
    std::int32_t line;
    std::uint8_t level;
    bool hasEvent = false;
    bool isSpelledOut = false; ///< The place in the source is.
};

struct LogDelivery;

} // namespace detail

namespace Log {

/// What a handler receives: calling it gives the event.
///
/// The first call evaluates the logged item and the properties and makes the event, further calls give the
/// same one. A handler that decides by the level alone makes it never.
///
/// It refers to the caller's arguments and is valid during the call of the handler, on that thread. To keep
/// it, copy it: a copy makes the event at once and owns it.
///
/// @snippet Tests/Utilities/Log/DeferredEventTests.cpp Keeping an event
///
/// Lives on the stack; does not allocate before the event is made. Not synchronised.
class ORRENBY_EXPORT DeferredEvent {
public:
    DeferredEvent(const DeferredEvent& other)
        : m_state(other.m_state)
        , m_event(other())
    {
        m_state.hasEvent = true;
    }
    DeferredEvent& operator=(const DeferredEvent& other);
    ~DeferredEvent()
    {
        if (m_state.hasEvent)
            m_event.~Event();
    }

    /// That of the entry; asking makes no event.
    Level level() const noexcept { return static_cast<Level::Case>(m_state.level); }

    /// The event. What the item or the properties throw passes to the caller, and the next call tries again.
    const Event& operator()() const
    {
        if (!m_state.hasEvent)
            make();
        return m_event;
    }

private:
    friend struct detail::LogDelivery;

    /// Each word counts: this is all that an entry costs when nobody asks for the event.
    DeferredEvent(detail::LogState state, const detail::LogOperations& operations, const void* arguments,
        const char* file, const char* function) noexcept
        : m_state(state)
        , m_operations(&operations)
        , m_arguments(arguments)
        , m_file(file)
        , m_function(function)
    {}

    void make() const;
    /// Makes the event now, together with the error that it stands for.
    NSError makeWithError() const;
    void makeFrom(detail::LoggedValue& read) const;

    mutable detail::LogState m_state;
    const detail::LogOperations* m_operations = nullptr; ///< The next four: null in a copy.
    const void* m_arguments = nullptr;
    const char* m_file = nullptr;
    const char* m_function = nullptr;
    union {
        mutable Event m_event; ///< Lives while the state says so.
    };
};

} // namespace Log

} // namespace orrenby
