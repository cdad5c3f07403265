#pragma once

/// @file
/// The road that every log entry takes.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/CallSite.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Utilities/Log/AnyLoggable.hpp"
#include "Orrenby/Utilities/Log/DeferredEvent.hpp"
#include "Orrenby/Utilities/Log/Event.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include "Orrenby/Utilities/Log/Loggable.hpp"
#include "Orrenby/Utilities/Log/LoggedValue.hpp"
#include "Orrenby/Utilities/Log/Queue.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"
#include <concepts>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

ORRENBY_EXPORT Log::Event makeLogEvent(Log::Queue queue, Log::Level level, std::string message,
    Dictionary properties, std::string filename, std::int64_t line, std::string function);

/// The last component of a path without its extension. A dot first or last in it starts no extension; slashes
/// at the end do not count.
ORRENBY_EXPORT std::string logFilename(std::string_view path);

/// What a value is, or what a callable without arguments gives.
template <class Source> decltype(auto) evaluated(Source& source)
{
    if constexpr (std::is_invocable_v<Source&>)
        return std::invoke(source);
    else
        return (source);
}

/// Reads the item that a pointer of unknown constness refers to.
template <class Item> void readLogItem(const void* item, LoggedValue& read)
{
    auto& source = *static_cast<Item*>(const_cast<void*>(item)); // constant only if `Item` is
    static_assert(
        !std::is_void_v<decltype(evaluated(source))>, "a deferred log item returns what is to be logged");
    const auto& value = evaluated(source);
    readLogged<std::remove_cvref_t<decltype(value)>>(value, read);
}

/// Of text that ends with a NUL.
ORRENBY_EXPORT void readLogText(const void* text, LoggedValue& read);

template <class Item> inline constexpr LogOperations itemOperations{&readLogItem<Item>, nullptr};
inline constexpr LogOperations textOperations{&readLogText, nullptr};

template <class Item, class Properties> struct LogItemWithProperties {
    Item& item;
    Properties& properties;

    static void readItem(const void* arguments, LoggedValue& read)
    {
        readLogItem<Item>(std::addressof(static_cast<const LogItemWithProperties*>(arguments)->item), read);
    }
    static Dictionary makeProperties(const void* arguments)
    {
        return evaluated(static_cast<const LogItemWithProperties*>(arguments)->properties);
    }
    static constexpr LogOperations operations{&readItem, &makeProperties};
};

/// Hands entries that passed level and condition to the handlers.
struct ORRENBY_EXPORT LogDelivery {
    static void deliverCritical(LogState state, const LogOperations& operations, const void* arguments,
        const char* file, const char* function);

    /// In the header, because a call into the library would cost more than all the rest.
    static void deliver(
        Log::Level level, const LogOperations& operations, const void* arguments, const CallSite& site)
    {
        const auto state = LogState{.line = site.line(),
            .level = static_cast<std::uint8_t>(level.rawValue()),
            .isSpelledOut = site.isSpelledOut()};
        const char* function = site.function().data();
        if (level == Log::Level::critical)
            deliverCritical(state, operations, arguments, site.file(), function);
        else if (auto* events = logEventHandler.load(std::memory_order_acquire)) {
            const auto event = Log::DeferredEvent(state, operations, arguments, site.file(), function);
            events->handler(level, event);
        }
    }
};

/// Makes an entry that passed its level. A literal is passed as it is, so that no entry instantiates anything
/// for its length.
template <class Item> void logItem(Log::Level level, Item& item, const CallSite& site)
{
    if constexpr (std::is_same_v<const char*, std::decay_t<const Item>>)
        LogDelivery::deliver(level, textOperations, item, site);
    else
        LogDelivery::deliver(level, itemOperations<Item>, std::addressof(item), site);
}
template <class Item, class Properties>
void logItem(Log::Level level, Item& item, Properties& properties, const CallSite& site)
{
    using Arguments = LogItemWithProperties<Item, Properties>;
    const auto arguments = Arguments{item, properties};
    LogDelivery::deliver(level, Arguments::operations, &arguments, site);
}

/// Gives properties, or is a callable that does.
template <class T>
concept LogProperties = std::convertible_to<T, Dictionary> || std::is_invocable_r_v<Dictionary, T&>;

} // namespace detail

namespace Log {

/// Makes an entry. The other entry points are shorthands for it; code that reports for someone else calls it
/// itself, with a site spelled out.
///
/// In this order: drops the entry when it is below the level; calls `condition` and drops the entry when that
/// gives *true*; gives a critical entry to the critical-error handler; gives every entry to the event
/// handler. What one of these throws passes to the caller, and the rest of them is left out: an entry on
/// which the critical-error handler throws does not reach the event handler.
///
/// @param condition   Called after the test of the level.
/// @param item        A value, or a callable without arguments that gives one; called at most once, when the
/// event is made.
/// @param properties  A dictionary, or a callable that gives one, as `item`.
/// @param site        Where the entry says that it was made.
///
/// Safe to use from several threads.
template <std::invocable Condition, class Item, detail::LogProperties Properties>
void _append(Condition&& condition, Level level, Item&& item, Properties&& properties,
    CallSite site = CallSite::current())
{
    if (Log::level() > level || condition())
        return;
    detail::logItem(level, item, properties, site);
}

/// Makes an event, with levels and queues as `useEmoji()` says now.
///
/// @param filename  The base name, as it is to stand in the event.
template <detail::LogProperties Properties>
Event _makeEvent(Queue queue, Level level, const Loggable& item, Properties&& properties,
    std::string_view filename, std::int64_t line, std::string_view function)
{
    return detail::makeLogEvent(queue, level, item.message(), detail::evaluated(properties),
        std::string(filename), line, std::string(function));
}

} // namespace Log

} // namespace orrenby
