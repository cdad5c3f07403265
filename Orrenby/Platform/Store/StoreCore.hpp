#pragma once

/// @file
/// What a store does for its contexts. Not in the umbrella header: a store keeps it to itself.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Store/Connection.hpp"
#include "Orrenby/Platform/Store/ManagedRecord.hpp"
#include "Orrenby/Platform/Store/RecordSource.hpp"
#include "Orrenby/Platform/Store/Statement.hpp"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class NSManagedObjectModel;

namespace detail {

/// The connection of a store with its prepared statements. Safe to use from several threads.
class StoreCore final : public RecordSource {
public:
    StoreCore(const NSManagedObjectModel& model, const StoreSettings& settings);

    void fetch(const FetchPlan& plan, RecordReceiver& receiver) override;
    std::optional<std::int64_t> load(
        const NSEntityDescription& entity, std::int64_t key, std::vector<Any>& values) override;
    std::vector<std::int64_t> members(
        const NSEntityDescription& entity, std::size_t relationship, std::int64_t key) override;
    void save(std::span<RecordChange> changes) override;

private:
    void prepareSchema(const NSManagedObjectModel& model);
    void makeSchema(const NSManagedObjectModel& model);
    void checkSchema(const NSManagedObjectModel& model);

    /// Gives permanent keys to the objects that are saved for the first time.
    NewKeys assignKeys(std::span<RecordChange> changes);
    void insertRow(const RecordChange& change, const NewKeys& newKeys);
    bool updateRow(const RecordChange& change, const NewKeys& newKeys);
    bool deleteRow(const RecordChange& change);
    void savePairs(const RecordChange& change, const NewKeys& newKeys);
    void bindValues(Statement& statement, int first, const std::vector<Any>& values,
        std::size_t attributeCount, const NewKeys& newKeys);

    /// The statement for that text, prepared once.
    Statement& statement(const std::string& sql);

    struct EntityStatements {
        Statement insert;
        Statement update;
        Statement remove;
        Statement load;
    };
    EntityStatements& statements(const NSEntityDescription& entity);

    std::mutex m_mutex;
    Connection m_connection;
    std::unordered_map<std::string, Statement> m_statements;
    std::unordered_map<const NSEntityDescription*, EntityStatements> m_entityStatements;
    /// Those used last: objects of one entity come in a row.
    std::pair<const NSEntityDescription*, EntityStatements*> m_latest = {};
};

} // namespace detail

} // namespace orrenby
