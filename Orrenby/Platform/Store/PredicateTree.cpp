#include "Orrenby/Platform/Store/PredicateTree.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include <algorithm>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

RegularExpression readPattern(const PredicateComparison& comparison, std::optional<std::size_t> position)
{
    if (comparison.right || comparison.values[0].kind() != Any::Kind::Text)
        throwInvalidPredicate("MATCHES takes a text", position);
    const auto pattern = RegularExpression::tryMake(
        comparison.values[0].text(), {.isCaseInsensitive = comparison.ignoresCase});
    if (!pattern.isSuccess())
        throwInvalidPredicate(
            "The pattern is no regular expression (" + pattern.error()->description() + ")", position);
    return *pattern.value();
}

} // namespace

void throwInvalidPredicate(std::string message, std::optional<std::size_t> position)
{
    if (position)
        message += " at " + std::to_string(*position);
    throw StoreError(
        StoreError::Kind::InvalidPredicate, {.message = std::move(message), .position = position});
}

Ref<const PredicateNode> constantNode(bool isTrue)
{
    const auto make = [](PredicateKind kind) {
        return std::make_shared<const PredicateNode>(PredicateNode{.kind = kind, .comparisonCount = 1});
    };
    static const auto everything = make(PredicateKind::True);
    static const auto nothing = make(PredicateKind::False);
    return isTrue ? everything : nothing;
}

Ref<const PredicateNode> comparisonNode(PredicateComparison comparison, std::optional<std::size_t> position)
{
    if (comparison.operation == PredicateOperator::Matches)
        comparison.pattern = readPattern(comparison, position);
    const auto valueCount = comparison.values.size();
    if (valueCount > maximumPredicateValueCount)
        throwInvalidPredicate("The predicate has too many values", position);
    // All values pass when there is none that does not, which is a negation.
    const std::size_t depth = comparison.quantifier == PredicateQuantifier::All ? 2 : 1;
    return std::make_shared<PredicateNode>(PredicateNode{.kind = PredicateKind::Comparison,
        .comparison = std::move(comparison),
        .depth = depth,
        .comparisonCount = 1,
        .valueCount = valueCount});
}

Ref<const PredicateNode> compoundNode(
    PredicateKind kind, std::vector<Ref<const PredicateNode>> children, std::optional<std::size_t> position)
{
    auto node = PredicateNode{.kind = kind};
    for (auto& child : children) {
        node.comparisonCount += child->comparisonCount;
        node.valueCount += child->valueCount;
        const bool isSameChain = child->kind == kind && kind != PredicateKind::Not;
        node.depth = std::max(node.depth, child->depth + (isSameChain ? 0 : 1));
        if (isSameChain)
            node.children.insert(node.children.end(), child->children.begin(), child->children.end());
        else
            node.children.push_back(std::move(child));
    }
    if (node.depth > maximumPredicateDepth)
        throwInvalidPredicate("The predicate is nested too deeply", position);
    if (node.comparisonCount > maximumComparisonCount)
        throwInvalidPredicate("The predicate has too many comparisons", position);
    if (node.valueCount > maximumPredicateValueCount)
        throwInvalidPredicate("The predicate has too many values", position);
    return std::make_shared<PredicateNode>(std::move(node));
}

bool isSamePredicate(const PredicateNode& first, const PredicateNode& second)
{
    return first.kind == second.kind && first.comparison == second.comparison
        && std::equal(first.children.begin(), first.children.end(), second.children.begin(),
            second.children.end(), [](const auto& a, const auto& b) { return isSamePredicate(*a, *b); });
}

} // namespace orrenby::inline ORRENBY_ABI::detail
