#pragma once

/// @file
/// The query of a URL as a list of names and values.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URLQueryItem.hpp"
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class URL;

/// How a blank and a plus stand in a query.
enum class QueryEncoding : std::uint8_t {
    /// A blank is "%20", "+" is a plus: the grammar of URLs.
    Percent,
    /// A blank is "+", a plus is "%2B": what forms send ("application/x-www-form-urlencoded").
    Form,
};

/// Names with values, in order, each as often as it comes.
///
/// What goes into it comes out of it: texts are escaped once when they are written and decoded once when they
/// are read, and an item without value stays apart from one with an empty value. It does not know lists,
/// objects or types.
///
/// An item with neither name nor value, as in "a&&b", is nothing: none is read, none can be added.
///
/// @snippet Tests/Platform/Net/QueryItemsTests.cpp Reading and writing a query
///
/// A plain value, equal by its items in their order. Looking for a name takes time linear in the list. Not
/// synchronised.
class ORRENBY_EXPORT QueryItems {
public:
    using value_type = URLQueryItem;
    using const_iterator = const URLQueryItem*;
    using iterator = const_iterator;

    QueryItems() = default;

    /// Exactly these items in their order, repeated names included.
    QueryItems(std::initializer_list<URLQueryItem> items);
    explicit QueryItems(const std::vector<URLQueryItem>& items);

    /// Reads a query without its "?". Nothing when a "%" stands without two digits, or what is escaped is no
    /// UTF-8. Other characters that should have been escaped stand for themselves.
    static std::optional<QueryItems> make(
        std::string_view query, QueryEncoding form = QueryEncoding::Percent);

    /// Reads the query of a URL; no items when it has none.
    static std::optional<QueryItems> make(const URL& url, QueryEncoding form = QueryEncoding::Percent);

    /// The query without "?", ASCII letters, digits and "-._" as they are and all else escaped ("~" stays,
    /// and in a form "*" instead). A plus is escaped in both encodings, so that nobody takes it for a blank.
    ///
    /// Bytes that are no UTF-8 are escaped as they are; `make` refuses them. Linear.
    std::string encoded(QueryEncoding form = QueryEncoding::Percent) const;

    /// The first value under the name: an empty text for an item without value, nothing without an item.
    /// Valid until the list changes.
    std::optional<std::string_view> first(std::string_view name) const;

    /// All values under the name, in order; empty texts for items without value.
    std::vector<std::string> all(std::string_view name) const;

    /// Whether an item has the name, with or without a value.
    bool contains(std::string_view name) const;

    /// Puts an item behind the others.
    void append(URLQueryItem item);

    /// Gives the first item of the name the value and removes the others; appends one when there is none.
    void set(std::string_view name, std::optional<std::string_view> value);

    /// Removes all items of the name. @returns How many there were.
    std::size_t erase(std::string_view name);

    /// All items in their order, repeated names included.
    const std::vector<URLQueryItem>& items() const noexcept { return m_items; }
    std::size_t size() const noexcept { return m_items.size(); }
    bool empty() const noexcept { return m_items.empty(); }
    const_iterator begin() const noexcept { return m_items.data(); }
    const_iterator end() const noexcept { return m_items.data() + m_items.size(); }

    /// The same as `encoded()`.
    std::string description() const { return encoded(); }

    std::size_t hash() const noexcept;
    friend bool operator==(const QueryItems&, const QueryItems&) = default;

private:
    std::vector<URLQueryItem> m_items;
};

} // namespace orrenby

template <> struct std::hash<orrenby::QueryItems> {
    std::size_t operator()(const orrenby::QueryItems& items) const noexcept { return items.hash(); }
};
