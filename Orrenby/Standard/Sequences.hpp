#pragma once

/// @file
/// What sequences lack: counting, separating, casting, projecting, and dropping what is absent.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Standard/SequenceOperation.hpp"
#include <concepts>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// The elements of a sequence for which a predicate held, and those for which it did not.
template <class Element> struct SeparatedElements {
    std::vector<Element> matching;    ///< Those for which it held, in their order.
    std::vector<Element> notMatching; ///< The others, in their order.

    /// `matching [1, 3], notMatching [2]`
    std::string description() const
    {
        return "matching " + describe(matching) + ", notMatching " + describe(notMatching);
    }

    friend bool operator==(const SeparatedElements&, const SeparatedElements&) = default;
};

namespace detail {

template <class Path, class Root>
concept HasKeyPathTo = requires(const Path& path, const Root& root)
{
    path.get(root);
};
template <class Path, class Element>
concept ProjectsPointee = requires(const Path& path, const Element& element)
{
    path.get(*element);
};
template <class Path, class Element>
concept Projects
    = HasKeyPathTo<Path, Element> || ProjectsPointee<Path, Element> || std::invocable<Path&, const Element&>;

/// Cannot be followed from an empty reference.
template <class Path, class Element>
concept LeadsFromPointee
    = isRef<Element> && !HasKeyPathTo<Path,
          Element> && (std::is_member_pointer_v<std::remove_cv_t<Path>> || !std::invocable<Path&, const Element&>);

/// Through a key path, to an element or to the object it refers to; else as `std::invoke` does.
template <class Path, class Element> decltype(auto) projected(Path& path, const Element& element)
{
    if constexpr (HasKeyPathTo<Path, Element>)
        return path.get(element);
    else if constexpr (std::invocable<Path&, const Element&>)
        return std::invoke(path, element);
    else
        return path.get(*element);
}

template <class Path, class Element>
using Projected = std::remove_cvref_t<decltype(projected(std::declval<Path&>(), std::declval<Element&>()))>;

template <class T> struct PresentValue {
    using type = T;
};
template <class T> struct PresentValue<std::optional<T>> {
    using type = T;
};

/// A value that is no `T` is dropped.
template <class T, class Element> std::optional<T> castElement(const Element& element)
{
    if constexpr (std::is_same_v<Element, T>)
        return element;
    else if constexpr (std::is_same_v<Element, Any>)
        return element.template cast<T>();
    else if constexpr (isRef<Element> && isRef<T>) {
        auto object = std::dynamic_pointer_cast<typename T::element_type>(element);
        return object != nullptr ? std::optional<T>(std::move(object)) : std::nullopt;
    } else if constexpr (std::is_pointer_v<Element> && std::is_pointer_v<T>) {
        const auto object = dynamic_cast<T>(element);
        return object != nullptr ? std::optional<T>(object) : std::nullopt;
    } else if constexpr (!std::is_same_v<typename PresentValue<Element>::type, Element>)
        return element.has_value() ? castElement<T>(*element) : std::nullopt;
    else
        return Any(element).cast<T>();
}

inline constexpr auto countOperation = [](auto&& sequence, auto& predicate) {
    std::int64_t result = 0;
    for (auto&& element : sequence)
        result += std::invoke(predicate, element) ? 1 : 0;
    return result;
};

inline constexpr auto separateOperation = [](auto&& sequence, auto& predicate) {
    SeparatedElements<SequenceElement<decltype(sequence)>> result;
    for (auto&& element : sequence) {
        auto& part = std::invoke(predicate, std::as_const(element)) ? result.matching : result.notMatching;
        part.push_back(std::forward<decltype(element)>(element));
    }
    return result;
};

template <class T>
inline constexpr auto compactCastOperation = [](auto&& sequence) {
    std::vector<T> result;
    for (auto&& element : sequence)
        if (auto cast = detail::castElement<T>(element))
            result.push_back(*std::move(cast));
    return result;
};

inline constexpr auto compactOperation = [](auto&& sequence) {
    std::vector<typename SequenceElement<decltype(sequence)>::value_type> result;
    for (auto&& element : sequence)
        if (element.has_value())
            result.push_back(*std::forward<decltype(element)>(element));
    return result;
};

/// What a list of values of any kind cannot hold as an element, because it says that there is none.
template <class T>
concept MayBeNothing = AnyOptional<T> || AnyReference<T>;

inline constexpr auto mapOperation = [](auto&& sequence, auto& path) {
    using Element = SequenceElement<decltype(sequence)>;
    using Result = detail::Projected<decltype(path), Element>;
    if constexpr (std::is_same_v<Element, Any> && MayBeNothing<Result>) {
        std::vector<Any> result;
        for (auto&& element : sequence)
            if (auto value = detail::projected(path, element)) {
                if constexpr (AnyOptional<Result>)
                    result.push_back(*std::move(value));
                else
                    result.push_back(std::move(value));
            }
        return result;
    } else {
        std::vector<Result> result;
        for (auto&& element : sequence)
            result.push_back(detail::projected(path, element));
        return result;
    }
};

inline constexpr auto flatMapOperation = [](auto&& sequence, auto& path) {
    using Inner = detail::Projected<decltype(path), SequenceElement<decltype(sequence)>>;
    std::vector<SequenceElement<Inner>> result;
    for (auto&& element : sequence)
        for (auto&& inner : detail::projected(path, element))
            result.push_back(inner);
    return result;
};

inline constexpr auto compactMapOperation = [](auto&& sequence, auto& path) {
    using Element = SequenceElement<decltype(sequence)>;
    using Path = std::remove_reference_t<decltype(path)>;
    const auto keep = [](auto& result, auto&& value) {
        if constexpr (requires { value.has_value(); }) {
            if (value.has_value())
                result.push_back(*std::forward<decltype(value)>(value));
        } else if constexpr (isRef<std::remove_cvref_t<decltype(value)>>) {
            if (value != nullptr)
                result.push_back(std::forward<decltype(value)>(value));
        } else
            result.push_back(std::forward<decltype(value)>(value));
    };
    using Wrapped = typename detail::PresentValue<Element>::type;
    constexpr bool unwraps = !std::is_same_v<Wrapped, Element> && detail::Projects<Path, Wrapped>;
    using Root = std::conditional_t<unwraps, Wrapped, Element>;
    std::vector<typename detail::PresentValue<detail::Projected<Path, Root>>::type> result;
    for (auto&& element : sequence) {
        if constexpr (LeadsFromPointee<Path, Element>)
            if (element == nullptr)
                continue;
        if constexpr (!unwraps)
            keep(result, detail::projected(path, element));
        else if (element.has_value())
            keep(result, detail::projected(path, *element));
    }
    return result;
};

inline constexpr auto removeEmptyOperation = [](auto&& sequence) {
    using Collection = typename detail::PresentValue<SequenceElement<decltype(sequence)>>::type;
    std::vector<Collection> result;
    for (auto&& element : sequence) {
        if constexpr (std::is_same_v<Collection, SequenceElement<decltype(sequence)>>) {
            if (!std::empty(element))
                result.push_back(element);
        } else if (element.has_value() && !std::empty(*element))
            result.push_back(*element);
    }
    return result;
};

} // namespace detail

