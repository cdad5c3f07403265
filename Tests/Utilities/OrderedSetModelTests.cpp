// Ordered sets beside a plain model that does nothing but what is promised, over many seeds.

#include "Orrenby/Utilities/OrderedSet.hpp"
#include <algorithm>
#include <gmock/gmock.h>
#include <map>
#include <random>

using namespace orrenby;

namespace {

using Index = std::int64_t;
using Value = int;
using Array = std::vector<Value>;
using Set = OrderedSet<Value>;
using Pairs = std::vector<std::pair<Index, Index>>;

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

constexpr Value valueLimit = 24;

class Chance {
public:
    explicit Chance(unsigned seed)
        : m_engine(seed)
    {}
    Index below(Index bound) { return static_cast<Index>(m_engine() % static_cast<std::uint64_t>(bound)); }
    Value value() { return static_cast<Value>(below(valueLimit)); }
    Array array(Index limit)
    {
        Array result(static_cast<std::size_t>(below(limit + 1)));
        for (auto& element : result)
            element = value();
        return result;
    }

private:
    std::mt19937_64 m_engine;
};

void expectSame(const Set& set, const Model& model)
{
    ASSERT_EQ(set.elements(), model.elements);
    ASSERT_EQ(set.count(), static_cast<Index>(model.indices.size()));
    ASSERT_EQ(set.endIndex(), static_cast<Index>(model.elements.size()));
    for (Value value = 0; value < valueLimit; ++value) {
        const auto known = model.indices.find(value);
        ASSERT_EQ(
            set.indexOf(value), known != model.indices.end() ? std::optional(known->second) : std::nullopt);
        ASSERT_EQ(set.firstIndexOf(value), model.firstIndex(value));
        ASSERT_EQ(set.contains(value), model.firstIndex(value).has_value());
    }
}

void change(Set& set, Model& model, Chance& chance, bool maySet)
{
    const auto size = set.endIndex();
    const auto value = chance.value();
    switch (chance.below(maySet ? 14 : 12)) {
    case 0:
        set.append(value);
        model.replace(size, size, {value});
        break;
    case 1: {
        const auto array = chance.array(6);
        set.appendContentsOf(array);
        model.replace(size, size, array);
        break;
    }
    case 2:
    case 3: {
        const auto position = chance.below(size + 1);
        set.insert(value, position);
        model.replace(position, position, {value});
        break;
    }
    case 4: {
        const auto position = chance.below(size + 1);
        const auto array = chance.array(6);
        set.insertContentsOf(array, position);
        model.replace(position, position, array);
        break;
    }
    case 5:
    case 6:
        ASSERT_EQ(set.remove(value), model.remove(value));
        break;
    case 7:
        if (size > 0) {
            const auto position = chance.below(size);
            const auto expected = model.elements[static_cast<std::size_t>(position)];
            ASSERT_EQ(set.removeAt(position), expected);
            model.replace(position, position + 1, {});
        }
        break;
    case 8: {
        const auto upper = chance.below(size + 1);
        const auto lower = chance.below(upper + 1);
        const auto array = chance.array(4);
        set.replaceSubrange(lower, upper, array);
        model.replace(lower, upper, array);
        break;
    }
    case 9: {
        const auto divisor = static_cast<Value>(2 + chance.below(9));
        auto kept = model.elements;
        std::erase_if(kept, [=](Value element) { return element % divisor == 0; });
        set.removeAll([=](Value element) { return element % divisor == 0; });
        model = Model(kept);
        break;
    }
    case 10: {
        const auto divisor = static_cast<Value>(1 + chance.below(9));
        const auto isBefore = [=](Value first, Value second) { return first % divisor < second % divisor; };
        auto sorted = model.elements;
        std::stable_sort(sorted.begin(), sorted.end(), isBefore);
        set.sort(isBefore);
        model = Model(sorted);
        break;
    }
    case 11:
        set.reserveCapacity(chance.below(40));
        model = Model(model.elements);
        break;
    default:
        if (size > 0) {
            const auto position = chance.below(size);
            set.set(position, value);
            model.set(position, value);
        }
    }
}

void expectSameDiff(const Set& first, const Model& firstModel, const Set& second, const Model& secondModel)
{
    ASSERT_EQ(first.intersection(second).elements(), firstModel.filtered(secondModel, true).elements);
    ASSERT_EQ(first.subtracting(second).elements(), firstModel.filtered(secondModel, false).elements);
    const auto expected = firstModel.compared(secondModel);
    if (expected && expected->lacksAPosition)
        return; // that ends the process: a test of its own
    const auto diff = first.compared(second);
    ASSERT_EQ(diff.has_value(), expected.has_value());
    if (!diff)
        return;
    ASSERT_EQ(diff->inserts, expected->inserts);
    ASSERT_EQ(diff->deletes, expected->deletes);
    Pairs moves;
    for (const auto& [from, to] : diff->moves)
        moves.emplace_back(from, to);
    ASSERT_EQ(moves, expected->moves);
}

/// The members of `second` that lie at the inserts of a diff.
Array inserted(const Set& second, const Set::Diff& diff)
{
    Array result;
    for (const Index position : diff.inserts)
        result.push_back(second[position]);
    return result;
}

/// Deletes, takes out what moves, and fills the places of the new set in ascending order.
Array edited(const Set& first, const Set& second, const Set::Diff& diff)
{
    std::map<Index, Value> placed;
    for (const Index position : diff.inserts)
        placed[position] = second[position];
    std::vector<Index> gone = diff.deletes;
    for (const auto& [from, to] : diff.moves) {
        gone.push_back(from);
        placed[to] = first[from];
    }
    Array rest;
    for (Index position = 0; position < first.endIndex(); ++position)
        if (std::find(gone.begin(), gone.end(), position) == gone.end())
            rest.push_back(first[position]);
    for (const auto& [position, value] : placed)
        rest.insert(rest.begin() + position, value);
    return rest;
}

/// From the longest ascent that ends at each common member, found by a look at all before it.
std::size_t fewestMoves(const Set& first, const Set& second)
{
    std::vector<Index> places;
    for (const Value element : first)
        if (const auto place = second.indexOf(element))
            places.push_back(*place);
    std::vector<std::size_t> longest(places.size(), 1);
    std::size_t best = 0;
    for (std::size_t end = 0; end < places.size(); ++end) {
        for (std::size_t before = 0; before < end; ++before)
            if (places[before] < places[end])
                longest[end] = std::max(longest[end], longest[before] + 1);
        best = std::max(best, longest[end]);
    }
    return places.size() - best;
}

} // namespace

