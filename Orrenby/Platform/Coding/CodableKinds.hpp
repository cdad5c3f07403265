#pragma once

/// @file
/// Which types are coded by which means. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/RawRepresentable.hpp"
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Described with Boost.Describe, whose functions are found beside the type without its headers.
template <class T>
concept DescribedClass = std::is_class_v<T> && requires(T** type)
{
    boost_public_member_descriptor_fn(type);
};

/// A struct of public fields that says nothing else about its form.
template <class T>
concept PlainAggregate = std::is_aggregate_v<T> && std::is_class_v<T> && !DescribedClass<
                             T> && !RawRepresentable<T> && !requires(T & value)
{
    value.begin();
};

} // namespace orrenby::inline ORRENBY_ABI::detail