/// How many elements the predicate holds for. What it throws passes through, as with all that follow.
///
/// @snippet Tests/Standard/SequencesTests.cpp Working with sequences
///
/// Linear. Not synchronised.
template <Sequence S, class F> auto count(S&& sequence, F&& predicate)
{
    return detail::countOperation(sequence, predicate);
}
template <class F> [[nodiscard]] auto count(F&& predicate)
{
    return detail::boundOperation(detail::countOperation, std::forward<F>(predicate));
}

/// Both parts keep the order of the sequence.
template <Sequence S, class F> auto separate(S&& sequence, F&& predicate)
{
    return detail::separateOperation(sequence, predicate);
}
template <class F> [[nodiscard]] auto separate(F&& predicate)
{
    return detail::boundOperation(detail::separateOperation, std::forward<F>(predicate));
}

/// The elements that are a `T`, in order: references to objects of that class (`compactCast<Ref<Cat>>`),
/// `Any` values and others by the rules of `Any::cast`.
template <class T, Sequence S> auto compactCast(S&& sequence)
{
    return detail::compactCastOperation<T>(sequence);
}
template <class T> auto compactCast() { return detail::boundOperation(detail::compactCastOperation<T>); }

/// The present values of a sequence of optionals.
template <Sequence S> auto compact(S&& sequence) { return detail::compactOperation(sequence); }
inline auto compact() { return detail::boundOperation(detail::compactOperation); }

/// What a key path, a member or a callable gives for each element.
///
/// Over an `Array` it gives an `Array` without the elements for which a callable gives nothing (an empty
/// optional or reference). Of any other sequence every element is kept: `compactMap` drops what is absent.
///
/// @snippet Tests/Standard/SequencesTests.cpp Mapping values of any kind
template <Sequence S, class F> auto map(S&& sequence, F&& path)
{
    return detail::mapOperation(sequence, path);
}
template <class F> [[nodiscard]] auto map(F&& path)
{
    return detail::boundOperation(detail::mapOperation, std::forward<F>(path));
}

/// As `map`, but what is given are sequences: their elements follow one another.
template <Sequence S, class F> auto flatMap(S&& sequence, F&& path)
{
    return detail::flatMapOperation(sequence, path);
}
template <class F> [[nodiscard]] auto flatMap(F&& path)
{
    return detail::boundOperation(detail::flatMapOperation, std::forward<F>(path));
}

/// As `map`, but absent projections are dropped: empty optionals and empty references. Where the elements are
/// optionals that the path does not lead from, or references, it leads from what they hold, and absent
/// elements are dropped as well. A callable that takes references itself is given the empty ones, too.
template <Sequence S, class F> auto compactMap(S&& sequence, F&& path)
{
    return detail::compactMapOperation(sequence, path);
}
template <class F> [[nodiscard]] auto compactMap(F&& path)
{
    return detail::boundOperation(detail::compactMapOperation, std::forward<F>(path));
}

/// The present and non-empty collections of a sequence of optional collections.
template <Sequence S> auto removeEmpty(S&& sequence) { return detail::removeEmptyOperation(sequence); }
inline auto removeEmpty() { return detail::boundOperation(detail::removeEmptyOperation); }

} // namespace orrenby

template <class Element> struct std::hash<orrenby::SeparatedElements<Element>> {
    std::size_t operator()(const orrenby::SeparatedElements<Element>& parts) const
    {
        constexpr std::size_t factor = 0x9E3779B97F4A7C15U;
        auto result = parts.matching.size();
        for (const Element& element : parts.matching)
            result = result * factor + std::hash<Element>{}(element);
        for (const Element& element : parts.notMatching)
            result = result * factor + std::hash<Element>{}(element);
        return result;
    }
};
