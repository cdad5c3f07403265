#pragma once

/// @file
/// How one ordered set turns into another, and back into a set from that.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Utilities/OrderedSetPositions.hpp"
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A member that is missing on the other side and cannot be looked up on its own ends the process.
template <class Set> inline typename Set::Index knownIndexOf(const Set& set, typename Set::Key element)
{
    const auto position = set.indexOf(element);
    if (!position)
        fatalError("A member that a duplicate hid has no position", "Utilities/OrderedSet", 205);
    return *position;
}

/// Either may hold duplicates. Quadratic.
template <class Set> inline typename Set::Diff comparedByScan(const Set& old, const Set& target)
{
    typename Set::Diff diff;
    for (const typename Set::value_type& element : target.subtracting(old))
        diff.inserts.push_back(knownIndexOf(target, element));
    for (const typename Set::value_type& element : old.subtracting(target))
        diff.deletes.push_back(knownIndexOf(old, element));
    for (const typename Set::value_type& element : old.intersection(target)) {
        const auto from = old.firstIndexOf(element);
        const auto to = target.firstIndexOf(element);
        if (*from != *to)
            diff.moves.push_back({*from, *to});
    }
    return diff;
}

/// Both without duplicates. Each lookup in `target` also tells which of its positions are no inserts. Linear.
template <class Set> inline typename Set::Diff comparedByHash(const Set& old, const Set& target)
{
    using Index = typename Set::Index;
    typename Set::Diff diff;
    std::vector<bool> isCommon(target.size(), false);
    for (std::size_t position = 0; position < old.size(); ++position) {
        const auto from = static_cast<Index>(position);
        const auto to = target.indexOf(old.elements()[position]);
        if (!to)
            diff.deletes.push_back(from);
        else {
            isCommon[static_cast<std::size_t>(*to)] = true;
            if (*to != from)
                diff.moves.push_back({from, *to});
        }
    }
    for (std::size_t position = 0; position < target.size(); ++position)
        if (!isCommon[position])
            diff.inserts.push_back(static_cast<Index>(position));
    return diff;
}

/// Both without duplicates, and `diff` their comparison. The longest run of common members that ascends on
/// both sides stays where it is.
template <class Set>
inline typename Set::Diff withFewestMoves(const Set& old, const Set& target, typename Set::Diff diff)
{
    using Index = typename Set::Index;
    std::vector<Index> places;
    std::vector<Index> origins;
    for (std::size_t position = 0; position < old.size(); ++position)
        if (const auto place = target.indexOf(old.elements()[position])) {
            places.push_back(*place);
            origins.push_back(static_cast<Index>(position));
        }
    diff.moves.clear();
    const auto stays = longestAscent(places);
    for (std::size_t common = 0; common < places.size(); ++common)
        if (!stays[common])
            diff.moves.push_back({origins[common], places[common]});
    return diff;
}

/// Nothing when the diff, the set and the inserted members do not fit together. Linear.
template <class Set>
inline std::optional<Set> applying(
    const Set& set, const typename Set::Diff& diff, const std::vector<typename Set::value_type>& inserted)
{
    using Element = typename Set::value_type;
    using Index = typename Set::Index;
    const std::vector<Element>& old = set.elements();
    if (inserted.size() != diff.inserts.size() || diff.deletes.size() > old.size())
        return std::nullopt;
    const auto newSize = old.size() - diff.deletes.size() + inserted.size();
    std::vector<std::optional<Element>> places(newSize);
    std::vector<bool> isDone(old.size(), false);
    const auto take = [&](Index position) {
        const auto place = static_cast<std::size_t>(position);
        const bool isFree = position >= 0 && place < old.size() && !isDone[place];
        if (isFree)
            isDone[place] = true;
        return isFree;
    };
    const auto put = [&](Index position, const Element& element) {
        const auto place = static_cast<std::size_t>(position);
        const bool isFree = position >= 0 && place < newSize && !places[place].has_value();
        if (isFree)
            places[place] = element;
        return isFree;
    };

    for (const Index position : diff.deletes)
        if (!take(position))
            return std::nullopt;
    for (const auto& move : diff.moves)
        if (!take(move.from) || !put(move.to, old[static_cast<std::size_t>(move.from)]))
            return std::nullopt;
    for (std::size_t place = 0; place < inserted.size(); ++place)
        if (!put(diff.inserts[place], inserted[place]))
            return std::nullopt;
    for (std::size_t place = 0; place < old.size(); ++place)
        if (!isDone[place] && !put(static_cast<Index>(place), old[place]))
            return std::nullopt;
    Set result; // as many places as members, each filled once, so none is left free
    for (auto& place : places)
        result.append(*std::move(place));
    return result.size() == newSize ? std::optional(std::move(result)) : std::nullopt;
}

} // namespace orrenby::detail
