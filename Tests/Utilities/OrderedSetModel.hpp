#pragma once

/// @file
/// A plain model of ordered sets, which does nothing but what is promised, and changes that it and a set can
/// both be told.

#include "Orrenby/Utilities/OrderedSet.hpp"
#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <rapidcheck.h>
#include <utility>
#include <vector>

namespace orrenby::tests {

using Index = std::int64_t;
using Value = int;
using Array = std::vector<Value>;
using Set = OrderedSet<Value>;
using Pairs = std::vector<std::pair<Index, Index>>;

constexpr Value valueLimit = 24;

/// A list and a map, every change a rebuild, every comparison a scan.
struct Model {
    Array elements;
    std::map<Value, Index> indices;

    explicit Model(const Array& sequence = {})
    {
        Index n = 0;
        for (const Value element : sequence) {
            if (indices.contains(element))
                continue;
            indices[element] = n++;
            elements.push_back(element);
        }
    }

    void replace(Index lower, Index upper, const Array& with)
    {
        auto copy = elements;
        copy.erase(copy.begin() + lower, copy.begin() + upper);
        copy.insert(copy.begin() + lower, with.begin(), with.end());
        *this = Model(copy);
    }
    std::optional<Value> remove(Value element)
    {
        const auto found = indices.find(element);
        if (found == indices.end())
            return std::nullopt;
        replace(found->second, found->second + 1, {});
        return element;
    }
    void set(Index position, Value value)
    {
        const auto place = static_cast<std::size_t>(position);
        indices.erase(elements[place]);
        indices[value] = position;
        elements[place] = value;
    }

    std::optional<Index> firstIndex(Value value) const
    {
        const auto found = std::find(elements.begin(), elements.end(), value);
        return found == elements.end() ? std::nullopt : std::optional<Index>(found - elements.begin());
    }
    Model filtered(const Model& other, bool areCommon) const
    {
        Array kept;
        for (const Value element : elements)
            if (other.firstIndex(element).has_value() == areCommon)
                kept.push_back(element);
        return Model(kept);
    }

    struct Diff {
        std::vector<Index> inserts;
        std::vector<Index> deletes;
        Pairs moves;
        bool lacksAPosition = false;
    };
    std::optional<Diff> compared(const Model& other) const
    {
        if (elements == other.elements)
            return std::nullopt;
        Diff diff;
        const auto list = [&](const Model& members, const Model& from, std::vector<Index>& into) {
            for (const Value element : members.elements)
                if (const auto found = from.indices.find(element); found != from.indices.end())
                    into.push_back(found->second);
                else
                    diff.lacksAPosition = true;
        };
        list(other.filtered(*this, false), other, diff.inserts);
        list(filtered(other, false), *this, diff.deletes);
        for (const Value element : filtered(other, true).elements) {
            const auto from = firstIndex(element);
            const auto to = other.firstIndex(element);
            if (from && to && *from != *to)
                diff.moves.emplace_back(*from, *to);
        }
        return diff;
    }
};

/// One change. Its positions count modulo the places there are, so that it fits any set.
struct Change {
    enum Kind {
        append,
        appendContents,
        insert,
        insertContents,
        remove,
        removeAt,
        replaceSubrange,
        removeMultiples,
        sortByRemainder,
        reserveCapacity,
        set
    };

    int kind = append;
    Value value = 0;
    Index position = 0;
    Index length = 0;
    Array array;
    Value divisor = 2;

    Index placeAmong(Index count) const { return position % count; }
    Index upper(Index size) const { return std::min(size, placeAmong(size + 1) + length); }
};

inline void showValue(const Change& change, std::ostream& stream)
{
    stream << "kind " << change.kind << ", value " << change.value << ", position " << change.position
           << ", length " << change.length << ", array " << rc::toString(change.array) << ", divisor "
           << change.divisor;
}

inline rc::Gen<Value> anyValue() { return rc::gen::inRange(0, valueLimit); }
inline rc::Gen<Array> anyArray() { return rc::gen::container<Array>(anyValue()); }

/// @param maySet  Whether the setter, which can bring a duplicate in, is among them.
inline rc::Gen<std::vector<Change>> anyChanges(bool maySet)
{
    const auto kinds = rc::gen::inRange<int>(Change::append, maySet ? Change::set + 1 : Change::set);
    return rc::gen::container<std::vector<Change>>(
        rc::gen::build<Change>(rc::gen::set(&Change::kind, kinds), rc::gen::set(&Change::value, anyValue()),
            rc::gen::set(&Change::position, rc::gen::inRange<Index>(0, 40)),
            rc::gen::set(&Change::length, rc::gen::inRange<Index>(0, 8)),
            rc::gen::set(&Change::array, anyArray()),
            rc::gen::set(&Change::divisor, rc::gen::inRange<Value>(2, 11))));
}

inline void apply(const Change& change, Model& model)
{
    const auto size = static_cast<Index>(model.elements.size());
    const auto place = change.placeAmong(size + 1);
    const auto isMultiple = [&](Value element) { return element % change.divisor == 0; };
    const auto isBefore = [&](Value first, Value second) {
        return first % change.divisor < second % change.divisor;
    };
    switch (change.kind) {
    case Change::append:
        return model.replace(size, size, {change.value});
    case Change::appendContents:
        return model.replace(size, size, change.array);
    case Change::insert:
        return model.replace(place, place, {change.value});
    case Change::insertContents:
        return model.replace(place, place, change.array);
    case Change::remove:
        model.remove(change.value);
        return;
    case Change::removeAt:
        if (size > 0)
            model.replace(change.placeAmong(size), change.placeAmong(size) + 1, {});
        return;
    case Change::replaceSubrange:
        return model.replace(place, change.upper(size), change.array);
    case Change::removeMultiples:
        std::erase_if(model.elements, isMultiple);
        break;
    case Change::sortByRemainder:
        std::stable_sort(model.elements.begin(), model.elements.end(), isBefore);
        break;
    case Change::reserveCapacity:
        break;
    default:
        if (size > 0)
            model.set(change.placeAmong(size), change.value);
        return;
    }
    model = Model(Array(model.elements));
}

inline void apply(const Change& change, Set& set)
{
    const auto size = set.endIndex();
    const auto place = change.placeAmong(size + 1);
    switch (change.kind) {
    case Change::append:
        return set.append(change.value);
    case Change::appendContents:
        return set.appendContentsOf(change.array);
    case Change::insert:
        return set.insert(change.value, place);
    case Change::insertContents:
        return set.insertContentsOf(change.array, place);
    case Change::remove: {
        const auto isKnown = set.indexOf(change.value).has_value();
        RC_ASSERT(set.remove(change.value) == (isKnown ? std::optional(change.value) : std::nullopt));
        return;
    }
    case Change::removeAt:
        if (size > 0) {
            const auto expected = set.elements()[static_cast<std::size_t>(change.placeAmong(size))];
            RC_ASSERT(set.removeAt(change.placeAmong(size)) == expected);
        }
        return;
    case Change::replaceSubrange:
        return set.replaceSubrange(place, change.upper(size), change.array);
    case Change::removeMultiples:
        return set.removeAll([&](Value element) { return element % change.divisor == 0; });
    case Change::sortByRemainder:
        return set.sort(
            [&](Value first, Value second) { return first % change.divisor < second % change.divisor; });
    case Change::reserveCapacity:
        return set.reserveCapacity(change.position);
    default:
        if (size > 0)
            set.set(change.placeAmong(size), change.value);
    }
}

} // namespace orrenby::tests
