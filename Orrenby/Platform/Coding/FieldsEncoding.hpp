#pragma once

/// @file
/// Encoding of a type field by field. Not in the umbrella header: part of AggregateCoding.hpp and
/// DescribedCoding.hpp.

#include "Orrenby/Platform/Coding/Encodable.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <optional>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The fields of a type, whose keys differ, as the members of an object.
class FieldsEncoding {
public:
    explicit FieldsEncoding(const EncodingPlace& place)
        : m_place(place)
    {
        place.open('{');
    }

    template <class T> void field(std::string_view key, const T& value)
    {
        writeKey(m_place, m_isFirst, key);
        m_isFirst = false;
        const CodingStep step{m_place.path, key, -1};
        encodeAt(value, m_place.inside(&step));
    }
    template <class T> void field(std::string_view key, const std::optional<T>& value)
    {
        if (value)
            field(key, *value);
    }

    void close() { m_place.text().append('}'); }

private:
    EncodingPlace m_place;
    bool m_isFirst = true;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
