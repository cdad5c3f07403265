#pragma once

/// @file
/// Log entries for callers that cannot use the generic entry points.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/CallSite.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include <concepts>
#include <string>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

template <class T> inline constexpr bool isLogClosure = std::is_invocable_r_v<std::string, std::decay_t<T>&>;

template <class T>
concept LogClosure = isLogClosure<T>;

} // namespace detail

namespace Log {

/// Calls that a binding to another language makes: the level is an argument, nothing is a template in the
/// end.
///
/// Safe to use from several threads.
ORRENBY_EXPORT void _objc_append(Level level, const Any& object, CallSite site = CallSite::current());
ORRENBY_EXPORT void _objc_append(
    Level level, UniqueFunction<std::string()>&& closure, CallSite site = CallSite::current());

/// Makes the entry when the condition is false.
ORRENBY_EXPORT void _objc_assert(
    bool condition, Level level, UniqueFunction<std::string()> closure, CallSite site = CallSite::current());

/// Tells a callable from an object.
template <detail::LogClosure Closure>
void _objc_append(Level level, Closure&& closure, CallSite site = CallSite::current())
{
    _objc_append(level, UniqueFunction<std::string()>(std::forward<Closure>(closure)), site);
}

} // namespace Log

} // namespace orrenby
