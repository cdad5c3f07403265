#pragma once

/// @file
/// Small operations on lists of values of any kind: finding, filtering, dropping null markers. Their `map`
/// stands with that of all sequences.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
#include "Orrenby/Standard/Sequences.hpp"
#include <concepts>
#include <functional>
#include <optional>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

ORRENBY_EXPORT Array withoutNulls(const Array& array);
ORRENBY_EXPORT Array withoutNulls(Array&& array);

struct FindFirstWithBlock {
    template <std::predicate<const Any&> F>
    std::optional<Any> operator()(const Array& array, F&& predicate) const
    {
        for (const Any& element : array)
            if (std::invoke(predicate, element))
                return element;
        return std::nullopt;
    }
};

struct FilterWithBlock {
    template <std::predicate<const Any&> F> Array operator()(const Array& array, F&& predicate) const
    {
        Array result;
        for (const Any& element : array)
            if (std::invoke(predicate, element))
                result.push_back(element);
        return result;
    }
    template <std::predicate<const Any&> F> Array operator()(Array&& array, F&& predicate) const
    {
        Array result = std::move(array);
        auto kept = result.begin();
        for (auto element = result.begin(); element != result.end(); ++element)
            if (std::invoke(predicate, std::as_const(*element))) {
                if (kept != element)
                    *kept = std::move(*element);
                ++kept;
            }
        result.erase(kept, result.end());
        return result;
    }
};

struct StripNulls {
    Array operator()(const Array& array) const { return withoutNulls(array); }
    Array operator()(Array&& array) const { return withoutNulls(std::move(array)); }
};

} // namespace detail

/// The list without its null markers, the other elements in order: `stripNulls(values)`, `values |
/// stripNulls`. Nested containers stay as they are; `safeArray` looks into them.
///
/// @snippet Tests/Foundation/ArraysTests.cpp Working with lists
///
/// Linear; an rvalue subject is changed in place. Safe to use from several threads.
inline constexpr auto stripNulls = pipeable<Array>(detail::StripNulls{});

/// The first element for which the predicate holds, or nothing: `values | findFirstWithBlock(isText)`.
///
/// Later elements are not asked. A null marker that is found is a value like any other: the result holds it.
/// What the predicate throws passes through.
///
/// @snippet Tests/Foundation/ArraysTests.cpp Working with lists
///
/// Linear; copies one element. Safe to use from several threads when the predicate is.
inline constexpr auto findFirstWithBlock = pipeable<const Array&>(detail::FindFirstWithBlock{});

/// The elements for which the predicate holds, in order. Each is asked once, null markers included. What the
/// predicate throws passes through.
///
/// @snippet Tests/Foundation/ArraysTests.cpp Working with lists
///
/// Linear; an rvalue subject is changed in place. Safe to use from several threads when the predicate is.
inline constexpr auto filterWithBlock = pipeable<Array>(detail::FilterWithBlock{});

} // namespace orrenby
