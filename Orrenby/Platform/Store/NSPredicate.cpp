#include "Orrenby/Platform/Store/NSPredicate.hpp"
#include "Orrenby/Platform/Store/PredicateTree.hpp"
#include "Orrenby/Platform/Store/StoreOutcome.hpp"

namespace orrenby::inline ORRENBY_ABI {

using detail::PredicateKind;

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
    return detail::storeOutcome([&] { return make(format, arguments); });
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

std::string NSPredicate::description() const { return detail::predicateText(*m_node); }

bool operator==(const NSPredicate& first, const NSPredicate& second)
{
    return first.m_node == second.m_node || detail::isSamePredicate(*first.m_node, *second.m_node);
}

} // namespace orrenby
