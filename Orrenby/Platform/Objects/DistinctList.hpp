#pragma once

/// @file
/// What both sets of values of any kind are made of.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/HashIndex.hpp"
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Values of any kind, each at most once, in the order in which they came. Lookup O(1) on average, erasing
/// linear.
///
/// Its public members are those of what derives from it.
class ORRENBY_EXPORT DistinctList {
public:
    using value_type = Any;
    using const_iterator = const Any*;
    using iterator = const_iterator;

    DistinctList() = default;

    /// The first of equal values stays.
    DistinctList(const Any* first, const Any* last);

    /// Whether the value was new. A value that is there already keeps its place.
    bool insert(Any value);
    /// Whether the value was there.
    bool erase(const Any& value);
    void clear() noexcept;

    /// Whether the value is there.
    bool contains(const Any& value) const { return indexOf(value).has_value(); }

    std::size_t size() const noexcept { return m_objects.size(); }
    bool empty() const noexcept { return m_objects.empty(); }
    const_iterator begin() const noexcept { return m_objects.data(); }
    const_iterator end() const noexcept { return m_objects.data() + m_objects.size(); }

protected:
    /// The position of a value, or nothing.
    std::optional<std::size_t> indexOf(const Any& value) const;

    /// In the order in which they came.
    const std::vector<Any>& objects() const noexcept { return m_objects; }

    /// Whether each has what the other has, in any order.
    bool hasSameMembers(const DistinctList& other) const;

    /// Does not depend on the order.
    std::size_t unorderedHash() const;

private:
    std::vector<Any> m_objects;
    HashIndex m_index;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
