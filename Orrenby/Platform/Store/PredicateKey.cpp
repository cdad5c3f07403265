#include "Orrenby/Platform/Store/NSPredicate.hpp"
#include "Orrenby/Platform/Store/PredicateTree.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

using Operator = detail::PredicateOperator;

PredicateKey::PredicateKey(std::string_view path)
    : m_keys(detail::readPath(path))
{}

PredicateKey PredicateKey::any() const
{
    auto key = *this;
    key.m_quantifier = detail::PredicateQuantifier::Any;
    return key;
}

PredicateKey PredicateKey::all() const
{
    auto key = *this;
    key.m_quantifier = detail::PredicateQuantifier::All;
    return key;
}

NSPredicate PredicateKey::compared(
    Operator operation, std::vector<Any> values, TextMatchOptions options) const
{
    return NSPredicate(detail::comparisonNode({.quantifier = m_quantifier,
        .left = m_keys,
        .operation = operation,
        .ignoresCase = options.ignoresCase,
        .values = std::move(values)}));
}

// One value is named as such: braces around one that is a list would copy the list.
NSPredicate PredicateKey::comparedToOne(Operator operation, const Any& value, TextMatchOptions options) const
{
    return compared(operation, std::vector<Any>(1, value), options);
}

NSPredicate PredicateKey::in(std::vector<Any> values) const
{
    return compared(Operator::In, std::move(values));
}

NSPredicate PredicateKey::between(Any least, Any most) const
{
    return compared(Operator::Between, {std::move(least), std::move(most)});
}

NSPredicate PredicateKey::beginsWith(std::string_view text, TextMatchOptions options) const
{
    return comparedToOne(Operator::BeginsWith, text, options);
}

NSPredicate PredicateKey::contains(std::string_view text, TextMatchOptions options) const
{
    return comparedToOne(Operator::Contains, text, options);
}

NSPredicate PredicateKey::endsWith(std::string_view text, TextMatchOptions options) const
{
    return comparedToOne(Operator::EndsWith, text, options);
}

NSPredicate PredicateKey::like(std::string_view pattern, TextMatchOptions options) const
{
    return comparedToOne(Operator::Like, pattern, options);
}

NSPredicate PredicateKey::matches(std::string_view pattern, TextMatchOptions options) const
{
    return comparedToOne(Operator::Matches, pattern, options);
}

NSPredicate operator==(const PredicateKey& key, const Any& value)
{
    return key.comparedToOne(Operator::Equal, value);
}

NSPredicate operator!=(const PredicateKey& key, const Any& value)
{
    return key.comparedToOne(Operator::NotEqual, value);
}

NSPredicate operator<(const PredicateKey& key, const Any& value)
{
    return key.comparedToOne(Operator::Less, value);
}

NSPredicate operator<=(const PredicateKey& key, const Any& value)
{
    return key.comparedToOne(Operator::LessOrEqual, value);
}

NSPredicate operator>(const PredicateKey& key, const Any& value)
{
    return key.comparedToOne(Operator::Greater, value);
}

NSPredicate operator>=(const PredicateKey& key, const Any& value)
{
    return key.comparedToOne(Operator::GreaterOrEqual, value);
}

} // namespace orrenby
