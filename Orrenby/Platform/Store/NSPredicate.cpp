#include "Orrenby/Platform/Store/NSPredicate.hpp"
#include "Orrenby/Platform/Store/PredicateTree.hpp"
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

namespace {

constexpr std::string_view operatorTexts[] = {
    "=", "!=", "<", "<=", ">", ">=", "BEGINSWITH", "CONTAINS", "ENDSWITH", "LIKE", "IN", "BETWEEN"};

bool isSame(const PredicateNode& first, const PredicateNode& second)
{
    return first.kind == second.kind && first.comparison == second.comparison
        && std::equal(first.children.begin(), first.children.end(), second.children.begin(),
            second.children.end(), [](const auto& a, const auto& b) { return isSame(*a, *b); });
}

void append(std::string& text, const PredicatePath& path)
{
    if (path.empty())
        text += "SELF";
    for (std::size_t index = 0; index < path.size(); ++index) {
        text += index != 0 ? "." : "";
        text += isPredicateWord(path[index]) ? "#" : "";
        text += path[index];
    }
}

void append(std::string& text, const Any& value)
{
    if (value.isNull()) {
        text += "nil";
    } else if (const auto* const boolean = value.get<bool>()) {
        text += *boolean ? "TRUE" : "FALSE";
    } else if (const auto* const number = value.get<double>(); number != nullptr && std::isfinite(*number)) {
        std::array<char, 32> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), *number).ptr;
        const std::string_view written(digits.data(), static_cast<std::size_t>(end - digits.data()));
        text += written;
        if (written.find_first_of(".e") == std::string_view::npos)
            text += ".0";
    } else if (value.kind() == Any::Kind::Int) {
        text += std::to_string(*value.get<std::int64_t>());
    } else if (value.kind() == Any::Kind::Text) {
        text += '"';
        for (const char c : value.text()) {
            if (c == '"' || c == '\\')
                text += '\\';
            text += c;
        }
        text += '"';
    } else
        text += '<' + value.description() + '>';
}

void append(std::string& text, const PredicateComparison& comparison)
{
    text += comparison.isAny ? "ANY " : "";
    append(text, comparison.left);
    text += ' ';
    text += operatorTexts[static_cast<std::size_t>(comparison.operation)];
    text += comparison.ignoresCase ? "[c] " : " ";
    const bool isList = comparison.operation >= PredicateOperator::In;
    if (comparison.right)
        return append(text, *comparison.right);
    text += isList ? "{" : "";
    for (std::size_t index = 0; index < comparison.values.size(); ++index) {
        text += index != 0 ? ", " : "";
        append(text, comparison.values[index]);
    }
    text += isList ? "}" : "";
}

void append(std::string& text, const PredicateNode& node)
{
    switch (node.kind) {
    case PredicateKind::True:
        text += "TRUEPREDICATE";
        return;
    case PredicateKind::False:
        text += "FALSEPREDICATE";
        return;
    case PredicateKind::Comparison:
        return append(text, node.comparison);
    case PredicateKind::Not:
        text += "NOT ";
        break;
    case PredicateKind::And:
    case PredicateKind::Or:
        break;
    }
    for (std::size_t index = 0; index < node.children.size(); ++index) {
        const auto& child = *node.children[index];
        if (index != 0)
            text += node.kind == PredicateKind::And ? " AND " : " OR ";
        const bool isChain = child.kind == PredicateKind::And || child.kind == PredicateKind::Or;
        text += isChain ? "(" : "";
        append(text, child);
        text += isChain ? ")" : "";
    }
}

NSPredicate compare(const PredicatePath& keys, bool isAny, PredicateOperator operation,
    std::vector<Any> values, TextMatchOptions options = {})
{
    return NSPredicate(comparisonNode({.isAny = isAny,
        .left = keys,
        .operation = operation,
        .ignoresCase = options.ignoresCase,
        .values = std::move(values)}));
}

