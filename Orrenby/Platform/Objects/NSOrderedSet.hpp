#pragma once

/// @file
/// Sets of values of any kind that have positions.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/DistinctList.hpp"
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// An ordered set of values of any kind: a list in which each value stands at most once.
///
/// Equality regards the order. In an `Any` it is an opaque value. For elements of one type see `OrderedSet`.
///
/// A plain value. Not synchronised.
class ORRENBY_EXPORT NSOrderedSet : public detail::DistinctList {
public:
    static constexpr std::string_view printedTypeName = "NSOrderedSet";

    NSOrderedSet() = default;

    /// The first of equal objects stays.
    NSOrderedSet(std::initializer_list<Any> objects);
    explicit NSOrderedSet(const Array& objects);

    /// All objects in their order.
    const Array& array() const noexcept { return objects(); }

    /// A position at or beyond the size is a programming error.
    const Any& operator[](std::size_t position) const;

    /// The position of a value, or nothing.
    std::optional<std::size_t> index(const Any& value) const { return indexOf(value); }

    std::string description() const;
    std::string debugDescription() const { return description(); }

    std::size_t hash() const { return unorderedHash(); }
    friend bool operator==(const NSOrderedSet& first, const NSOrderedSet& second)
    {
        return first.objects() == second.objects();
    }
};

} // namespace orrenby

template <> struct std::hash<orrenby::NSOrderedSet> {
    std::size_t operator()(const orrenby::NSOrderedSet& value) const { return value.hash(); }
};
