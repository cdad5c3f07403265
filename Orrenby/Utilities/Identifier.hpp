#pragma once

/// @file
/// Identifiers that know what they identify.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"
#include <concepts>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

template <class Value> class Identifier;
class Decoder;
template <class T> struct Decodable;
template <class T> struct Encodable;

namespace detail {

struct EncodingPlace;

template <class T>
concept HashesAndEquals = std::equality_comparable<T> && std::convertible_to<
    decltype(std::hash<T>{}(std::declval<const T&>())), std::size_t>;

template <class T>
concept IdentifyingInteger = std::is_integral_v<T> && OtherThan<T, bool> && !Character<T>;

/// A pointer to text, where the raw value takes one for a text of its own.
template <class T, class RawValue>
concept TextLiteralFor = PointerToText<T> && std::convertible_to<T, RawValue> && !std::is_pointer_v<RawValue>;

/// A single character, where the raw value is one.
template <class T, class RawValue>
concept CharacterLiteralFor = Character<T> && std::same_as<T, RawValue>;

/// An integer, where the raw value is one or takes one for its own.
template <class T, class RawValue>
concept IntegerLiteralFor = IdentifyingInteger<T> &&(
    IdentifyingInteger<RawValue> || (std::is_class_v<RawValue> && std::convertible_to<T, RawValue>));

template <class T, class RawValue>
concept IdentifierLiteral
    = TextLiteralFor<T, RawValue> || CharacterLiteralFor<T, RawValue> || IntegerLiteralFor<T, RawValue>;

/// An integer that does not fit is a programming error, as a literal would be.
template <class RawValue, class T> RawValue rawValueFromLiteral(T literal)
{
    if constexpr (IdentifyingInteger<T> && IdentifyingInteger<RawValue>) {
        if (!std::in_range<RawValue>(literal))
            fatalError("The integer does not fit in the raw value", "Utilities/Identifier", 58);
        return static_cast<RawValue>(literal);
    } else
        return literal;
}

} // namespace detail

/// A type of entities that are told apart by identifiers: it says `using IdentifierType = std::string;`, or
/// whatever the raw identifiers are. Both types compare with `==` and have a `std::hash`.
template <class T>
concept Identifiable = detail::HashesAndEquals<T> && detail::HashesAndEquals<typename T::IdentifierType>;

/// The identifier of a `Value`, which is not taken for one of anything else.
///
/// It is its raw value with a type of its own: it compares, hashes and codes as the raw value does, and JSON
/// shows no difference. It does not check that there is such an entity.
///
/// `Value` is `Identifiable`, and may hold its own identifier: it is looked at where an identifier is made,
/// so its hash can be declared after it.
///
/// @snippet Tests/Utilities/IdentifierTests.cpp Identifying
///
/// As large as the raw value, and costs as much to copy. Not synchronised.
template <class Value> class Identifier {
public:
    using RawValue = typename Value::IdentifierType;

    /// Any raw value; nothing is refused.
    explicit Identifier(RawValue rawValue)
        : m_rawValue(std::move(rawValue))
    {
        static_assert(Identifiable<Value>,
            "an identified type and its IdentifierType compare with == and specialise std::hash");
    }

    /// Written as a literal: a text, a character or an integer, whichever the raw value is made from. An
    /// integer that does not fit in it ends the process.
    template <detail::IdentifierLiteral<RawValue> Literal>
    Identifier(Literal literal)
        : Identifier(detail::rawValueFromLiteral<RawValue>(literal))
    {}

    /// The identifier of any raw value; never nothing.
    static std::optional<Identifier> make(RawValue rawValue) { return Identifier(std::move(rawValue)); }

    /// What it was made with.
    const RawValue& rawValue() const noexcept { return m_rawValue; }

    /// Whether the raw text has no characters. Only for texts.
    bool isEmpty() const noexcept requires std::same_as<RawValue, std::string> { return m_rawValue.empty(); }

    /// That of the raw value.
    std::string description() const { return describe(m_rawValue); }
    std::string debugDescription() const
    {
        return typeName<Identifier>() + "(" + debugDescribe(m_rawValue) + ")";
    }

    friend bool operator==(const Identifier&, const Identifier&) = default;

private:
    RawValue m_rawValue;
};

/// The raw value alone, where it can be decoded. What its decoding throws passes through. Include the
/// decoder to use it.
template <class Value> struct Decodable<Identifier<Value>> {
    using RawValue = typename Identifier<Value>::RawValue;

    static Identifier<Value> decode(const Decoder& decoder) requires requires
    {
        Decodable<RawValue>::decode(decoder);
    }
    {
        return Identifier<Value>(Decodable<RawValue>::decode(decoder));
    }
};

/// The raw value alone, where it can be encoded.
template <class Value> struct Encodable<Identifier<Value>> {
    using RawValue = typename Identifier<Value>::RawValue;

    static void write(const Identifier<Value>& value, const detail::EncodingPlace& place) requires requires
    {
        Encodable<RawValue>::write(value.rawValue(), place);
    }
    {
        Encodable<RawValue>::write(value.rawValue(), place);
    }
};

} // namespace orrenby

template <class Value> struct std::hash<orrenby::Identifier<Value>> {
    std::size_t operator()(const orrenby::Identifier<Value>& identifier) const
    {
        return std::hash<typename Value::IdentifierType>{}(identifier.rawValue());
    }
};
