#pragma once

/// @file
/// The names of fields at compile time. Not in the umbrella header: part of AggregateFields.hpp.

#include "Orrenby/Platform/Export.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A name that the language forbids without a trailing underscore.
constexpr bool isKeyword(std::string_view name)
{
    constexpr std::string_view keywords[] = {"alignas", "alignof", "and", "and_eq", "asm", "assert", "auto",
        "bitand", "bitor", "bool", "break", "case", "catch", "char", "char16_t", "char32_t", "char8_t",
        "class", "co_await", "co_return", "co_yield", "compl", "concept", "const", "const_cast", "consteval",
        "constexpr", "constinit", "continue", "decltype", "default", "delete", "do", "double", "dynamic_cast",
        "else", "enum", "explicit", "export", "extern", "false", "float", "for", "friend", "goto", "if",
        "inline", "int", "long", "mutable", "namespace", "new", "noexcept", "not", "not_eq", "nullptr",
        "operator", "or", "or_eq", "private", "protected", "public", "register", "reinterpret_cast",
        "requires", "return", "short", "signed", "sizeof", "static", "static_assert", "static_cast", "struct",
        "switch", "template", "this", "thread_local", "throw", "true", "try", "typedef", "typeid", "typename",
        "union", "unsigned", "using", "virtual", "void", "volatile", "wchar_t", "while", "xor", "xor_eq"};
    for (const std::string_view keyword : keywords)
        if (keyword == name)
            return true;
    return false;
}

/// `class_` as `class`; every other name as it is.
constexpr std::string_view withoutKeywordMark(std::string_view name)
{
    const bool isMarked = name.ends_with('_') && isKeyword(name.substr(0, name.size() - 1));
    return isMarked ? name.substr(0, name.size() - 1) : name;
}

/// A pointer that can be a template argument together with its type.
template <class T> struct FieldPointer {
    const T* address;
};
template <class T> FieldPointer(const T*) -> FieldPointer<T>;

/// The compiler's text for this function names the field: `… value.Type::name)}…` or `… value.name}…`.
template <FieldPointer Pointer> consteval std::string_view compilerText() { return __PRETTY_FUNCTION__; }

template <FieldPointer Pointer> consteval std::string_view fieldNameAt()
{
    constexpr auto text = compilerText<Pointer>();
    constexpr std::string_view holder = "value.";
    constexpr auto start = text.rfind(holder) + holder.size();
    // g++ has parentheses around the address, and `{anonymous}` among the scopes; clang has neither.
    constexpr auto parenthesis = text.find(")}", start);
    constexpr auto end = parenthesis != std::string_view::npos ? parenthesis : text.find('}', start);
    static_assert(
        end != std::string_view::npos, "the compiler writes the addresses of fields in an unknown form");
    constexpr auto path = text.substr(start, end - start);
    constexpr auto scope = path.rfind(':');
    return withoutKeywordMark(scope == std::string_view::npos ? path : path.substr(scope + 1));
}

} // namespace orrenby::inline ORRENBY_ABI::detail
