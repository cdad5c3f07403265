#include "Orrenby/Platform/Store/ContextState.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Orrenby/Platform/Store/PredicatePlan.hpp"
#include "Orrenby/Platform/Store/ValueOrder.hpp"
#include <algorithm>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// Finds or makes the record of each row.
class RecordCollector final : public RecordReceiver {
public:
    RecordCollector(ContextState& state, Ref<const NSEntityDescription> entity)
        : m_state(state)
        , m_entity(std::move(entity))
    {}

    void take(const RecordRow& row) override
    {
        auto record = m_state.registry->findOrMake(m_entity, row.key, m_state.registry);
        if (record->isFault) {
            row.read(record->values);
            record->version = row.version;
            record->isFault = false;
        } else if (!record->isTracked && (m_state.parent || record->version != row.version)) {
            // Unsaved changes stay on top of the values from which they were made; the others are replaced
            // when observers may be told, which is not while the store is at work.
            std::vector<Any> values;
            row.read(values);
            m_newer.push_back({record.get(), row.version, std::move(values)});
        }
        records.push_back(std::move(record));
    }

    void finish()
    {
        for (auto& newer : m_newer)
            m_state.update(*newer.record, newer.version, std::move(newer.values));
    }

    std::vector<Ref<ManagedRecord>> records;

private:
    struct Newer {
        ManagedRecord* record;
        std::int64_t version;
        std::vector<Any> values;
    };

    ContextState& m_state;
    const Ref<const NSEntityDescription> m_entity;
    std::vector<Newer> m_newer;
};

/// A row of a parent's record.
class ParentRow final : public RecordRow {
public:
    explicit ParentRow(const ManagedRecord& record)
        : m_record(record)
    {
        key = record.key;
        version = record.version;
    }

    void read(std::vector<Any>& values) const override { values = m_record.values; }

private:
    const ManagedRecord& m_record;
};

void applyRange(std::vector<Ref<ManagedRecord>>& records, const FetchPlan& plan)
{
    records.erase(records.begin(),
        records.begin() + static_cast<std::ptrdiff_t>(std::min(plan.offset, records.size())));
    if (plan.limit != 0 && records.size() > plan.limit)
        records.resize(plan.limit);
}

} // namespace

FetchPlan ContextState::plan(const NSFetchRequest& request) const
{
    const auto entity = store->model()->entity(request.entity);
    if (entity == nullptr)
        throw StoreError(
            StoreError::Kind::InvalidPredicate, {.message = "There is no entity \"" + request.entity + "\""});
    // Larger ones than any store has stand for none and for all.
    constexpr std::size_t most = INT64_MAX;
    FetchPlan plan{.entity = entity.get(),
        .limit = std::min(request.fetchLimit, most),
        .offset = std::min(request.fetchOffset, most),
        .predicate = planPredicate(request.predicate, *entity)};
    for (const auto& descriptor : request.sortDescriptors) {
        const auto slot = entity->attributeIndex(descriptor.key);
        if (slot == NSEntityDescription::none)
            throw StoreError(StoreError::Kind::InvalidPredicate,
                {.message = request.entity + " has no attribute \"" + descriptor.key + "\" to sort by",
                    .key = descriptor.key});
        plan.order.push_back({slot, descriptor.isAscending});
    }
    return plan;
}

std::vector<Ref<ManagedRecord>> ContextState::fetch(const FetchPlan& plan)
{
    auto& from = source();
    const auto decides = [&](const NSEntityDescription* entity) {
        if (entity == plan.entity || !plan.predicate)
            return entity == plan.entity;
        const auto& others = plan.predicate->otherEntities;
        return std::find(others.begin(), others.end(), entity) != others.end();
    };
    const bool isForStore = !plan.predicate || plan.predicate->isTranslatable;
    const bool hasOwn = !isForStore
        || std::any_of(m_tracked.begin(), m_tracked.end(), [&](const Ref<ManagedRecord>& record) {
               return record->isTracked && decides(record->entity.get());
           });
    RecordCollector collector(*this, store->model()->entity(*plan.entity->name()));
    if (!hasOwn) {
        from.fetch(plan, collector);
        collector.finish();
        return std::move(collector.records);
    }

    // The store does not know what is changed here: all of it is read, then chosen from and ordered
    // here.
    from.fetch({.entity = plan.entity}, collector);
    collector.finish();
    auto& records = collector.records;
    std::erase_if(records, [](const Ref<ManagedRecord>& record) { return record->isDeleted; });
    for (const auto& record : m_tracked)
        if (record->isTracked && record->isInserted && record->entity.get() == plan.entity)
            records.push_back(record);
    if (plan.predicate)
        std::erase_if(records,
            [&](const Ref<ManagedRecord>& record) { return !fulfils(*this, record, plan.predicate->root); });
    std::sort(records.begin(), records.end(),
        [&](const Ref<ManagedRecord>& first, const Ref<ManagedRecord>& second) {
            for (const auto& order : plan.order) {
                const int comparison = compareValues(first->values[order.slot], second->values[order.slot]);
                if (comparison != 0)
                    return order.isAscending ? comparison < 0 : comparison > 0;
            }
            return comesBefore(first->key, second->key);
        });
    applyRange(records, plan);
    return std::move(records);
}

void ParentSource::fetch(const FetchPlan& plan, RecordReceiver& receiver)
{
    m_parent.performAndWait([&] {
        const auto records = m_state.fetch(plan);
        m_child.takeOverKeys();
        for (const auto& record : records)
            receiver.take(ParentRow(*record));
    });
}

std::optional<std::int64_t> ParentSource::load(
    const NSEntityDescription& entity, std::int64_t key, std::vector<Any>& values)
{
    return m_parent.performAndWait([&]() -> std::optional<std::int64_t> {
        const auto record = m_state.record(entity, key);
        if (record->isDeleted)
            return std::nullopt;
        if (record->isFault)
            m_state.fill(*record);
        m_child.takeOverKeys();
        values = record->values;
        return record->version;
    });
}

std::vector<std::int64_t> ParentSource::members(
    const NSEntityDescription& entity, std::size_t relationship, std::int64_t key)
{
    return m_parent.performAndWait([&] {
        auto keys = m_state.memberKeys(*m_state.record(entity, key), relationship);
        m_child.takeOverKeys();
        return keys;
    });
}

void ParentSource::save(std::span<RecordChange> changes)
{
    m_parent.performAndWait([&] {
        m_state.takeOverKeys();
        m_child.takeOverKeys();
        for (auto& change : changes)
            change.key = change.record->key;
        m_state.receive(changes);
    });
}

} // namespace orrenby::inline ORRENBY_ABI::detail
