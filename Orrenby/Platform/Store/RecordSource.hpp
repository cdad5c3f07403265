#pragma once

/// @file
/// Where the records of a context come from and go to. Not in the umbrella header: between contexts and
/// stores.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class NSEntityDescription;

namespace detail {

struct ManagedRecord;
struct PredicatePlan;

/// A fetch that was checked.
struct FetchPlan {
    struct Order {
        std::size_t slot;
        bool isAscending;
    };

    const NSEntityDescription* entity;
    std::vector<Order> order = {};
    std::size_t limit = 0; ///< 0: none.
    std::size_t offset = 0;
    Ref<const PredicatePlan> predicate = {}; ///< Empty: everything.
};

/// One row, while it is handed over.
class RecordRow {
public:
    std::int64_t key = 0;
    std::int64_t version = 0;
    /// Replaces `values` by those of the row.
    virtual void read(std::vector<Any>& values) const = 0;

protected:
    ~RecordRow() = default;
};

class RecordReceiver {
public:
    virtual void take(const RecordRow& row) = 0;

protected:
    ~RecordReceiver() = default;
};

/// A record to save.
struct RecordChange {
    enum class Kind : std::uint8_t { Insert, Update, Delete };

    Kind kind;
    ManagedRecord* record;
    std::int64_t key = 0;      ///< Under which it was saved.
    bool isRowWritten = false; ///< Whether the version went up.
};

/// A store, or the parent of a context. Every operation fails with a `StoreError`.
class RecordSource {
public:
    virtual ~RecordSource() = default;

    virtual void fetch(const FetchPlan& plan, RecordReceiver& receiver) = 0;
    /// The version of the row, and its values; nothing when there is no such row.
    virtual std::optional<std::int64_t> load(
        const NSEntityDescription& entity, std::int64_t key, std::vector<Any>& values)
        = 0;
    /// The keys of a to-many relationship, ascending.
    virtual std::vector<std::int64_t> members(
        const NSEntityDescription& entity, std::size_t relationship, std::int64_t key)
        = 0;
    /// All or nothing.
    virtual void save(std::span<RecordChange> changes) = 0;
};

} // namespace detail

} // namespace orrenby
