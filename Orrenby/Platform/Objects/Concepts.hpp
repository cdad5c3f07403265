#pragma once

/// @file
/// Conditions on types that several headers share.

#include "Orrenby/Platform/Export.hpp"
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

template <class T> using PlainPointee = std::remove_cv_t<std::remove_pointer_t<std::decay_t<T>>>;

template <class T, class... Others>
concept OneOf = (std::is_same_v<T, Others> || ...);

/// Keeps a constructor for everything from taking the place of copy and move.
template <class T, class Other>
concept OtherThan = !std::is_same_v<std::remove_cvref_t<T>, Other>;

template <class F, class R, class... Arguments>
using IsCallableAs = std::is_invocable_r<R, std::decay_t<F>&, Arguments...>;

/// A copy of `F` can be called with these arguments and gives an `R`.
template <class F, class R, class... Arguments>
concept CallableAs = IsCallableAs<F, R, Arguments...>::value;

/// What a constructor of `Self` takes as a callable.
template <class F, class Self, class R, class... Arguments>
concept CallableFor = OtherThan<F, Self> && CallableAs<F, R, Arguments...>;

template <class T>
concept Character = OneOf<T, char, wchar_t, char8_t, char16_t, char32_t>;

template <class T> using PointsToCharacter = std::is_same<PlainPointee<T>, char>;

/// `char*`, `const char*` or an array of `char`.
template <class T>
concept PointerToText = PointsToCharacter<T>::value && std::is_pointer_v<std::decay_t<T>>;

} // namespace orrenby::inline ORRENBY_ABI::detail
