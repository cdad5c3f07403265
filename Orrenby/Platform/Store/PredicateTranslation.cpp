#include "Orrenby/Platform/Store/NSEntityDescription.hpp"
#include "Orrenby/Platform/Store/PredicatePlan.hpp"
#include "Orrenby/Platform/Store/StoreSchema.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

class Translation {
public:
    explicit Translation(std::vector<Any>& values)
        : m_values(values)
    {}

    // What is empty makes a condition null, which counts as false everywhere but beneath a negation.
    std::string condition(const CheckedPredicate& predicate)
    {
        switch (predicate.kind) {
        case PredicateKind::True:
            return "1";
        case PredicateKind::False:
            return "0";
        case PredicateKind::And:
            return chain(predicate, " AND ");
        case PredicateKind::Or:
            return chain(predicate, " OR ");
        case PredicateKind::Not:
            return "((" + condition(predicate.children.front()) + ") IS NOT TRUE)";
        case PredicateKind::Comparison:
            break;
        }
        return search(predicate, 0, "t0");
    }

private:
    std::string chain(const CheckedPredicate& predicate, const char* word)
    {
        std::string text = "(";
        for (const auto& child : predicate.children)
            text += (text.size() > 1 ? word : "") + condition(child);
        return text + ")";
    }

    std::string nextTable() { return "t" + std::to_string(++m_tableCount); }

    /// The comparison for one of the values that the left path leads to from that hop.
    std::string search(const CheckedPredicate& predicate, std::size_t hop, const std::string& table)
    {
        const auto& path = predicate.left;
        const auto next = path.nextToMany(hop);
        if (next == path.hops.size()) {
            const auto text = comparison(predicate, value(path, hop, path.hops.size(), path.column, table));
            return predicate.isUnfulfilled ? '(' + text + " IS NOT TRUE)" : text;
        }
        const auto& relationship = *path.hops[next].relationship;
        const auto owner = next == hop
            ? table + ".\"_key\""
            : value(
                path, hop, next - 1, quotedName(path.hops[next - 1].relationship->description.name), table);
        const auto rows = memberRows(relationship);
        const auto row = nextTable();
        auto tables = rows.table + " AS " + row;
        auto member = row;
        if (relationship.storage == RelationshipStorage::JoinTable) {
            member = nextTable();
            tables += " JOIN " + quotedName(*relationship.destination->name()) + " AS " + member + " ON "
                + member + ".\"_key\" = " + row + '.' + rows.member;
        }
        return "EXISTS (SELECT 1 FROM " + tables + " WHERE " + row + '.' + rows.owner + " = " + owner
            + " AND " + search(predicate, next + 1, member) + ')';
    }

    /// The value of that column at the end of hops that lead to one object each.
    std::string value(const CheckedPath& path, std::size_t hop, std::size_t end, const std::string& column,
        const std::string& table)
    {
        if (hop == end)
            return column.empty() ? count(*path.counted->relationship, table) : table + '.' + column;
        const auto& relationship = *path.hops[hop].relationship;
        const auto next = nextTable();
        return "(SELECT " + value(path, hop + 1, end, column, next) + " FROM "
            + quotedName(*relationship.destination->name()) + " AS " + next + " WHERE " + next
            + ".\"_key\" = " + table + '.' + quotedName(relationship.description.name) + ')';
    }

    std::string count(const ResolvedRelationship& relationship, const std::string& table)
    {
        const auto rows = memberRows(relationship);
        const auto row = nextTable();
        return "(SELECT count(*) FROM " + rows.table + " AS " + row + " WHERE " + row + '.' + rows.owner
            + " = " + table + ".\"_key\")";
    }

    std::string operand(const CheckedPredicate& predicate)
    {
        if (predicate.right)
            return value(*predicate.right, 0, predicate.right->hops.size(), predicate.right->column, "t0");
        return bound(predicate.values[0]);
    }

    std::string bound(const Any& value)
    {
        m_values.push_back(value);
        return "?";
    }

    std::string comparison(const CheckedPredicate& predicate, const std::string& left)
    {
        constexpr const char* signs[] = {" IS ", " IS NOT ", " < ", " <= ", " > ", " >= "};

        if (predicate.operation <= PredicateOperator::GreaterOrEqual)
            return '(' + left + signs[static_cast<std::size_t>(predicate.operation)] + operand(predicate)
                + ')';
        if (predicate.operation == PredicateOperator::In)
            return membership(predicate, left);
        if (predicate.operation == PredicateOperator::Between)
            return range(predicate, left);
        return "orrenby_matches(" + std::to_string(static_cast<int>(predicate.operation)) + ", "
            + (predicate.ignoresCase ? "1, " : "0, ") + left + ", " + operand(predicate) + ')';
    }

    std::string range(const CheckedPredicate& predicate, const std::string& left)
    {
        // One after the other, as their values are.
        auto text = '(' + left + " BETWEEN " + bound(predicate.values[0]);
        text += " AND " + bound(predicate.values[1]);
        return text + ')';
    }

    std::string membership(const CheckedPredicate& predicate, const std::string& left)
    {
        bool hasEmpty = false;
        std::string list;
        for (const auto& value : predicate.values)
            if (value.isNull())
                hasEmpty = true;
            else
                list += (list.empty() ? "" : ", ") + bound(value);
        const auto condition = list.empty() ? std::string("0") : left + " IN (" + list + ')';
        return '(' + condition + (hasEmpty ? " OR " + left + " IS NULL)" : ")");
    }

    std::vector<Any>& m_values;
    std::size_t m_tableCount = 0;
};

} // namespace

std::string translatePredicate(const CheckedPredicate& predicate, std::vector<Any>& values)
{
    return Translation(values).condition(predicate);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
