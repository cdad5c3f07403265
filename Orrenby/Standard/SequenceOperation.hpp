#pragma once

/// @file
/// Operations on sequences that can be called directly or with `|`.

#include "Orrenby/Platform/Export.hpp"
#include <functional>
#include <iterator>
#include <tuple>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// What a range-for loop takes: containers, arrays, views of the standard library.
template <class T>
concept Sequence = requires(T& sequence)
{
    *std::begin(sequence);
    std::end(sequence);
};

/// What the elements of a sequence are copied to.
template <Sequence T>
using SequenceElement = std::remove_cvref_t<decltype(*std::begin(std::declval<std::remove_cvref_t<T>&>()))>;

/// An operation that still waits for its sequence: `values | compact()`, `values | separate(isOdd)`. It walks
/// over the sequence once and gives a new container, so it also ends a chain of the standard library's views.
///
/// @snippet Tests/Standard/SequencesTests.cpp Ending a chain of views
///
/// It keeps copies of its arguments. Safe to use from several threads when what it calls is.
template <class F, class... Arguments> class BoundSequenceOperation {
public:
    /// Made by the operations; takes the arguments.
    template <class... A>
    constexpr explicit BoundSequenceOperation(F function, A&&... arguments)
        : m_function(std::move(function))
        , m_arguments(std::forward<A>(arguments)...)
    {}

    /// Runs the operation over the sequence, whose elements it copies.
    template <Sequence S> friend constexpr auto operator|(S&& sequence, BoundSequenceOperation operation)
    {
        return std::apply([&](auto&... arguments) { return operation.m_function(sequence, arguments...); },
            operation.m_arguments);
    }

private:
    F m_function;
    std::tuple<Arguments...> m_arguments;
};

namespace detail {

template <class F, class... A> constexpr auto boundOperation(F function, A&&... arguments)
{
    return BoundSequenceOperation<F, std::decay_t<A>...>(std::move(function), std::forward<A>(arguments)...);
}

} // namespace detail

} // namespace orrenby
