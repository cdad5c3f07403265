#pragma once

/// @file
/// Decoding of a type field by field. Not in the umbrella header: part of AggregateCoding.hpp and
/// DescribedCoding.hpp.

#include "Orrenby/Platform/Coding/Decodable.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <optional>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

template <class T> inline constexpr bool mayBeMissing = false;
template <class T> inline constexpr bool mayBeMissing<std::optional<T>> = true;

/// The members of an object as the fields of a type.
class FieldsDecoding {
public:
    explicit FieldsDecoding(const Decoder& decoder)
        : m_members(decoder.place())
    {}

    template <class T> T field(std::string_view key) const
    {
        const auto& object = m_members.place();
        const auto node = m_members.find(key);
        if (node == JSONDocument::absent) {
            if constexpr (mayBeMissing<T>)
                return std::nullopt;
            else
                m_members.throwKeyNotFound(key);
        }
        const CodingStep step{object.path, key, -1};
        return decodeAt<T>({object.session, node, &step});
    }

private:
    DecodingMembers m_members;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
