#pragma once

/// @file
/// A log event that is made when somebody asks for it.

#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/CallSite.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Utilities/Log/Event.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include "Orrenby/Utilities/Log/LoggedValue.hpp"
#include <optional>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Where an event comes from: the caller's arguments, still unevaluated.
struct LogSource {
    /// Evaluates the item and finds out about it what is wanted.
    void (*readItem)(const void* item, LoggedValue& read);
    const void* item;
    /// Evaluates the properties; null where there are none.
    Dictionary (*makeProperties)(const void* properties);
    const void* properties;
    CallSite site;
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
    DeferredEvent(Level level, const detail::LogSource& source) noexcept
        : m_source(&source)
        , m_level(level)
    {}
    DeferredEvent(const DeferredEvent& other)
        : m_level(other.m_level)
        , m_event(other())
    {}
    DeferredEvent& operator=(const DeferredEvent& other)
    {
        m_event = other();
        m_level = other.m_level;
        m_source = nullptr;
        return *this;
    }

    Level level() const noexcept { return m_level; }

    /// The event. What the item or the properties throw passes to the caller, and the next call tries again.
    const Event& operator()() const
    {
        if (!m_event)
            make();
        return *m_event;
    }

private:
    friend struct detail::LogDelivery;

    void make() const;
    /// Makes the event now, together with the error that it stands for.
    NSError makeWithError() const;

    const detail::LogSource* m_source = nullptr; ///< Null once the event belongs to a copy.
    Level m_level;
    mutable std::optional<Event> m_event;
};

} // namespace Log

} // namespace orrenby
