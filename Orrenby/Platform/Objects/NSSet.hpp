#pragma once

/// @file
/// Sets of values of any kind.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/DistinctList.hpp"
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// An unordered set of values of any kind.
///
/// It compares without regard to order, but is walked in the order of insertion, so that a run repeats. It
/// prints like a list, sorted by the printed forms.
///
/// A plain value. Not synchronised.
class ORRENBY_EXPORT NSSet : public detail::DistinctList {
public:
    static constexpr std::string_view printedTypeName = "NSSet";

    NSSet() = default;

    /// The first of equal objects stays.
    NSSet(std::initializer_list<Any> objects);
    explicit NSSet(const Array& objects);

    /// The members in the order of insertion.
    const Array& allObjects() const noexcept { return objects(); }

    std::string description() const;
    std::string debugDescription() const { return description(); }

    std::size_t hash() const { return unorderedHash(); }
    friend bool operator==(const NSSet& first, const NSSet& second) { return first.hasSameMembers(second); }
};

} // namespace orrenby

template <> struct std::hash<orrenby::NSSet> {
    std::size_t operator()(const orrenby::NSSet& value) const { return value.hash(); }
};
