#pragma once

/// @file
/// The steps of typed access to dictionaries. Not in the umbrella header: part of Dictionary+JSON.hpp.

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include <concepts>
#include <cstddef>
#include <exception>
#include <functional>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A type that can be asked for: a plain value that owns what it shows. An `Any` never holds an optional, so
/// that asking for one would only ever mismatch: `getOptional` is meant.
template <class T>
concept JSONRequestable
    = std::is_object_v<T> && std::same_as<T, std::remove_cv_t<T>> && std::movable<T> && !OptionalLike<
          T> && !std::is_pointer_v<T> && !std::same_as<T, std::string_view>;

template <class F, class T>
concept JSONTransform
    = std::invocable<F&, T> && AnyOptional<std::remove_cvref_t<std::invoke_result_t<F&, T>>>;

/// What is left of the optional that a transform gives.
template <class F, class T>
using JSONTransformed = typename std::remove_cvref_t<std::invoke_result_t<F&, T>>::value_type;

[[noreturn]] ORRENBY_EXPORT void throwTypeMismatch(std::string_view key, const Any& value);
[[noreturn]] ORRENBY_EXPORT void throwTransformFailed(std::string_view key, const Any& value);

/// Throws `JSONError::keyNotFound`.
ORRENBY_EXPORT const Any& requiredMember(const Dictionary& dictionary, std::string_view key);

template <class T> T castMember(std::string_view key, const Any& value)
{
    if (auto cast = value.cast<T>())
        return *std::move(cast);
    throwTypeMismatch(key, value);
}

template <class T, class F> auto transformMember(std::string_view key, const Any& value, F& transform)
{
    auto transformed = std::invoke(transform, castMember<T>(key, value));
    if (!transformed.has_value())
        throwTransformFailed(key, value);
    return *std::move(transformed);
}

template <class T, class F> auto transformElements(std::string_view key, const Any& value, F& transform)
{
    const auto* list = value.get<std::vector<Any>>();
    if (list == nullptr)
        throwTypeMismatch(key, value);
    std::vector<T> elements;
    elements.reserve(list->size());
    for (const Any& element : *list) {
        auto cast = element.cast<T>();
        if (!cast)
            throwTypeMismatch(key, value);
        elements.push_back(*std::move(cast));
    }
    std::vector<JSONTransformed<F, T>> result;
    result.reserve(elements.size());
    for (std::size_t index = 0; index < elements.size(); ++index) {
        auto transformed = std::invoke(transform, T(std::move(elements[index])));
        if (!transformed.has_value())
            throwTransformFailed(key, value);
        result.push_back(*std::move(transformed));
    }
    return result;
}

template <class F> auto outcomeOf(F&& function)
{
    using Outcome = Result<std::invoke_result_t<F&>, AnyError>;
    try {
        return Outcome::success(function());
    } catch (...) {
        return Outcome::failure(AnyError(std::current_exception()));
    }
}

} // namespace orrenby::inline ORRENBY_ABI::detail
