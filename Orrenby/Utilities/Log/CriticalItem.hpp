#pragma once

/// @file
/// What critical log entries accept. Not for use of its own.

#include "Orrenby/Platform/Errors/IsErrorValue.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/CallSite.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/StaticText.hpp"
#include "Orrenby/Utilities/Log/Append.hpp"
#include <concepts>
#include <exception>
#include <functional>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

template <class T>
concept CriticalValue = ErrorValue<T> || std::same_as<std::remove_cvref_t<T>, std::exception_ptr>;

/// What `T` gives when it is evaluated.
template <class T> struct Evaluated {
    using type = T;
};
template <std::invocable T> struct Evaluated<T> {
    using type = std::invoke_result_t<T>;
};
template <class T> using EvaluatedType = typename Evaluated<T&>::type;

template <class T>
concept PlainStaticText = std::same_as<std::remove_cvref_t<T>, StaticText>;

template <class T>
concept DeferredStaticText = std::invocable<T&> && PlainStaticText<EvaluatedType<T>>;

/// A literal, or a run-time text in an array, which `StaticText` refuses.
template <class T>
concept ArrayOfText
    = std::same_as<const char*, std::decay_t<T>> && std::is_array_v<std::remove_reference_t<T>>;

/// Everything critical entries take except a plain static text, whose overloads make sure that it is one.
template <class T>
concept CriticalItem = CriticalValue<EvaluatedType<T>> || DeferredStaticText<T>;

template <class T>
concept NoCriticalItem = !(CriticalItem<T> || PlainStaticText<T> || ArrayOfText<T>);

template <class T>
concept DeferredProperties = std::is_invocable_r_v<Dictionary, T&>;

template <class T>
concept LogCondition = std::is_invocable_r_v<bool, T&> || std::is_constructible_v<bool, T&>;

/// Whether the entry is not to be made, because of the level or the condition.
template <class Condition> bool holds(Condition& condition)
{
    if (Log::level() > Log::Level::critical)
        return true;
    if constexpr (std::is_invocable_v<Condition&>)
        return static_cast<bool>(std::invoke(condition));
    else
        return static_cast<bool>(condition);
}

template <class Item> void logCritical(Item& item, const CallSite& site)
{
    if (!(Log::level() > Log::Level::critical))
        logItem(Log::Level::critical, item, site);
}

template <class Item, class Properties>
void logCritical(Item& item, Properties& properties, const CallSite& site)
{
    if (!(Log::level() > Log::Level::critical))
        logItem(Log::Level::critical, item, properties, site);
}

template <class Item> void logCriticalWhen(bool isCritical, Item& item, const CallSite& site)
{
    const Log::Level level = isCritical ? Log::Level::critical : Log::Level::error;
    if (!(Log::level() > level))
        logItem(level, item, site);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
