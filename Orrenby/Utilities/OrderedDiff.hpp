#pragma once

/// @file
/// How one ordered set turned into another.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"
#include <concepts>
#include <cstddef>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// The position of a member before and after.
template <class Index> struct OrderedDiffMove {
    Index from{}; ///< In the old set.
    Index to{};   ///< In the new set.

    /// `(0, 1)`
    std::string description() const { return "(" + describe(from) + ", " + describe(to) + ")"; }
    std::string debugDescription() const { return description(); }

    friend bool operator==(const OrderedDiffMove&, const OrderedDiffMove&) = default;
};

/// Positions that were inserted, deleted and moved. Made by `OrderedSet::compared`.
///
/// It knows positions only, not members, and applies nothing by itself: see `OrderedSet::applying`.
///
/// @snippet Tests/Utilities/OrderedDiffTests.cpp Naming the rows of a list
///
/// A plain value without an equality of its own: compare its lists. Not synchronised.
template <class Index> struct OrderedDiff {
    /// The positions of one member in both sets.
    using Move = OrderedDiffMove<Index>;

    std::vector<Index> inserts; ///< Positions in the new set.
    std::vector<Index> deletes; ///< Positions in the old set.
    std::vector<Move> moves;    ///< From a position in the old set to one in the new set.

    /// The same diff over other positions, such as the rows of a section: each is given through `transform`,
    /// the inserts first, then the deletes, then `from` and `to` of each move. What it throws passes through.
    template <std::invocable<const Index&> Transform> auto map(Transform&& transform) const
    {
        using Mapped = std::remove_cvref_t<std::invoke_result_t<Transform&, const Index&>>;
        OrderedDiff<Mapped> mapped;
        mapped.inserts.reserve(inserts.size());
        for (const Index& position : inserts)
            mapped.inserts.push_back(std::invoke(transform, position));
        mapped.deletes.reserve(deletes.size());
        for (const Index& position : deletes)
            mapped.deletes.push_back(std::invoke(transform, position));
        mapped.moves.reserve(moves.size());
        for (const Move& move : moves) // braces: `from` is transformed before `to`
            mapped.moves.push_back(
                OrderedDiffMove<Mapped>{std::invoke(transform, move.from), std::invoke(transform, move.to)});
        return mapped;
    }

    /// `inserts [0], deletes [], moves [(0, 1)]`
    std::string description() const
    {
        return "inserts " + describe(inserts) + ", deletes " + describe(deletes) + ", moves "
            + describe(moves);
    }
};

} // namespace orrenby

template <class Index> struct std::hash<orrenby::OrderedDiffMove<Index>> {
    std::size_t operator()(const orrenby::OrderedDiffMove<Index>& move) const
    {
        return std::hash<Index>{}(move.from) * 0x9E3779B97F4A7C15U + std::hash<Index>{}(move.to);
    }
};
