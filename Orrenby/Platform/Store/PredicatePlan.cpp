#include "Orrenby/Platform/Store/PredicatePlan.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Store/NSEntityDescription.hpp"
#include "Orrenby/Platform/Store/NSManagedObject.hpp"
#include "Orrenby/Platform/Store/NSPredicate.hpp"
#include "Orrenby/Platform/Store/StoreSchema.hpp"
#include <algorithm>
#include <cmath>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

using Operator = PredicateOperator;

// The engine's own limits on nesting are not far above.
constexpr std::size_t mostTranslatedDepth = 8;
constexpr std::size_t mostTranslatedComparisons = 200;
constexpr std::size_t mostTranslatedHops = 3;

[[noreturn]] void refuse(std::string message, const std::string& key)
{
    throw StoreError(StoreError::Kind::InvalidPredicate, {.message = std::move(message), .key = key});
}

bool isNumber(AttributeKind kind) { return kind == AttributeKind::Int || kind == AttributeKind::Double; }

bool isComparable(const CheckedPath& first, const CheckedPath& second)
{
    if (!first.kind || !second.kind)
        return !first.kind && !second.kind && first.object == second.object;
    return first.kind == second.kind || (isNumber(*first.kind) && isNumber(*second.kind));
}

class Checker {
public:
    Checker(const NSEntityDescription& entity, PredicatePlan& plan)
        : m_entity(entity)
        , m_plan(plan)
    {}

    CheckedPredicate check(const PredicateNode& node)
    {
        auto checked = node.kind == PredicateKind::Comparison ? checkComparison(node.comparison)
                                                              : CheckedPredicate{.kind = node.kind};
        for (const auto& child : node.children)
            checked.children.push_back(check(*child));
        return checked;
    }

private:
    CheckedPredicate checkComparison(const PredicateComparison& comparison)
    {
        CheckedPredicate checked{.kind = PredicateKind::Comparison,
            .operation = comparison.operation,
            .ignoresCase = comparison.ignoresCase,
            .left = checkPath(comparison.left, comparison.quantifier != PredicateQuantifier::None),
            .pattern = comparison.pattern,
            .isUnfulfilled = comparison.quantifier == PredicateQuantifier::All};
        // The engine would have to be told of a text that takes too long.
        if (checked.pattern)
            m_plan.isTranslatable = false;
        const auto& key = comparison.left.empty() ? std::string("SELF") : comparison.left.back();
        if (comparesTexts(checked.operation) && checked.left.kind != AttributeKind::Text)
            refuse("Only texts begin with, contain or are like something: " + key, key);
        const bool isEquality = checked.operation == Operator::Equal
            || checked.operation == Operator::NotEqual || checked.operation == Operator::In;
        if (!checked.left.kind && !isEquality)
            refuse("Objects have no order: " + key, key);
        if (comparison.right) {
            checked.right = checkPath(*comparison.right, false);
            if (!isComparable(checked.left, *checked.right))
                refuse("Values of different kinds are compared: " + key, key);
        }
        for (const auto& value : comparison.values) {
            if (value.isNull() && !isEquality)
                refuse("Nothing is less, greater or like what is empty: " + key, key);
            checked.values.push_back(value.isNull() ? Any() : checkValue(value, checked.left, key));
        }
        if (!checked.isUnfulfilled)
            return checked;
        CheckedPredicate none{.kind = PredicateKind::Not};
        none.children.push_back(std::move(checked));
        return none;
    }

