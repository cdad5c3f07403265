#pragma once

/// @file
/// Coding of described classes. Not in the umbrella header: it includes Boost.Describe; include it where such
/// values are decoded or encoded.

#include "Orrenby/Platform/Coding/CodableKinds.hpp"
#include "Orrenby/Platform/Coding/Decodable.hpp"
#include "Orrenby/Platform/Coding/DescribedFields.hpp"
#include "Orrenby/Platform/Coding/Encodable.hpp"
#include "Orrenby/Platform/Coding/FieldsDecoding.hpp"
#include "Orrenby/Platform/Coding/FieldsEncoding.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <concepts>
#include <string_view>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

template <class T> void decodeDescribed(T& value, const FieldsDecoding& fields)
{
    DescribedFields<T>::visitBases(value, [&](auto& base) { decodeDescribed(base, fields); });
    auto decodeField = [&](std::string_view key, auto& field) {
        field = fields.field<std::remove_reference_t<decltype(field)>>(key);
    };
    DescribedFields<T>::visit(value, decodeField);
}

/// Calls `visit(std::type_identity<Field>(), key)` for each field, those of the bases first.
template <class T, class Visitor> void visitDescribed(T& value, Visitor& visit)
{
    DescribedFields<T>::visitBases(value, [&](auto& base) { visitDescribed(base, visit); });
    auto visitField = [&](std::string_view key, auto& field) {
        visit(std::type_identity<std::remove_reference_t<decltype(field)>>(), key);
    };
    DescribedFields<T>::visit(value, visitField);
}

template <class T> void encodeDescribed(const T& value, FieldsEncoding& fields)
{
    DescribedFields<T>::visitBases(value, [&](const auto& base) { encodeDescribed(base, fields); });
    auto encodeField = [&](std::string_view key, const auto& field) { fields.field(key, field); };
    DescribedFields<T>::visit(value, encodeField);
}

} // namespace detail

/// A class that lists its fields with Boost.Describe (`BOOST_DESCRIBE_CLASS`, `BOOST_DESCRIBE_STRUCT`) is
/// coded like an aggregate, private fields and those of described bases included: those of the bases first,
/// each class in the order of its declarations, all in one object.
///
/// The key of a field `m_name` is `name`, of a field `class_` it is `class`. An optional field may be missing
/// or null; an empty one is not written. A class that is decoded has a default constructor.
///
/// @snippet Tests/Platform/Coding/DescribedCodingTests.cpp Describing a class
template <detail::DescribedClass T>
    requires(!detail::DecodesItself<T> && !RawRepresentable<T>)
struct Decodable<T> {
    static constexpr auto form = detail::DecodedForm::Fields;

    /// Calls `visit` with the type and the key of each stored property, in the order of declaration.
    template <class Visitor> static void visitFields(Visitor&& visit)
    {
        T value{};
        detail::visitDescribed(value, visit);
    }

    static T decode(const Decoder& decoder)
    {
        static_assert(
            std::default_initializable<T>, "a described class that is decoded has a default constructor");
        T value{};
        detail::decodeDescribed(value, detail::FieldsDecoding(decoder));
        return value;
    }
};

template <detail::DescribedClass T>
    requires(!detail::EncodesItself<T> && !RawRepresentable<T>)
struct Encodable<T> {
    static void write(const T& value, const detail::EncodingPlace& place)
    {
        detail::FieldsEncoding fields(place);
        detail::encodeDescribed(value, fields);
        fields.close();
    }
};

} // namespace orrenby
