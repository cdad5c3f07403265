#pragma once

/// @file
/// Operations that can be called directly or with `|`.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Invoke.hpp"
#include <concepts>
#include <tuple>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {
/// Whether `F` takes these arguments once a subject stands before them.
template <class F, class Subject, class... A>
concept LacksSubject
    = !std::invocable<const F&, A...> && std::invocable<const F&, Subject, std::decay_t<A>...>;
} // namespace detail

/// An operation on a `Subject` that still waits for it: what `operation(arguments…)` gives, ready for
/// `subject | …`.
///
/// It keeps decayed copies of its arguments; a view among them must outlive it.
template <class F, class Subject, class... Arguments> class BoundPipeable {
public:
    /// Made by `Pipeable`; copies the function and takes the arguments.
    template <class... A>
    constexpr explicit BoundPipeable(const F& function, A&&... arguments)
        : m_function(function)
        , m_arguments(std::forward<A>(arguments)...)
    {}

    /// Runs the operation. A chain is read from left to right.
    template <std::convertible_to<Subject> S>
    friend constexpr decltype(auto) operator|(S&& subject, const BoundPipeable& operation)
    {
        return std::apply(
            [&](const Arguments&... arguments) -> decltype(auto) {
                return detail::invoke(operation.m_function, std::forward<S>(subject), arguments...);
            },
            operation.m_arguments);
    }

    /// The same for an operation that is used once: its arguments are moved into the call.
    template <std::convertible_to<Subject> S>
    friend constexpr decltype(auto) operator|(S&& subject, BoundPipeable&& operation)
    {
        return std::apply(
            [&](Arguments&... arguments) -> decltype(auto) {
                return detail::invoke(
                    operation.m_function, std::forward<S>(subject), std::move(arguments)...);
            },
            operation.m_arguments);
    }

private:
    F m_function;
    std::tuple<Arguments...> m_arguments;
};

/// Makes a function object, subject first, callable in both ways: `using_(request, method)` and `request |
/// using_(method)`. With no further argument the parentheses fall away: `text | trim`.
///
/// `F` takes the subject by value when it builds on it, so that an rvalue travels through a chain without a
/// copy. Where the subject is text, `F` has no optional argument that text converts to: the direct call and
/// the bound form could not be told apart.
///
/// @snippet Tests/Platform/Objects/PipeableTests.cpp Chaining operations
///
/// Costs what the direct call costs, and one copy of each bound argument. Safe to use from several threads
/// when `F` is.
template <class F, class Subject> class Pipeable {
public:
    /// Usually a lambda without captures, in a constant.
    constexpr explicit Pipeable(F function)
        : m_function(std::move(function))
    {}

    /// The direct call.
    template <std::convertible_to<Subject> S, class... A>
        requires std::invocable<const F&, S, A...>
    constexpr decltype(auto) operator()(S&& subject, A&&... arguments) const
    {
        return detail::invoke(m_function, std::forward<S>(subject), std::forward<A>(arguments)...);
    }

    /// The operation without its subject.
    template <class... A>
        requires detail::LacksSubject<F, Subject, A...>
    [[nodiscard]] constexpr auto operator()(A&&... arguments) const
    {
        return BoundPipeable<F, Subject, std::decay_t<A>...>(m_function, std::forward<A>(arguments)...);
    }

    /// Runs the operation without further arguments.
    template <std::convertible_to<Subject> S>
        requires std::invocable<const F&, S>
    friend constexpr decltype(auto) operator|(S&& subject, const Pipeable& operation)
    {
        return detail::invoke(operation.m_function, std::forward<S>(subject));
    }

private:
    F m_function;
};

/// Names the subject and leaves the function's type to be deduced: `inline constexpr auto trim =
/// pipeable<std::string_view>(…)`.
template <class Subject, class F> constexpr Pipeable<F, Subject> pipeable(F function)
{
    return Pipeable<F, Subject>(std::move(function));
}

} // namespace orrenby
