#pragma once

/// @file
/// The printed names of types.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include <concepts>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

template <class T> class Object;
class StaticText;

/// The printed name of a type that is known only as run-time type information.
///
/// Namespaces and enclosing scopes are left out, template arguments stay: `app::Loader::Reason` gives
/// "Reason". `Object<T>` prints as `T`. A name that a type declares for itself is not known here; the typed
/// forms below see it. One demangling per call.
ORRENBY_EXPORT std::string typeName(const std::type_info& type);

/// The printed name of `T`: "Int" for signed 64-bit integers, "Int32", "UInt8" and so on for the other
/// widths, "String" for every kind of text, "Double", "Float", "Bool", "Data", "Array<…>", "Dictionary<…>",
/// "Set<…>", "Optional<…>".
///
/// A type of one's own declares `static constexpr std::string_view printedTypeName = "…";` (which its
/// subclasses inherit) or specialises `TypeNameOf`; without that it is named as by the overload for run-time
/// type information. Handles print as what they refer to.
///
/// @snippet Tests/Platform/Objects/TypeNameTests.cpp Naming a type
///
/// The text is made once per type. Safe to use from several threads.
template <class T> std::string typeName();

/// Customisation point: `static std::string text()` gives the printed name of `T`.
template <class T> struct TypeNameOf;

namespace detail {

template <class T>
concept KnowsItsTypeName = std::convertible_to<decltype(std::declval<const T&>().typeName()), std::string>;
template <class T>
concept NamesItself = std::convertible_to<decltype(T::printedTypeName), std::string_view>;
template <class T>
concept StandardMap = requires
{
    typename T::allocator_type;
    typename T::key_type;
    typename T::mapped_type;
};
template <class T>
concept StandardSet = !StandardMap<T> && requires
{
    typename T::allocator_type;
    typename T::key_type;
};

/// "Int32", "UInt8", … for a width in bytes.
ORRENBY_EXPORT std::string integerTypeName(std::size_t width, bool isSigned);

/// The name of a class template without its arguments.
ORRENBY_EXPORT std::string templateName(const std::type_info& type);

/// `own` unless the object's class is another one than the class it is seen as.
ORRENBY_EXPORT std::string dynamicTypeName(
    const std::type_info& seenAs, const std::type_info& actual, std::string own);

template <class... T> std::string typeNames()
{
    std::string result;
    ((result += (result.empty() ? "" : ", ") + typeName<T>()), ...);
    return result;
}

template <class T>
constexpr bool isTextType = OneOf<T, std::string, std::string_view, StaticText> || PointerToText<T>;

} // namespace detail

template <class T> struct TypeNameOf {
    /// The name, made anew at each call.
    static std::string text()
    {
        if constexpr (detail::NamesItself<T>)
            return std::string(T::printedTypeName);
        else if constexpr (detail::isTextType<T>)
            return "String";
        else if constexpr (std::is_same_v<T, bool>)
            return "Bool";
        else if constexpr (detail::Character<T>)
            return "Character";
        else if constexpr (std::is_integral_v<T>)
            return detail::integerTypeName(sizeof(T), std::is_signed_v<T>);
        else
            return typeName(typeid(T));
    }
};

template <template <class...> class Template, class... Arguments> struct TypeNameOf<Template<Arguments...>> {
    /// The type itself.
    using Type = Template<Arguments...>;

    /// The name of the template with those of its arguments, as `typeName` forms it.
    static std::string text()
    {
        if constexpr (detail::NamesItself<Type>)
            return std::string(Type::printedTypeName);
        else if constexpr (detail::isTextType<Type>)
            return "String";
        else if constexpr (detail::StandardMap<Type>)
            return "Dictionary<" + detail::typeNames<typename Type::key_type, typename Type::mapped_type>()
                + ">";
        else if constexpr (detail::StandardSet<Type>)
            return "Set<" + typeName<typename Type::key_type>() + ">";
        else
            return detail::templateName(typeid(Type)) + "<" + detail::typeNames<Arguments...>() + ">";
    }
};

template <class T, class Allocator> struct TypeNameOf<std::vector<T, Allocator>> {
    static std::string text() { return "Array<" + typeName<T>() + ">"; }
};
template <class Allocator> struct TypeNameOf<std::vector<std::byte, Allocator>> {
    static std::string text() { return "Data"; }
};
template <class T> struct TypeNameOf<std::optional<T>> {
    static std::string text() { return "Optional<" + typeName<T>() + ">"; }
};
template <class... T> struct TypeNameOf<std::tuple<T...>> {
    static std::string text() { return "(" + detail::typeNames<T...>() + ")"; }
};
template <class A, class B> struct TypeNameOf<std::pair<A, B>> : TypeNameOf<std::tuple<A, B>> {};
template <class T> struct TypeNameOf<std::shared_ptr<T>> : TypeNameOf<std::remove_cv_t<T>> {};
template <class T> struct TypeNameOf<std::weak_ptr<T>> : TypeNameOf<std::remove_cv_t<T>> {};
template <class T, class Deleter>
struct TypeNameOf<std::unique_ptr<T, Deleter>> : TypeNameOf<std::remove_cv_t<T>> {};
template <class T> struct TypeNameOf<Object<T>> : TypeNameOf<T> {};

template <class T> std::string typeName()
{
    // Never destroyed, so that names can still be printed while the process exits.
    static const std::string& text = *new std::string(TypeNameOf<std::remove_cvref_t<T>>::text());
    return text;
}

/// The printed name of what `value` is at run time: the most derived class of a polymorphic object, what a
/// handle refers to, the content of a value that answers `typeName()` itself.
template <class T> std::string typeName(const T& value)
{
    if constexpr (detail::KnowsItsTypeName<T>)
        return value.typeName();
    else if constexpr (requires {
                           *value;
                           value.get();
                           static_cast<bool>(value);
                       })
        return value ? typeName(*value) : typeName<T>();
    else if constexpr (std::is_polymorphic_v<T>)
        return detail::dynamicTypeName(typeid(T), typeid(value), typeName<T>());
    else
        return typeName<T>();
}

} // namespace orrenby
