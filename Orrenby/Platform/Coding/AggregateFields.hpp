#pragma once

/// @file
/// The fields of public aggregates, found without any help from them. Not in the umbrella header: it costs
/// compile time; include it where it is used.

#include "Orrenby/Platform/Coding/FieldCount.hpp"
#include "Orrenby/Platform/Coding/FieldName.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <array>
#include <concepts>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Calls with all fields of the aggregate, in the order of their declaration. Up to 32. Bases have no fields;
/// C arrays, bit-fields and references do not work.
template <class T, class F> constexpr decltype(auto) withFields(T&& value, F&& function)
{
    constexpr auto count = fieldCount<std::remove_cvref_t<T>>;
    static_assert(count <= 32, "an aggregate whose fields are found has at most 32 of them");
    if constexpr (count == 0)
        return function();
    else if constexpr (count == 1) {
        auto&& [f1] = value;
        return function(f1);
    } else if constexpr (count == 2) {
        auto&& [f1, f2] = value;
        return function(f1, f2);
    } else if constexpr (count == 3) {
        auto&& [f1, f2, f3] = value;
        return function(f1, f2, f3);
    } else if constexpr (count == 4) {
        auto&& [f1, f2, f3, f4] = value;
        return function(f1, f2, f3, f4);
    } else if constexpr (count == 5) {
        auto&& [f1, f2, f3, f4, f5] = value;
        return function(f1, f2, f3, f4, f5);
    } else if constexpr (count == 6) {
        auto&& [f1, f2, f3, f4, f5, f6] = value;
        return function(f1, f2, f3, f4, f5, f6);
    } else if constexpr (count == 7) {
        auto&& [f1, f2, f3, f4, f5, f6, f7] = value;
        return function(f1, f2, f3, f4, f5, f6, f7);
    } else if constexpr (count == 8) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8] = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8);
    } else if constexpr (count == 9) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9] = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9);
    } else if constexpr (count == 10) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10] = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10);
    } else if constexpr (count == 11) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11] = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11);
    } else if constexpr (count == 12) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12] = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12);
    } else if constexpr (count == 13) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13] = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13);
    } else if constexpr (count == 14) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14] = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14);
    } else if constexpr (count == 15) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15] = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15);
    } else if constexpr (count == 16) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16] = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16);
    } else if constexpr (count == 17) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17] = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17);
    } else if constexpr (count == 18) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18] = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18);
    } else if constexpr (count == 19) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19] = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19);
    } else if constexpr (count == 20) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20]
            = value;
        return function(
            f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20);
    } else if constexpr (count == 21) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
            f21]
            = value;
        return function(
            f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21);
    } else if constexpr (count == 22) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
            f21, f22]
            = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
            f20, f21, f22);
    } else if constexpr (count == 23) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
            f21, f22, f23]
            = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
            f20, f21, f22, f23);
    } else if constexpr (count == 24) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
            f21, f22, f23, f24]
            = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
            f20, f21, f22, f23, f24);
    } else if constexpr (count == 25) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
            f21, f22, f23, f24, f25]
            = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
            f20, f21, f22, f23, f24, f25);
    } else if constexpr (count == 26) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
            f21, f22, f23, f24, f25, f26]
            = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
            f20, f21, f22, f23, f24, f25, f26);
    } else if constexpr (count == 27) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
            f21, f22, f23, f24, f25, f26, f27]
            = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
            f20, f21, f22, f23, f24, f25, f26, f27);
    } else if constexpr (count == 28) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
            f21, f22, f23, f24, f25, f26, f27, f28]
            = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
            f20, f21, f22, f23, f24, f25, f26, f27, f28);
    } else if constexpr (count == 29) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
            f21, f22, f23, f24, f25, f26, f27, f28, f29]
            = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
            f20, f21, f22, f23, f24, f25, f26, f27, f28, f29);
    } else if constexpr (count == 30) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
            f21, f22, f23, f24, f25, f26, f27, f28, f29, f30]
            = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
            f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30);
    } else if constexpr (count == 31) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
            f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31]
            = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
            f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31);
    } else if constexpr (count == 32) {
        auto&& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
            f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32]
            = value;
        return function(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
            f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32);
    }
}

#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wundefined-internal"
#pragma clang diagnostic ignored "-Wundefined-var-template"
#endif

/// Never defined: only the addresses of its fields are used, at compile time.
template <class T> struct FieldHolder {
    T value;
};
template <class T> extern const FieldHolder<T> fieldHolder;

template <class T> consteval auto fieldAddresses()
{
    return withFields(
        fieldHolder<T>.value, [](auto&... fields) constexpr { return std::make_tuple(&fields...); });
}
#ifdef __clang__
#pragma clang diagnostic pop
#endif

template <class T, std::size_t Index>
using FieldType
    = std::remove_cv_t<std::remove_pointer_t<std::tuple_element_t<Index, decltype(fieldAddresses<T>())>>>;

template <class T>
concept ListsItsCodingKeys = requires
{
    {
        T::codingKeys[0]
        } -> std::convertible_to<std::string_view>;
};

/// The names of the fields; a trailing underscore that only keeps a name from being a keyword is left out.
template <class T> inline constexpr auto fieldNames = []<std::size_t... Index>(std::index_sequence<Index...>)
{
    return std::array<std::string_view, sizeof...(Index)>{
        fieldNameAt<FieldPointer{std::get<Index>(fieldAddresses<T>())}>()...};
}
(std::make_index_sequence<fieldCount<T>>());

/// The keys of the fields: `codingKeys` where the aggregate lists them, else their names.
template <class T> constexpr std::string_view fieldKey(std::size_t index)
{
    if constexpr (ListsItsCodingKeys<T>) {
        static_assert(std::size(T::codingKeys) == fieldCount<T>, "codingKeys names each field, in order");
        return T::codingKeys[index];
    } else
        return fieldNames<T>[index];
}

} // namespace orrenby::inline ORRENBY_ABI::detail
