#pragma once

/// @file
/// A log handler that stands for several.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/Log/DeferredEvent.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"
#include <concepts>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::Log {

/// Passes each entry on to its handlers, in the order in which they were given.
///
/// The event is made at most once, when the first of them asks for it.
///
/// @snippet Tests/Utilities/Log/TeeHandlerTests.cpp Logging to several places
///
/// Can be moved, not copied. As safe to use from several threads as its handlers are.
class ORRENBY_EXPORT TeeHandler {
public:
    /// Empty handlers are left out.
    template <std::convertible_to<EventHandler>... More>
    explicit TeeHandler(EventHandler first, EventHandler second, More&&... more)
    {
        m_handlers.reserve(2 + sizeof...(more));
        add(std::move(first));
        add(std::move(second));
        (add(EventHandler(std::forward<More>(more))), ...);
    }

    /// Calls the handlers in turn.
    void operator()(Level level, const DeferredEvent& event);

private:
    void add(EventHandler handler);

    std::vector<EventHandler> m_handlers;
};

} // namespace orrenby::Log
