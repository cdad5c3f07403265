#include "Orrenby/Platform/Store/ContextState.hpp"
#include "Orrenby/Platform/Store/PredicatePlan.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

class Evaluation {
public:
    Evaluation(ContextState& state, const Ref<ManagedRecord>& record)
        : m_state(state)
        , m_record(record)
    {}

    bool isFulfilled(const CheckedPredicate& predicate) const
    {
        const auto isChildFulfilled = [&](const CheckedPredicate& child) { return isFulfilled(child); };
        const auto& children = predicate.children;
        switch (predicate.kind) {
        case PredicateKind::True:
            return true;
        case PredicateKind::False:
            return false;
        case PredicateKind::And:
            return std::all_of(children.begin(), children.end(), isChildFulfilled);
        case PredicateKind::Or:
            return std::any_of(children.begin(), children.end(), isChildFulfilled);
        case PredicateKind::Not:
            return !isFulfilled(children.front());
        case PredicateKind::Comparison:
            break;
        }
        Any right;
        if (predicate.right)
            finds(*predicate.right, 0, m_record, [&](const Any& value) {
                right = value;
                return true;
            });
        return finds(predicate.left, 0, m_record,
            [&](const Any& left) { return compare(left, predicate, right) != predicate.isUnfulfilled; });
    }

private:
    static bool compare(const Any& left, const CheckedPredicate& predicate, const Any& right)
    {
        const auto& values = predicate.values;
        if (predicate.operation == PredicateOperator::In)
            return std::any_of(values.begin(), values.end(),
                [&](const Any& value) { return fulfils(left, PredicateOperator::Equal, false, value); });
        if (predicate.operation == PredicateOperator::Between)
            return fulfils(left, PredicateOperator::GreaterOrEqual, false, values[0])
                && fulfils(left, PredicateOperator::LessOrEqual, false, values[1]);
        if (predicate.pattern)
            return !left.isNull() && matches(*predicate.pattern, left.text());
        return fulfils(left, predicate.operation, predicate.ignoresCase, predicate.right ? right : values[0]);
    }

    static bool matches(const RegularExpression& pattern, std::string_view text)
    {
        const auto outcome = pattern.tryMatches(text);
        if (!outcome.isSuccess())
            throwInvalidPredicate("The pattern cannot be tried on a text that is stored ("
                + outcome.error()->description() + ")");
        return *outcome.value();
    }

    /// Whether one of the values at the end of the path passes.
    template <class Test>
    bool finds(const CheckedPath& path, std::size_t hop, const Ref<ManagedRecord>& record, Test&& test) const
    {
        if (hop == path.hops.size()) {
            if (path.counted)
                return test(isAvailable(*record) ? count(*record, path.counted->index) : Any());
            if (!path.slot)
                return test(Any(record->key));
            return isAvailable(*record) ? test(record->values[*path.slot]) : test(Any());
        }
        const auto& [relationship, index] = path.hops[hop];
        if (relationship->description.isToMany) {
            const auto members = m_state.members(*record, index);
            return std::any_of(members.begin(), members.end(),
                [&](const Ref<ManagedRecord>& member) { return finds(path, hop + 1, member, test); });
        }
        if (isAvailable(*record))
            if (const auto* const key = record->values[relationship->slot].template get<std::int64_t>()) {
                const auto target = m_state.record(*relationship->destination, *key);
                if (!target->isDeleted)
                    return finds(path, hop + 1, target, test);
            }
        return path.nextToMany(hop) == path.hops.size() && test(Any());
    }

    Any count(ManagedRecord& record, std::size_t relationship) const
    {
        return static_cast<std::int64_t>(m_state.members(record, relationship).size());
    }

    /// Whether the values are known, after reading them if need be.
    bool isAvailable(ManagedRecord& record) const
    {
        if (!record.isFault)
            return true;
        try {
            m_state.fill(record);
            return true;
        } catch (const StoreError& error) {
            // Somebody else deleted it; for the path there is nothing.
            if (error.kind() == StoreError::Kind::ObjectGone)
                return false;
            throw;
        }
    }

    ContextState& m_state;
    const Ref<ManagedRecord>& m_record;
};

} // namespace

bool fulfils(ContextState& state, const Ref<ManagedRecord>& record, const CheckedPredicate& predicate)
{
    return Evaluation(state, record).isFulfilled(predicate);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
