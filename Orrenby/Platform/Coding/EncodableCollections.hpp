#pragma once

/// @file
/// How values that hold others are encoded. Not in the umbrella header: part of Encodable.hpp.

#include "Orrenby/Platform/Coding/Encoder.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <type_traits>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Writes a list of all that the range holds.
template <class Range> void encodeList(const Range& range, const EncodingPlace& place)
{
    using Element = std::remove_cvref_t<typename Range::value_type>;
    place.open('[');
    CodingStep step{place.path, {}, 0};
    const auto inside = place.inside(&step);
    for (auto&& element : range) {
        if (step.index > 0)
            place.text().append(',');
        encodeAt<Element>(element, inside);
        ++step.index;
    }
    place.text().append(']');
}

/// Writes the key of a map's member, which no strategy changes. Not valid UTF-8 is an error.
ORRENBY_EXPORT void encodeMapKey(std::string_view key, const EncodingPlace& object, bool isFirst);
ORRENBY_EXPORT void encodeMapKey(std::int64_t key, const EncodingPlace& object, bool isFirst);

template <class Pointer> void encodeOrNull(const Pointer& value, const EncodingPlace& place)
{
    if (value)
        encodeAt<std::remove_cvref_t<decltype(*value)>>(*value, place);
    else
        place.text().append("null");
}

template <class T>
concept EncodedSet = StandardSet<T> && !requires
{
    typename T::traits_type;
};

} // namespace detail

template <class T> struct Encodable<std::optional<T>> {
    static void write(const std::optional<T>& value, const detail::EncodingPlace& place)
    {
        detail::encodeOrNull(value, place);
    }
};

template <class T, class Deleter> struct Encodable<std::unique_ptr<T, Deleter>> {
    static void write(const std::unique_ptr<T, Deleter>& value, const detail::EncodingPlace& place)
    {
        detail::encodeOrNull(value, place);
    }
};

template <class T> struct Encodable<std::shared_ptr<T>> {
    static void write(const std::shared_ptr<T>& value, const detail::EncodingPlace& place)
    {
        detail::encodeOrNull(value, place);
    }
};

template <class T, class Allocator>
    requires(!std::is_same_v<T, std::byte>)
struct Encodable<std::vector<T, Allocator>> {
    static void write(const std::vector<T, Allocator>& value, const detail::EncodingPlace& place)
    {
        detail::encodeList(value, place);
    }
};

template <class T, std::size_t Count> struct Encodable<std::array<T, Count>> {
    static void write(const std::array<T, Count>& value, const detail::EncodingPlace& place)
    {
        detail::encodeList(value, place);
    }
};

template <detail::EncodedSet T> struct Encodable<T> {
    static void write(const T& value, const detail::EncodingPlace& place)
    {
        detail::encodeList(value, place);
    }
};

template <detail::StandardMap T> struct Encodable<T> {
    static void write(const T& value, const detail::EncodingPlace& place)
    {
        using Key = typename T::key_type;
        place.open('{');
        bool isFirst = true;
        for (const auto& [key, member] : value) {
            if constexpr (std::is_integral_v<Key>) {
                detail::encodeMapKey(static_cast<std::int64_t>(key), place, isFirst);
                const CodingKey text = CodingKey::integer(static_cast<std::int64_t>(key));
                const detail::CodingStep step{place.path, text.stringValue(), -1};
                detail::encodeAt(member, place.inside(&step));
            } else {
                static_assert(std::convertible_to<const Key&, std::string_view>,
                    "the keys of an encoded map are texts or integers");
                detail::encodeMapKey(std::string_view(key), place, isFirst);
                const detail::CodingStep step{place.path, key, -1};
                detail::encodeAt(member, place.inside(&step));
            }
            isFirst = false;
        }
        place.text().append('}');
    }
};

} // namespace orrenby
