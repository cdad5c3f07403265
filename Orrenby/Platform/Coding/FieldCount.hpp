#pragma once

/// @file
/// How many fields an aggregate has. Not in the umbrella header: part of AggregateFields.hpp.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Stands for a field of any type where only the number of fields is asked for. Never made.
struct AnyField {
    template <class T> operator T() const { __builtin_unreachable(); }
};

template <std::size_t> using AnyFieldAt = AnyField;

template <class T, class Indexes> struct TakesFields;
template <class T, std::size_t... Index> struct TakesFields<T, std::index_sequence<Index...>> {
    static constexpr bool value = requires { T{AnyFieldAt<Index>{}...}; };
};

/// Goes up to the first number of initialisers that is refused after one that was taken. Fields without
/// default make small numbers be refused too; an aggregate that takes none up to the limit has more.
template <class T, std::size_t Count, bool WasTaken> constexpr std::size_t countFields()
{
    constexpr std::size_t limit = 33;
    constexpr bool isTaken = TakesFields<T, std::make_index_sequence<Count>>::value;
    if constexpr (WasTaken && !isTaken)
        return Count - 1;
    else if constexpr (Count == limit)
        return limit;
    else
        return countFields<T, Count + 1, isTaken>();
}

/// Stands for a base class of `T` where only the number of bases is asked for.
template <class T> struct AnyBase {
    template <class Base>
        requires(std::is_base_of_v<Base, T> && !std::is_same_v<Base, T>)
    operator Base() const { __builtin_unreachable(); }
};

/// Stands for a field of any type that is no base class of `T`.
template <class T> struct AnyButBase {
    template <class Field>
        requires(!std::is_base_of_v<Field, T>)
    operator Field() const { __builtin_unreachable(); }
};

/// The bases of an aggregate come first among its initialisers. A second one that a base could initialise is
/// a field all the same if it is an `Any`, or a struct with that very base.
template <class T> constexpr std::size_t countBases()
{
    if constexpr (!requires { T{AnyBase<T>{}}; })
        return 0;
    else if constexpr (
        !requires {
            T{AnyBase<T>{}, AnyBase<T>{}};
        }
        || requires { T{AnyBase<T>{}, AnyButBase<T>{}}; })
        return 1;
    else
        return 2;
}

template <class T> inline constexpr std::size_t baseCount = countBases<T>();

template <class T> inline constexpr std::size_t fieldCount = countFields<T, 0, false>() - baseCount<T>;

} // namespace orrenby::inline ORRENBY_ABI::detail