TEST(OrderedSetModel, ChangesAsTheModelDoes)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Chance chance(seed);
        const auto start = chance.array(20);
        Set set(start);
        Model model(start);

        for (int step = 0; step < 40; ++step) {
            change(set, model, chance, seed % 2 == 1);
            expectSame(set, model);
            ASSERT_FALSE(testing::Test::HasFatalFailure());
        }
    }
}

TEST(OrderedSetModel, ComparesAsTheModelDoes)
{
    for (unsigned seed = 0; seed < 3'000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Chance chance(seed);
        const auto start = chance.array(20);
        Set first(start);
        Model firstModel(start);
        Set second(first);
        Model secondModel(firstModel);

        for (int step = 0; step < 4; ++step) {
            change(first, firstModel, chance, seed % 3 == 1);
            change(second, secondModel, chance, seed % 3 != 0);
        }

        expectSameDiff(first, firstModel, second, secondModel);
        ASSERT_FALSE(testing::Test::HasFatalFailure());
    }
}

TEST(OrderedSetModel, IsRebuiltByApplyingADiff)
{
    for (unsigned seed = 0; seed < 2'000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Chance chance(seed);
        const Set first(chance.array(16));
        const Set second(chance.array(16));
        const auto diff = first.compared(second);
        if (!diff)
            continue;

        const auto rebuilt = first.applying(*diff, inserted(second, *diff));

        ASSERT_EQ(rebuilt, second);
        ASSERT_EQ(rebuilt->count(), second.count());
    }
}

TEST(OrderedSetModel, MovesAsFewMembersAsPossible)
{
    for (unsigned seed = 0; seed < 2'000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Chance chance(seed);
        const Set first(chance.array(16));
        const Set second(chance.array(16));
        const auto plain = first.compared(second);
        const auto diff = first.comparedWithFewestMoves(second);
        ASSERT_EQ(diff.has_value(), plain.has_value());
        if (!diff)
            continue;

        ASSERT_EQ(edited(first, second, *diff), second.elements());
        ASSERT_EQ(diff->moves.size(), fewestMoves(first, second));
        ASSERT_EQ(diff->inserts, plain->inserts);
        ASSERT_EQ(diff->deletes, plain->deletes);
    }
}
