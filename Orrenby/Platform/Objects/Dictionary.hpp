#pragma once

/// @file
/// Dictionaries from text to values of any kind.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/HashIndex.hpp"
#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// Maps texts to values of any kind, in the order in which the keys came.
///
/// A key that is set again keeps its place and takes the last value. Equality ignores the order; the printed
/// form is sorted by key: `["a": 1, "b": "two"]`, and `[:]` when empty. Keys compare by their bytes.
///
/// @snippet Tests/Platform/Objects/DictionaryTests.cpp Using a dictionary
///
/// Up to 32 members are searched one by one, more by a hash index: O(1) on average; erasing is linear. A
/// plain value: a copy never sees later changes. Not synchronised.
class ORRENBY_EXPORT Dictionary {
public:
    static constexpr std::string_view printedTypeName = "Dictionary<String, Any>";

    /// A member.
    struct Entry {
        /// Also from literals and views; the key is copied.
        template <std::convertible_to<std::string_view> Key>
        Entry(const Key& newKey, Any newValue)
            : key(std::string_view(newKey))
            , value(std::move(newValue))
        {}

        std::string key; ///< Unique in its dictionary.
        Any value;       ///< Null is a value like any other.
        friend bool operator==(const Entry&, const Entry&) = default;
    };
    using value_type = Entry;
    using const_iterator = const Entry*;
    using iterator = const_iterator;

    Dictionary() = default;

    /// Of entries with one key the first gives the place, the last the value.
    Dictionary(std::initializer_list<Entry> entries);

    /// The member's value, or `nullptr`. Valid until the dictionary changes.
    const Any* find(std::string_view key) const;

    /// Whether there is such a member, be its value null.
    bool contains(std::string_view key) const { return find(key) != nullptr; }

    /// The member's value; null when there is none.
    const Any& operator[](std::string_view key) const;

    /// The member's value. A missing key is a programming error.
    const Any& at(std::string_view key) const;

    /// The member's value as a `T` (see `Any::cast`); nothing when the key is missing or the value no `T`.
    template <class T> std::optional<T> cast(std::string_view key) const { return (*this)[key].cast<T>(); }

    /// Replaces the member's value, or appends a member.
    void set(std::string_view key, Any value);

    /// Whether there was such a member. The others keep their order.
    bool erase(std::string_view key);
    void clear() noexcept;
    void reserve(std::size_t count);

    /// Walks over the members once, in order, and erases those for which `shouldErase(key, value)` holds. It
    /// may change the values on the way; it must not throw. The others keep their order. Linear.
    ///
    /// @returns How many were erased.
    template <class F> std::size_t eraseIf(F&& shouldErase)
    {
        auto kept = m_entries.begin();
        for (auto entry = m_entries.begin(); entry != m_entries.end(); ++entry)
            if (!shouldErase(std::string_view(entry->key), entry->value)) {
                if (kept != entry)
                    *kept = std::move(*entry);
                ++kept;
            }
        return eraseFrom(static_cast<std::size_t>(kept - m_entries.begin()));
    }

    std::size_t size() const noexcept { return m_entries.size(); }
    bool empty() const noexcept { return m_entries.empty(); }
    const_iterator begin() const noexcept { return m_entries.data(); }
    const_iterator end() const noexcept { return m_entries.data() + m_entries.size(); }

    /// In order; copies of them all.
    std::vector<std::string> keys() const;

    std::string description() const;
    std::string debugDescription() const { return description(); }

    /// Independent of the order, as equality is.
    std::size_t hash() const;
    ORRENBY_EXPORT friend bool operator==(const Dictionary& first, const Dictionary& second);

private:
    static constexpr std::size_t indexedAbove = 32;

    std::size_t position(std::string_view key) const;
    void buildIndex();
    std::size_t eraseFrom(std::size_t place);

    std::vector<Entry> m_entries;
    detail::HashIndex m_index; ///< Empty up to `indexedAbove` members.
};

} // namespace orrenby

template <> struct std::hash<orrenby::Dictionary> {
    std::size_t operator()(const orrenby::Dictionary& value) const { return value.hash(); }
};
