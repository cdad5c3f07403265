#pragma once

/// @file
/// Coding of public aggregates by the names of their fields. Not in the umbrella header: it costs compile
/// time; include it where such values are decoded or encoded.

#include "Orrenby/Platform/Coding/AggregateFields.hpp"
#include "Orrenby/Platform/Coding/CodableKinds.hpp"
#include "Orrenby/Platform/Coding/Decodable.hpp"
#include "Orrenby/Platform/Coding/Encodable.hpp"
#include "Orrenby/Platform/Coding/FieldsDecoding.hpp"
#include "Orrenby/Platform/Coding/FieldsEncoding.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// A struct of public fields is decoded from an object with a member for each field, and encoded as one.
///
/// The field's name is the key; a field `class_`, which the language does not let be `class`, has the key
/// `class`. A struct whose keys are others lists one for each field: `static constexpr std::string_view
/// codingKeys[] = {"id", "full_name"};`. An optional field may be missing or null; an empty one is not
/// written. A missing member for any other field is `keyNotFound`, also when the field has a default.
///
/// @snippet Tests/Platform/Coding/JSONDecoderTests.cpp Decoding a response
///
/// Up to 32 fields and one base without fields; no C arrays, bit-fields or references. Each field of a struct
/// costs the compiler some milliseconds.
template <detail::PlainAggregate T>
    requires(!detail::DecodesItself<T>)
struct Decodable<T> {
    static constexpr auto form = detail::DecodedForm::Fields;

    /// Calls `visit` with the type and the key of each field, in the order of declaration.
    template <class Visitor> static void visitFields(Visitor&& visit)
    {
        [&]<std::size_t... Index>(std::index_sequence<Index...>)
        {
            (visit(std::type_identity<detail::FieldType<T, Index>>(), detail::fieldKey<T>(Index)), ...);
        }
        (std::make_index_sequence<detail::fieldCount<T>>());
    }

    static T decode(const Decoder& decoder)
    {
        const detail::FieldsDecoding fields(decoder);
        // Braces keep the order: fields are looked up as they are declared.
        return [&]<std::size_t... Index>(std::index_sequence<Index...>)
        {
            static_assert(detail::baseCount<T> <= 1, "a decoded aggregate has one base at most");
            if constexpr (detail::baseCount<T> == 1)
                return T{{}, fields.field<detail::FieldType<T, Index>>(detail::fieldKey<T>(Index))...};
            else
                return T{fields.field<detail::FieldType<T, Index>>(detail::fieldKey<T>(Index))...};
        }
        (std::make_index_sequence<detail::fieldCount<T>>());
    }
};

template <detail::PlainAggregate T>
    requires(!detail::EncodesItself<T>)
struct Encodable<T> {
    static void write(const T& value, const detail::EncodingPlace& place)
    {
        detail::FieldsEncoding fields(place);
        std::size_t index = 0;
        detail::withFields(
            value, [&](const auto&... field) { (fields.field(detail::fieldKey<T>(index++), field), ...); });
        fields.close();
    }
};

} // namespace orrenby
