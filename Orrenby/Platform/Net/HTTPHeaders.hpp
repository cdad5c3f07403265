#pragma once

/// @file
/// The header fields of a request.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// Header fields by name, in the order in which the names came.
///
/// Names compare without regard to the case of ASCII letters, values exactly. A name that is set again keeps
/// its place and its first spelling and takes the last value. Neither names nor values are checked or
/// escaped: who passes line breaks on from outside lets others write header fields.
///
/// @snippet Tests/Platform/Net/HTTPHeadersTests.cpp Using header fields
///
/// Equality ignores the order of the fields and the spelling of names. Searching is linear. A plain value.
/// Not synchronised.
class ORRENBY_EXPORT HTTPHeaders {
public:
    static constexpr std::string_view printedTypeName = "HTTPHeaders";

    /// One line of a request's head.
    struct Field {
        std::string name = {};  ///< Compares without case, keeps its spelling.
        std::string value = {}; ///< As it is sent; not checked.

        friend bool operator==(const Field&, const Field&) = default;
    };
    using value_type = Field;
    using const_iterator = const Field*;
    using iterator = const_iterator;

    HTTPHeaders() = default;

    /// Sets the fields in turn.
    HTTPHeaders(std::initializer_list<Field> fields);

    /// The field's value, or nothing.
    std::optional<std::string> value(std::string_view name) const;

    /// The value of the field whose name is spelled exactly like this, or nothing.
    std::optional<std::string> valueForExactName(std::string_view name) const;

    /// Whether there is a field of this name, in any spelling.
    bool contains(std::string_view name) const { return find(name) != nullptr; }

    /// Replaces the field's value, or appends a field.
    void set(std::string_view name, std::string_view value);

    /// Whether there was such a field. The others keep their order.
    bool erase(std::string_view name);
    void clear() noexcept { m_fields.clear(); }

    std::size_t size() const noexcept { return m_fields.size(); }
    bool empty() const noexcept { return m_fields.empty(); }
    const_iterator begin() const noexcept { return m_fields.data(); }
    const_iterator end() const noexcept { return m_fields.data() + m_fields.size(); }

    /// `["Accept": "text/plain"]`, sorted by name; `[:]` when empty.
    std::string description() const;
    std::string debugDescription() const { return description(); }

    /// Independent of what equality ignores.
    std::size_t hash() const noexcept;
    ORRENBY_EXPORT friend bool operator==(const HTTPHeaders& first, const HTTPHeaders& second) noexcept;

private:
    const Field* find(std::string_view name) const noexcept;

    std::vector<Field> m_fields;
};

} // namespace orrenby

template <> struct std::hash<orrenby::HTTPHeaders> {
    std::size_t operator()(const orrenby::HTTPHeaders& value) const noexcept { return value.hash(); }
};