std::vector<Any> one(const Any& value)
{
    std::vector<Any> values;
    values.push_back(value);
    return values;
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

Ref<const PredicateNode> comparisonNode(PredicateComparison comparison)
{
    const auto valueCount = comparison.values.size();
    if (valueCount > maximumPredicateValueCount)
        throwInvalidPredicate("The predicate has too many values");
    return std::make_shared<PredicateNode>(PredicateNode{.kind = PredicateKind::Comparison,
        .comparison = std::move(comparison),
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

} // namespace detail

using detail::PredicateKind;
using detail::PredicateOperator;

NSPredicate::NSPredicate()
    : m_node(detail::constantNode(true))
{}

NSPredicate NSPredicate::make(std::string_view format, const std::vector<Any>& arguments)
{
    return NSPredicate(detail::readPredicate(format, arguments));
}

Result<NSPredicate, StoreError> NSPredicate::tryMake(
    std::string_view format, const std::vector<Any>& arguments)
{
    using Outcome = Result<NSPredicate, StoreError>;
    try {
        return Outcome::success(make(format, arguments));
    } catch (const StoreError& error) {
        return Outcome::failure(error);
    }
}

NSPredicate operator&&(const NSPredicate& first, const NSPredicate& second)
{
    return NSPredicate(detail::compoundNode(PredicateKind::And, {first.m_node, second.m_node}));
}

NSPredicate operator||(const NSPredicate& first, const NSPredicate& second)
{
    return NSPredicate(detail::compoundNode(PredicateKind::Or, {first.m_node, second.m_node}));
}

NSPredicate operator!(const NSPredicate& predicate)
{
    return NSPredicate(detail::compoundNode(PredicateKind::Not, {predicate.m_node}));
}

std::string NSPredicate::description() const
{
    std::string text;
    detail::append(text, *m_node);
    return text;
}

bool operator==(const NSPredicate& first, const NSPredicate& second)
{
    return first.m_node == second.m_node || detail::isSame(*first.m_node, *second.m_node);
}

PredicateKey::PredicateKey(std::string_view path)
    : m_keys(detail::readPath(path))
{}

PredicateKey PredicateKey::any() const
{
    auto key = *this;
    key.m_isAny = true;
    return key;
}

NSPredicate PredicateKey::in(std::vector<Any> values) const
{
    return detail::compare(m_keys, m_isAny, PredicateOperator::In, std::move(values));
}

NSPredicate PredicateKey::between(Any least, Any most) const
{
    return detail::compare(m_keys, m_isAny, PredicateOperator::Between, {std::move(least), std::move(most)});
}

NSPredicate PredicateKey::beginsWith(std::string_view text, TextMatchOptions options) const
{
    return detail::compare(m_keys, m_isAny, PredicateOperator::BeginsWith, detail::one(text), options);
}

NSPredicate PredicateKey::contains(std::string_view text, TextMatchOptions options) const
{
    return detail::compare(m_keys, m_isAny, PredicateOperator::Contains, detail::one(text), options);
}

NSPredicate PredicateKey::endsWith(std::string_view text, TextMatchOptions options) const
{
    return detail::compare(m_keys, m_isAny, PredicateOperator::EndsWith, detail::one(text), options);
}

NSPredicate PredicateKey::like(std::string_view pattern, TextMatchOptions options) const
{
    return detail::compare(m_keys, m_isAny, PredicateOperator::Like, detail::one(pattern), options);
}

NSPredicate operator==(const PredicateKey& key, const Any& value)
{
    return detail::compare(key.m_keys, key.m_isAny, PredicateOperator::Equal, detail::one(value));
}

NSPredicate operator!=(const PredicateKey& key, const Any& value)
{
    return detail::compare(key.m_keys, key.m_isAny, PredicateOperator::NotEqual, detail::one(value));
}

NSPredicate operator<(const PredicateKey& key, const Any& value)
{
    return detail::compare(key.m_keys, key.m_isAny, PredicateOperator::Less, detail::one(value));
}

NSPredicate operator<=(const PredicateKey& key, const Any& value)
{
    return detail::compare(key.m_keys, key.m_isAny, PredicateOperator::LessOrEqual, detail::one(value));
}

NSPredicate operator>(const PredicateKey& key, const Any& value)
{
    return detail::compare(key.m_keys, key.m_isAny, PredicateOperator::Greater, detail::one(value));
}

NSPredicate operator>=(const PredicateKey& key, const Any& value)
{
    return detail::compare(key.m_keys, key.m_isAny, PredicateOperator::GreaterOrEqual, detail::one(value));
}

} // namespace orrenby
