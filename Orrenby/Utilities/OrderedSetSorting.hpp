#pragma once

/// @file
/// The sort of an ordered set, which moves positions instead of members.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/OrderedSetPositions.hpp"
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The members in the order of a predicate that says whether its first argument stands before its second.
/// Members of which neither stands before the other keep their order. n log n.
template <class Element, class Predicate>
inline std::vector<Element> sortedMembers(const std::vector<Element>& elements, Predicate& isBefore)
{
    struct Comparison {
        const std::vector<Element>& elements;
        Predicate& isBefore;
    };
    std::vector<std::uint32_t> positions(elements.size());
    for (std::size_t position = 0; position < elements.size(); ++position)
        positions[position] = static_cast<std::uint32_t>(position);
    const Comparison comparison{elements, isBefore};
    detail::sortPositions(
        positions,
        [](const void* context, std::uint32_t first, std::uint32_t second) -> bool {
            const auto& [members, precedes] = *static_cast<const Comparison*>(context);
            return std::invoke(precedes, members[first], members[second]);
        },
        &comparison);
    std::vector<Element> array;
    array.reserve(elements.size());
    for (const auto position : positions)
        array.push_back(elements[position]);
    return array;
}

} // namespace orrenby::detail
