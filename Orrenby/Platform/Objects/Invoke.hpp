#pragma once

/// @file
/// Calling whatever can be called, members included. Not in the umbrella header: it serves other headers.

#include "Orrenby/Platform/Export.hpp"
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// What a member pointer of `Class` is applied to: the object itself, what a pointer (plain or smart) points
/// to, or what a `std::reference_wrapper` refers to.
template <class Class, class Object> constexpr decltype(auto) memberOwner(Object&& object)
{
    if constexpr (std::is_base_of_v<Class, std::remove_cvref_t<Object>>)
        return std::forward<Object>(object);
    else if constexpr (requires { *std::forward<Object>(object); })
        return *std::forward<Object>(object);
    else
        return object.get();
}

template <class Class, class Member, class Object, class... Arguments>
constexpr decltype(auto) invokeMember(Member Class::*member, Object&& object, Arguments&&... arguments)
{
    if constexpr (std::is_function_v<Member>)
        return (memberOwner<Class>(std::forward<Object>(object)).*member)(
            std::forward<Arguments>(arguments)...);
    else
        return memberOwner<Class>(std::forward<Object>(object)).*member;
}

/// What `std::invoke` does, without `<functional>`, which takes a compiler as long as ten headers of the
/// library.
template <class Callable, class... Arguments>
constexpr std::invoke_result_t<Callable, Arguments...> invoke(Callable&& callable,
    Arguments&&... arguments) noexcept(std::is_nothrow_invocable_v<Callable, Arguments...>)
{
    if constexpr (std::is_member_pointer_v<std::remove_cvref_t<Callable>>)
        return invokeMember(callable, std::forward<Arguments>(arguments)...);
    else
        return std::forward<Callable>(callable)(std::forward<Arguments>(arguments)...);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
