#pragma once

/// @file
/// The log: what code that reports something calls.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/CallSite.hpp"
#include "Orrenby/Platform/Objects/Deferred.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/StaticText.hpp"
#include "Orrenby/Utilities/Log/Append.hpp"
#include "Orrenby/Utilities/Log/CriticalItem.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// The log filters entries by their level and hands them to the application's handler. It writes nothing
/// anywhere itself.
///
/// An entry is an item, which is any value or a callable without arguments that gives one. Callables run only
/// when the entry passes the level, and only when the handler asks for the event, then once.
///
/// @snippet Tests/Utilities/Log/EntriesTests.cpp Logging
///
/// Entries are delivered on the calling thread before the entry point returns. The last parameter of each is
/// filled in by the compiler with the place of the caller.
///
/// An entry below the level costs a load, a comparison and a branch; nothing is evaluated. Safe to use from
/// several threads.
namespace Log {

/// Details that help while developing.
template <class Item> void debug(Item&& item, CallSite site = CallSite::current())
{
    if (!(level() > Level::debug))
        detail::logItem(Level::debug, item, site);
}

/// What goes on.
template <class Item> void info(Item&& item, CallSite site = CallSite::current())
{
    if (!(level() > Level::info))
        detail::logItem(Level::info, item, site);
}

/// What a person did.
template <class Item> void event(Item&& item, CallSite site = CallSite::current())
{
    if (!(level() > Level::event))
        detail::logItem(Level::event, item, site);
}

/// What is wrong, but was mended.
template <class Item> void warning(Item&& item, CallSite site = CallSite::current())
{
    if (!(level() > Level::warning))
        detail::logItem(Level::warning, item, site);
}

/// What failed.
template <class Item> void error(Item&& item, CallSite site = CallSite::current())
{
    if (!(level() > Level::error))
        detail::logItem(Level::error, item, site);
}

/// Options of `error`.
struct ErrorOptions {
    /// Whether the failure is one that must not happen. A value or a callable; the callable runs before the
    /// level is tested, because the level depends on it.
    Deferred<bool> criticalWhen{};
};

/// What failed, as `critical` when the options say so, else as `error`: `Log::error(failure, {.criticalWhen =
/// isPaid})`.
///
/// The item is a text written in the source, an error value, or a callable that gives an error value or a
/// `StaticText`.
inline void error(StaticText item, const ErrorOptions& options, CallSite site = CallSite::current())
{
    detail::logCriticalWhen(options.criticalWhen.get(), item, site);
}
template <detail::CriticalItem Item>
void error(Item&& item, const ErrorOptions& options, CallSite site = CallSite::current())
{
    detail::logCriticalWhen(options.criticalWhen.get(), item, site);
}
/// A text that is made at run time cannot be told from others like it, so it is no name of a critical
/// failure.
template <detail::NoCriticalItem Item>
void error(Item&& item, const ErrorOptions& options, CallSite site = CallSite::current()) = delete;

/// What must not happen. It also reaches the critical-error handler.
///
/// The item is a text written in the source, an error value, or a callable that gives an error value or a
/// `StaticText`. What differs from case to case belongs into the properties: a dictionary, or a callable that
/// gives one.
///
/// @snippet Tests/Utilities/Log/CriticalTests.cpp Reporting what must not happen
inline void critical(StaticText item, CallSite site = CallSite::current())
{
    detail::logCritical(item, site);
}
inline void critical(StaticText item, const Dictionary& properties, CallSite site = CallSite::current())
{
    detail::logCritical(item, properties, site);
}
template <detail::DeferredProperties Properties>
void critical(StaticText item, Properties&& properties, CallSite site = CallSite::current())
{
    detail::logCritical(item, properties, site);
}
template <detail::CriticalItem Item> void critical(Item&& item, CallSite site = CallSite::current())
{
    detail::logCritical(item, site);
}
template <detail::CriticalItem Item>
void critical(Item&& item, const Dictionary& properties, CallSite site = CallSite::current())
{
    detail::logCritical(item, properties, site);
}
template <detail::CriticalItem Item, detail::DeferredProperties Properties>
void critical(Item&& item, Properties&& properties, CallSite site = CallSite::current())
{
    detail::logCritical(item, properties, site);
}
/// See `error` on texts that are made at run time.
template <detail::NoCriticalItem Item, class... Rest> void critical(Item&& item, Rest&&... rest) = delete;
template <detail::NoCriticalItem Item> void critical(Item&& item, const Dictionary& properties) = delete;

/// Makes a critical entry when the condition does *not* hold; in all else as `critical`.
///
/// The condition is a value or a callable, which is not called when critical entries are dropped. It never
/// ends the process.
template <detail::LogCondition Condition>
void assert_(Condition&& condition, StaticText item, CallSite site = CallSite::current())
{
    if (!detail::holds(condition))
        detail::logCritical(item, site);
}
template <detail::LogCondition Condition>
void assert_(
    Condition&& condition, StaticText item, const Dictionary& properties, CallSite site = CallSite::current())
{
    if (!detail::holds(condition))
        detail::logCritical(item, properties, site);
}
template <detail::LogCondition Condition, detail::DeferredProperties Properties>
void assert_(
    Condition&& condition, StaticText item, Properties&& properties, CallSite site = CallSite::current())
{
    if (!detail::holds(condition))
        detail::logCritical(item, properties, site);
}
template <detail::LogCondition Condition, detail::CriticalItem Item>
void assert_(Condition&& condition, Item&& item, CallSite site = CallSite::current())
{
    if (!detail::holds(condition))
        detail::logCritical(item, site);
}
template <detail::LogCondition Condition, detail::CriticalItem Item>
void assert_(
    Condition&& condition, Item&& item, const Dictionary& properties, CallSite site = CallSite::current())
{
    if (!detail::holds(condition))
        detail::logCritical(item, properties, site);
}
template <detail::LogCondition Condition, detail::CriticalItem Item, detail::DeferredProperties Properties>
void assert_(Condition&& condition, Item&& item, Properties&& properties, CallSite site = CallSite::current())
{
    if (!detail::holds(condition))
        detail::logCritical(item, properties, site);
}
template <detail::LogCondition Condition, detail::NoCriticalItem Item, class... Rest>
void assert_(Condition&& condition, Item&& item, Rest&&... rest) = delete;
template <detail::LogCondition Condition, detail::NoCriticalItem Item>
void assert_(Condition&& condition, Item&& item, const Dictionary& properties) = delete;

} // namespace Log

} // namespace orrenby
