#pragma once

/// @file
/// The members of an object that is being decoded.

#include "Orrenby/Platform/Coding/Decoder.hpp"
#include "Orrenby/Platform/Coding/KeyArgument.hpp"
#include "Orrenby/Platform/Coding/UnkeyedDecodingContainer.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// The members of an object, by key.
///
/// Members may be asked for in any order and more than once; in the order of the document each is found at
/// once.
///
/// @snippet Tests/Platform/Coding/DecodableTests.cpp Decoding by hand
///
/// A handle that is good as long as its decoder. Not synchronised.
template <CodingKeyType Key = CodingKey> class KeyedDecodingContainer {
public:
    /// Text literals serve for `CodingKey`; other key types are taken as they are.
    using Argument = detail::KeyArgument<Key>;

    explicit KeyedDecodingContainer(const detail::DecodingPlace& place)
        : m_members(place)
    {}

    /// The way to this object from the root.
    std::vector<CodingKey> codingPath() const { return detail::codingPath(m_members.place().path); }

    /// In the order of the document. A text that makes no `Key` is left out.
    std::vector<Key> allKeys() const
    {
        std::vector<Key> keys;
        for (auto& text : m_members.keys()) {
            if constexpr (requires { Key::make(std::string_view(text)); }) {
                if (auto key = Key::make(std::string_view(text)))
                    keys.push_back(*std::move(key));
            } else
                keys.push_back(Key(std::move(text)));
        }
        return keys;
    }

    /// Whether there is such a member, be it null.
    bool contains(const Argument& key) const { return node(key) != JSONDocument::absent; }

    /// Whether the member is null. Throws `keyNotFound` where there is none.
    bool decodeNil(const Argument& key) const
    {
        return m_members.place().document().kind(existingNode(key)) == JSONKind::Null;
    }

    /// The member as a `T`. Throws `keyNotFound` where there is none.
    template <class T> T decode(const Argument& key) const { return decodeNode<T>(existingNode(key), key); }

    /// The member as a `T`; nothing where there is none or it is null.
    template <class T> std::optional<T> decodeIfPresent(const Argument& key) const
    {
        const auto member = node(key);
        if (member == JSONDocument::absent || m_members.place().document().kind(member) == JSONKind::Null)
            return std::nullopt;
        return decodeNode<T>(member, key);
    }

    /// The members of an object below this one. Throws `keyNotFound` where there is none, `typeMismatch` or
    /// `valueNotFound` where it is no object.
    template <CodingKeyType Nested = CodingKey>
    KeyedDecodingContainer<Nested> nestedContainer(const Argument& key) const
    {
        static_cast<void>(existingNode(key));
        return KeyedDecodingContainer<Nested>(m_members.keptPlace(detail::codingKeyText(key)));
    }

    /// The elements of a list below this object. Throws `keyNotFound` where there is none, `typeMismatch` or
    /// `valueNotFound` where it is no list.
    UnkeyedDecodingContainer nestedUnkeyedContainer(const Argument& key) const
    {
        static_cast<void>(existingNode(key));
        return UnkeyedDecodingContainer(m_members.keptPlace(detail::codingKeyText(key)));
    }

    /// A decoder for the member `super`, null where there is none.
    Decoder superDecoder() const { return Decoder(m_members.keptPlace("super")); }

    /// A decoder for the member. Throws `keyNotFound` where there is none.
    Decoder superDecoder(const Argument& key) const
    {
        static_cast<void>(existingNode(key));
        return Decoder(m_members.keptPlace(detail::codingKeyText(key)));
    }

    /// The path and the place in the text, for an error about this object, or about one of its members.
    DecodingError::Context errorContext(std::string_view debugDescription) const
    {
        return m_members.place().context(debugDescription);
    }
    DecodingError::Context errorContext(const Argument& key, std::string_view debugDescription) const
    {
        const auto text = detail::codingKeyText(key);
        const detail::CodingStep step{m_members.place().path, text, -1};
        return detail::DecodingPlace{m_members.place().session, m_members.find(text), &step}.context(
            debugDescription);
    }

private:
    JSONDocument::Node node(const Argument& key) const { return m_members.find(detail::codingKeyText(key)); }

    JSONDocument::Node existingNode(const Argument& key) const
    {
        const auto member = node(key);
        if (member == JSONDocument::absent)
            m_members.throwKeyNotFound(detail::codingKeyText(key));
        return member;
    }

    template <class T> T decodeNode(JSONDocument::Node member, const Argument& key) const
    {
        const detail::CodingStep step{m_members.place().path, detail::codingKeyText(key), -1};
        return detail::decodeAt<T>({m_members.place().session, member, &step});
    }

    detail::DecodingMembers m_members;
};

template <CodingKeyType Key> KeyedDecodingContainer<Key> Decoder::container() const
{
    return KeyedDecodingContainer<Key>(m_place);
}

template <CodingKeyType Nested> KeyedDecodingContainer<Nested> UnkeyedDecodingContainer::nestedContainer()
{
    const auto place = nextPlace("Dictionary<String, Any>");
    KeyedDecodingContainer<Nested> container(place);
    advance();
    return container;
}

} // namespace orrenby
