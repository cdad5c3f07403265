// Ordered sets beside the model, for whatever a generator of changes thinks of. What fails is shown in its
// shortest form; the environment variable RC_PARAMS ("seed=7 max_success=10000") tries others, and more.

#include "Tests/Utilities/OrderedSetModel.hpp"
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace orrenby;
using namespace orrenby::tests;

namespace {

void expectSame(const Set& set, const Model& model)
{
    RC_ASSERT(set.elements() == model.elements);
    RC_ASSERT(set.count() == static_cast<Index>(model.indices.size()));
    RC_ASSERT(set.endIndex() == static_cast<Index>(model.elements.size()));
    for (Value value = 0; value < valueLimit; ++value) {
        const auto known = model.indices.find(value);
        RC_ASSERT(set.indexOf(value)
            == (known != model.indices.end() ? std::optional(known->second) : std::nullopt));
        RC_ASSERT(set.firstIndexOf(value) == model.firstIndex(value));
        RC_ASSERT(set.contains(value) == model.firstIndex(value).has_value());
    }
}

void expectSameDiff(const Set& first, const Model& firstModel, const Set& second, const Model& secondModel)
{
    RC_ASSERT(first.intersection(second).elements() == firstModel.filtered(secondModel, true).elements);
    RC_ASSERT(first.subtracting(second).elements() == firstModel.filtered(secondModel, false).elements);
    const auto expected = firstModel.compared(secondModel);
    if (expected && expected->lacksAPosition)
        return; // that ends the process: a test of its own
    const auto diff = first.compared(second);
    RC_ASSERT(diff.has_value() == expected.has_value());
    if (!diff)
        return;
    RC_ASSERT(diff->inserts == expected->inserts);
    RC_ASSERT(diff->deletes == expected->deletes);
    Pairs moves;
    for (const auto& [from, to] : diff->moves)
        moves.emplace_back(from, to);
    RC_ASSERT(moves == expected->moves);
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

RC_GTEST_PROP(OrderedSetModel, ChangesAsTheModelDoes, (bool maySet))
{
    const auto start = *anyArray();
    Set set(start);
    Model model(start);

    for (const auto& change : *anyChanges(maySet)) {
        apply(change, set);
        apply(change, model);
        expectSame(set, model);
    }
}

RC_GTEST_PROP(OrderedSetModel, ComparesAsTheModelDoes, (bool maySetFirst, bool maySetSecond))
{
    const auto start = *anyArray();
    Set first(start);
    Model firstModel(start);
    Set second(first);
    Model secondModel(firstModel);
    for (const auto& change : *anyChanges(maySetFirst)) {
        apply(change, first);
        apply(change, firstModel);
    }
    for (const auto& change : *anyChanges(maySetSecond)) {
        apply(change, second);
        apply(change, secondModel);
    }

    expectSameDiff(first, firstModel, second, secondModel);
}

RC_GTEST_PROP(OrderedSetModel, IsRebuiltByApplyingADiff, ())
{
    const Set first(*anyArray());
    const Set second(*anyArray());
    const auto diff = first.compared(second);
    RC_PRE(diff.has_value());

    const auto rebuilt = first.applying(*diff, inserted(second, *diff));

    RC_ASSERT(rebuilt == second);
    RC_ASSERT(rebuilt->count() == second.count());
}

RC_GTEST_PROP(OrderedSetModel, MovesAsFewMembersAsPossible, ())
{
    const Set first(*anyArray());
    const Set second(*anyArray());
    const auto plain = first.compared(second);
    const auto diff = first.comparedWithFewestMoves(second);
    RC_ASSERT(diff.has_value() == plain.has_value());
    RC_PRE(diff.has_value());

    RC_ASSERT(edited(first, second, *diff) == second.elements());
    RC_ASSERT(diff->moves.size() == fewestMoves(first, second));
    RC_ASSERT(diff->inserts == plain->inserts);
    RC_ASSERT(diff->deletes == plain->deletes);
}