    CheckedPath checkPath(const PredicatePath& keys, bool isQuantified)
    {
        CheckedPath path;
        bool hasToMany = false;
        const auto* entity = &m_entity;
        for (const auto& key : keys) {
            const bool isLast = &key == &keys.back();
            if (const auto slot = entity->attributeIndex(key); slot != NSEntityDescription::none && isLast) {
                path.slot = slot;
                path.kind = entity->attributes()[slot].kind;
                path.column = quotedName(key);
                break;
            }
            if (key == countKey)
                refuse("Only the objects of a relationship with many of them are counted", key);
            const auto index = entity->relationshipIndex(key);
            if (index == NSEntityDescription::none)
                refuse(entity->name().value_or("") + " has no "
                        + (isLast ? "attribute or relationship \"" : "relationship \"") + key + '"',
                    key);
            const auto& relationship = entity->relationships()[index];
            const bool isToMany = relationship.description.isToMany;
            entity = relationship.destination;
            if (isToMany && &key + 1 == &keys.back() && keys.back() == countKey) {
                path.counted = CheckedPath::Hop{&relationship, index};
                path.kind = AttributeKind::Int;
                m_plan.otherEntities.push_back(entity);
                break;
            }
            if (isToMany && !isQuantified)
                refuse("A relationship with many objects needs ANY, ALL, NONE or @count: " + key, key);
            hasToMany |= isToMany;
            if (isLast && !isToMany) {
                path.slot = relationship.slot;
                path.column = quotedName(key);
                path.object = entity;
                break;
            }
            path.hops.push_back({&relationship, index});
            m_plan.otherEntities.push_back(entity);
        }
        if (isQuantified && !hasToMany)
            refuse("ANY, ALL and NONE need a relationship with many objects",
                keys.empty() ? std::string() : keys.back());
        if (!path.slot && !path.counted) {
            path.column = quotedName("_key");
            path.object = entity;
        }
        if (path.hops.size() > mostTranslatedHops)
            m_plan.isTranslatable = false;
        return path;
    }

    static Any checkValue(const Any& value, const CheckedPath& path, const std::string& key)
    {
        if (!path.kind)
            return checkObject(value, *path.object, key);
        const auto number = value.kind() == Any::Kind::Float
            ? value.cast<double>().value_or(*value.get<float>())
            : value.kind() == Any::Kind::Double ? *value.get<double>()
                                                : 0.0;
        const bool isFloating = value.kind() == Any::Kind::Float || value.kind() == Any::Kind::Double;
        bool isFitting = false;
        switch (*path.kind) {
        case AttributeKind::Int:
        case AttributeKind::Double:
            isFitting = value.kind() == Any::Kind::Int || (isFloating && !std::isnan(number));
            break;
        case AttributeKind::Bool:
            isFitting = value.kind() == Any::Kind::Bool;
            break;
        case AttributeKind::Text:
            isFitting = value.kind() == Any::Kind::Text;
            break;
        case AttributeKind::Bytes:
            isFitting = value.kind() == Any::Kind::Bytes;
            break;
        case AttributeKind::Date:
            isFitting = value.kind() == Any::Kind::Date && !std::isnan(value.get<Date>()->secondsSince1970());
            break;
        case AttributeKind::UUID:
            isFitting = value.get<UUID>() != nullptr;
            break;
        }
        if (!isFitting)
            refuse("The value for " + key + " is of another kind", key);
        return isFloating ? Any(number) : value;
    }

    static Any checkObject(const Any& value, const NSEntityDescription& entity, const std::string& key)
    {
        const auto object = value.object<NSManagedObject>();
        const auto* const given = value.get<NSManagedObjectID>();
        const auto objectID = object ? std::optional(object->objectID())
            : given != nullptr       ? std::optional(*given)
                                     : std::nullopt;
        if (!objectID || objectID->entity().get() != &entity)
            refuse("The value for " + key + " is no object of " + entity.name().value_or(""), key);
        return objectID->key();
    }

    const NSEntityDescription& m_entity;
    PredicatePlan& m_plan;
};

} // namespace

std::size_t CheckedPath::nextToMany(std::size_t hop) const
{
    while (hop < hops.size() && !hops[hop].relationship->description.isToMany)
        ++hop;
    return hop;
}

Ref<const PredicatePlan> planPredicate(const NSPredicate& predicate, const NSEntityDescription& entity)
{
    const auto& node = *predicate.node();
    if (node.kind == PredicateKind::True)
        return nullptr;
    PredicatePlan plan;
    plan.isTranslatable = node.depth <= mostTranslatedDepth
        && node.comparisonCount <= mostTranslatedComparisons;
    plan.root = Checker(entity, plan).check(node);
    return std::make_shared<const PredicatePlan>(std::move(plan));
}

} // namespace orrenby::inline ORRENBY_ABI::detail
