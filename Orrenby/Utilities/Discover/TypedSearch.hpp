#pragma once

/// @file
/// Searching a list of references for those of one class: what flows and workers share.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include <concepts>
#include <memory>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

template <class T> using ConstRef = const Ref<T>&;

/// A callable on an object: it takes the object or, to keep it, the reference to it.
template <class Callable, class T>
concept CallableOn = std::invocable<Callable&, T&> || std::invocable<Callable&, ConstRef<T>>;

/// A callable on an object that answers yes or no.
template <class Callable, class T>
concept PredicateOn = std::predicate<Callable&, T&> || std::predicate<Callable&, ConstRef<T>>;

/// `object` is not empty.
template <class T, CallableOn<T> Callable> decltype(auto) callOn(const Ref<T>& object, Callable& callable)
{
    if constexpr (std::invocable<Callable&, T&>)
        return callable(*object);
    else
        return callable(object);
}

/// The first element that is a `T`, a class or an interface; empty if none is.
template <class T, class Element> Ref<T> firstOfType(const std::vector<Ref<Element>>& elements)
{
    for (const auto& element : elements)
        if (auto found = std::dynamic_pointer_cast<T>(element))
            return found;
    return {};
}

/// All elements that are a `T`, in list order.
template <class T, class Element> std::vector<Ref<T>> allOfType(const std::vector<Ref<Element>>& elements)
{
    std::vector<Ref<T>> result;
    for (const auto& element : elements)
        if (auto found = std::dynamic_pointer_cast<T>(element))
            result.push_back(std::move(found));
    return result;
}

// What is found below is held until the call is over, even if the callable takes it out of its list.

template <class T, class Element, CallableOn<T> Callable>
void withFirstOfType(const std::vector<Ref<Element>>& elements, Callable& perform)
{
    if (const auto found = firstOfType<T>(elements))
        callOn(found, perform);
}

template <class T, class Element, CallableOn<T> Callable>
void withAllOfType(const std::vector<Ref<Element>>& elements, Callable& perform)
{
    for (const auto& found : allOfType<T>(elements))
        callOn(found, perform);
}

} // namespace orrenby::detail
