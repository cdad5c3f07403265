#include "Orrenby/Platform/Store/ManagedRecord.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectModel.hpp"
#include "Orrenby/Platform/Store/StoreCore.hpp"
#include "Orrenby/Platform/Store/StoreSchema.hpp"
#include <string>
#include <unordered_map>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

std::int64_t permanent(std::int64_t key, const NewKeys& newKeys)
{
    // An object that was deleted before it was ever saved: no row has that key, and the commit says so.
    return key >= 0 ? key : newKeys.find(key).value_or(0);
}

} // namespace

void StoreCore::save(std::span<RecordChange> changes)
{
    const std::lock_guard lock(m_mutex);
    Transaction transaction(m_connection);
    const auto newKeys = assignKeys(changes);
    std::vector<NSManagedObjectID> conflicts;
    const auto keepConflict = [&](const RecordChange& change, bool isInOrder) {
        if (!isInOrder)
            conflicts.emplace_back(change.record->entity, change.record->key);
    };
    for (auto& change : changes) {
        switch (change.kind) {
        case RecordChange::Kind::Insert:
            insertRow(change, newKeys);
            break;
        case RecordChange::Kind::Update:
            change.isRowWritten = change.record->snapshot != nullptr
                && change.record->values != *change.record->snapshot;
            if (change.isRowWritten)
                keepConflict(change, updateRow(change, newKeys));
            break;
        case RecordChange::Kind::Delete:
            keepConflict(change, deleteRow(change));
            break;
        }
        savePairs(change, newKeys);
    }
    if (!conflicts.empty())
        throw StoreError(StoreError::Kind::Conflict,
            {.message = std::to_string(conflicts.size()) + " objects were saved by somebody else first",
                .objectIDs = std::move(conflicts)});
    transaction.commit();
}

NewKeys StoreCore::assignKeys(std::span<RecordChange> changes)
{
    std::unordered_map<const NSEntityDescription*, std::int64_t> latest;
    NewKeys newKeys;
    auto& select = statement("SELECT latest FROM _keys WHERE entity = ?");
    for (auto& change : changes) {
        change.key = change.record->key;
        if (change.kind != RecordChange::Kind::Insert)
            continue;
        const auto* const entity = change.record->entity.get();
        auto [found, isNew] = latest.try_emplace(entity, 0);
        if (isNew) {
            const StatementRun run(select);
            select.bindText(1, *entity->name());
            if (!select.step())
                throw StoreError(
                    StoreError::Kind::Corrupt, {.message = "The file has lost count of its objects"});
            found->second = select.integer(0);
        }
        change.key = ++found->second;
        change.isRowWritten = true;
        newKeys.add(change.record->key, change.key);
    }
    auto& update = statement("UPDATE _keys SET latest = ? WHERE entity = ?");
    for (const auto& [entity, key] : latest) {
        update.bind(1, key);
        update.bindText(2, *entity->name());
        update.run();
    }
    newKeys.sort();
    return newKeys;
}

void StoreCore::bindValues(Statement& statement, int first, const std::vector<Any>& values,
    std::size_t attributeCount, const NewKeys& newKeys)
{
    for (std::size_t slot = 0; slot < values.size(); ++slot) {
        const int position = first + static_cast<int>(slot);
        const Any& value = values[slot];
        if (slot >= attributeCount && !value.isNull())
            statement.bind(position, permanent(*value.get<std::int64_t>(), newKeys));
        else
            statement.bind(position, value);
    }
}

void StoreCore::insertRow(const RecordChange& change, const NewKeys& newKeys)
{
    const auto& record = *change.record;
    auto& insert = statements(*record.entity).insert;
    insert.bind(1, change.key);
    bindValues(insert, 2, record.values, record.entity->attributes().size(), newKeys);
    insert.run();
}

bool StoreCore::updateRow(const RecordChange& change, const NewKeys& newKeys)
{
    const auto& record = *change.record;
    auto& update = statements(*record.entity).update;
    bindValues(update, 1, record.values, record.entity->attributes().size(), newKeys);
    const int next = static_cast<int>(record.values.size()) + 1;
    update.bind(next, record.key);
    update.bind(next + 1, record.version);
    update.run();
    return m_connection.changeCount() == 1;
}

bool StoreCore::deleteRow(const RecordChange& change)
{
    const auto& record = *change.record;
    auto& entityStatements = statements(*record.entity);
    auto& remove = entityStatements.remove;
    if (record.isFault) {
        // Deleted without ever having been read: whatever version there is.
        auto& any = statement("DELETE FROM " + quotedName(*record.entity->name()) + " WHERE \"_key\" = ?");
        any.bind(1, record.key);
        any.run();
        return true;
    }
    remove.bind(1, record.key);
    remove.bind(2, record.version);
    remove.run();
    if (m_connection.changeCount() == 1)
        return true;
    // What somebody else deleted first is as wanted.
    auto& select = entityStatements.load;
    const StatementRun run(select);
    select.bind(1, record.key);
    return !select.step();
}

void StoreCore::savePairs(const RecordChange& change, const NewKeys& newKeys)
{
    const auto& record = *change.record;
    for (const auto& relationship : record.entity->relationships()) {
        if (relationship.storage != RelationshipStorage::JoinTable)
            continue;
        const auto table = quotedName(relationship.joinTable);
        if (change.kind == RecordChange::Kind::Delete) {
            auto& remove = statement("DELETE FROM " + table + " WHERE " + relationship.ownColumn + " = ?");
            remove.bind(1, change.key);
            remove.run();
            continue;
        }
        const auto& set = record.sets[relationship.slot];
        if (!relationship.writesJoinTable || !set.hasChanges())
            continue;
        const auto run = [&](Statement& pairs, std::int64_t other) {
            pairs.bind(1, change.key);
            pairs.bind(2, permanent(other, newKeys));
            pairs.run();
        };
        auto& insert = statement("INSERT OR IGNORE INTO " + table + " (source, target) VALUES (?, ?)");
        for (const auto other : set.added)
            run(insert, other);
        auto& remove = statement("DELETE FROM " + table + " WHERE source = ? AND target = ?");
        for (const auto other : set.removed)
            run(remove, other);
    }
}

} // namespace orrenby::inline ORRENBY_ABI::detail
