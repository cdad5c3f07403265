#pragma once

/// @file
/// How values that hold others are decoded. Not in the umbrella header: part of Decodable.hpp.

#include "Orrenby/Platform/Coding/Decoder.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Walks the elements of a list.
class ListWalk {
public:
    /// Throws unless the decoder holds a list.
    ListWalk(const Decoder& decoder, std::string (*typeName)())
        : m_place(decoder.place())
        , m_node(m_place.node + 1)
        , m_step{m_place.path, {}, 0}
    {
        if (m_place.kind() != JSONKind::List)
            m_place.throwMismatch(typeName());
        m_end = m_place.document().endOf(m_place.node);
    }

    std::size_t count() const noexcept { return m_place.document().count(m_place.node); }
    bool isAtEnd() const noexcept { return m_node == m_end; }
    template <class T> T next()
    {
        T value = Decodable<T>::decode(Decoder({m_place.session, m_node, &m_step}));
        m_node = m_place.document().next(m_node);
        ++m_step.index;
        return value;
    }

private:
    DecodingPlace m_place;
    JSONDocument::Node m_node;
    JSONDocument::Node m_end = 0;
    CodingStep m_step;
};

/// The integer that a key is, in the form `-12`.
ORRENBY_EXPORT std::optional<std::int64_t> integerFromKey(std::string_view key) noexcept;
[[noreturn]] ORRENBY_EXPORT void throwBadKey(const DecodingPlace& place, std::string_view typeName);
[[noreturn]] ORRENBY_EXPORT void throwWrongCount(
    const Decoder& decoder, std::size_t wanted, std::size_t found);

/// The key of a map, from the key of an object's member.
template <class Key> Key mapKey(const DecodingPlace& place, std::string_view key)
{
    if constexpr (std::constructible_from<Key, std::string_view>)
        return Key(key);
    else {
        static_assert(std::is_integral_v<Key>, "the keys of a decoded map are texts or integers");
        const auto value = integerFromKey(key);
        if (!value || !std::in_range<Key>(*value))
            throwBadKey(place, typeName<Key>());
        return static_cast<Key>(*value);
    }
}

template <class T>
concept CodedSet = StandardSet<T> && OtherThan<T, std::string> && !requires
{
    typename T::traits_type;
};

} // namespace detail

template <class T> struct Decodable<std::optional<T>> {
    static constexpr auto form = detail::DecodedForm::Nullable;
    static std::optional<T> decode(const Decoder& decoder)
    {
        if (decoder.kind() == JSONKind::Null)
            return std::nullopt;
        return Decodable<T>::decode(decoder);
    }
};

template <class T> struct Decodable<std::unique_ptr<T>> {
    static constexpr auto form = detail::DecodedForm::Nullable;
    static std::unique_ptr<T> decode(const Decoder& decoder)
    {
        return decoder.kind() == JSONKind::Null ? nullptr
                                                : std::make_unique<T>(Decodable<T>::decode(decoder));
    }
};

template <class T> struct Decodable<std::shared_ptr<T>> {
    static constexpr auto form = detail::DecodedForm::Nullable;
    static std::shared_ptr<T> decode(const Decoder& decoder)
    {
        using Value = std::remove_const_t<T>;
        return decoder.kind() == JSONKind::Null ? nullptr
                                                : std::make_shared<T>(Decodable<Value>::decode(decoder));
    }
};

template <class T, class Allocator>
    requires(!std::is_same_v<T, std::byte>)
struct Decodable<std::vector<T, Allocator>> {
    static constexpr auto form = detail::DecodedForm::List;
    static std::vector<T, Allocator> decode(const Decoder& decoder)
    {
        detail::ListWalk list(decoder, typeName<std::vector<T>>);
        std::vector<T, Allocator> result;
        result.reserve(list.count());
        while (!list.isAtEnd())
            result.push_back(list.next<T>());
        return result;
    }
};

template <class T, std::size_t Count> struct Decodable<std::array<T, Count>> {
    static constexpr auto form = detail::DecodedForm::Array;
    static std::array<T, Count> decode(const Decoder& decoder)
    {
        detail::ListWalk list(decoder, typeName<std::vector<T>>);
        if (list.count() != Count)
            detail::throwWrongCount(decoder, Count, list.count());
        return [&]<std::size_t... Index>(std::index_sequence<Index...>)
        {
            return std::array<T, Count>{(static_cast<void>(Index), list.next<T>())...};
        }
        (std::make_index_sequence<Count>());
    }
};

template <detail::CodedSet T> struct Decodable<T> {
    static constexpr auto form = detail::DecodedForm::List;
    static T decode(const Decoder& decoder)
    {
        detail::ListWalk list(decoder, typeName<std::vector<typename T::key_type>>);
        T result;
        while (!list.isAtEnd())
            result.insert(list.next<typename T::key_type>());
        return result;
    }
};

template <detail::StandardMap T> struct Decodable<T> {
    static constexpr auto form = detail::DecodedForm::Map;
    static T decode(const Decoder& decoder)
    {
        const auto& place = decoder.place();
        if (place.kind() != JSONKind::Object)
            place.throwMismatch(typeName<T>());
        const auto& document = place.document();
        const auto end = document.endOf(place.node);
        T result;
        for (auto node = JSONDocument::firstIn(place.node); node < end; node = document.next(node)) {
            const detail::CodingStep step{place.path, document.key(node), -1};
            const detail::DecodingPlace member{place.session, node, &step};
            result.insert_or_assign(detail::mapKey<typename T::key_type>(member, document.key(node)),
                Decodable<typename T::mapped_type>::decode(Decoder(member)));
        }
        return result;
    }
};

} // namespace orrenby
