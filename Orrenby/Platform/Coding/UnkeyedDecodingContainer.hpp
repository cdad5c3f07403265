#pragma once

/// @file
/// The elements of a list that is being decoded.

#include "Orrenby/Platform/Coding/Decoder.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// The elements of a list, one after the other.
///
/// Each operation that gives an element goes on to the next; one that throws stays where it is. Past the last
/// element it throws `valueNotFound`.
///
/// @snippet Tests/Platform/Coding/UnkeyedDecodingContainerTests.cpp Decoding a list by hand
///
/// A handle that is good as long as its decoder. Not synchronised.
class ORRENBY_EXPORT UnkeyedDecodingContainer {
public:
    /// Throws unless the place holds a list.
    explicit UnkeyedDecodingContainer(const detail::DecodingPlace& place);

    /// The way to this list from the root.
    std::vector<CodingKey> codingPath() const { return detail::codingPath(m_place.path); }

    /// All elements, those already decoded included. Linear at the first call.
    std::size_t count() const;

    /// Whether all elements are passed.
    bool isAtEnd() const noexcept { return m_next >= m_place.document().endOf(m_place.node); }

    /// How many elements are passed.
    std::size_t currentIndex() const noexcept { return static_cast<std::size_t>(m_index); }

    /// The kind of the next element; null past the last one.
    JSONKind kind() const noexcept { return isAtEnd() ? JSONKind::Null : m_place.document().kind(m_next); }

    /// Whether the next element is null, which is then passed. Throws past the last one.
    bool decodeNil();

    /// The next element as a `T`, which is then passed. Throws past the last one; the element is not passed
    /// when decoding it throws.
    template <class T> T decode()
    {
        requireElement<T>();
        const auto step = currentStep();
        T value = detail::decodeAt<T>({m_place.session, m_next, &step});
        advance();
        return value;
    }

    /// Nothing for null, and past the last element.
    template <class T> std::optional<T> decodeIfPresent()
    {
        if (isAtEnd() || decodeNil())
            return std::nullopt;
        return decode<T>();
    }

    /// The next element as an object, as a list, which is then passed. Throws where it is none.
    template <CodingKeyType Nested = CodingKey> KeyedDecodingContainer<Nested> nestedContainer();
    UnkeyedDecodingContainer nestedUnkeyedContainer();

    /// A decoder for the next element.
    Decoder superDecoder();

    /// The path of the list and its place in the text, for an error about it.
    DecodingError::Context errorContext(std::string_view debugDescription) const
    {
        return m_place.context(debugDescription);
    }

private:
    detail::CodingStep currentStep() const noexcept { return {m_place.path, {}, m_index}; }
    template <class T> void requireElement() const
    {
        if (isAtEnd())
            throwAtEnd(typeName<T>());
    }
    [[noreturn]] void throwAtEnd(std::string_view typeName) const;
    detail::DecodingPlace nextPlace(std::string_view typeName) const;
    void advance() noexcept
    {
        m_next = m_place.document().next(m_next);
        ++m_index;
    }

    detail::DecodingPlace m_place;
    JSONDocument::Node m_next;
    std::int64_t m_index = 0;
    mutable std::optional<std::size_t> m_count;
};

} // namespace orrenby
