#pragma once

/// @file
/// A connection to a store file. Not in the umbrella header: the stores keep theirs to themselves.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Store/Statement.hpp"
#include "Orrenby/Platform/Store/StoreSettings.hpp"
#include <cstdint>
#include <string>
#include <string_view>

struct sqlite3;

namespace orrenby::inline ORRENBY_ABI::detail {

/// One open store file, or a store in memory that nobody else sees.
///
/// A file is opened in WAL mode, so that readers never wait for the one writer, with foreign keys enforced.
/// Texts that are executed come from the library alone; values are bound. Every failure is a `StoreError`.
///
/// Not synchronised. It outlives its statements.
class ORRENBY_EXPORT Connection {
public:
    explicit Connection(const StoreSettings& settings);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    /// Runs all statements of the text; their rows are dropped.
    void execute(const std::string& sql);

    Statement prepare(std::string_view sql);

    /// The integer in the first column of the first row; 0 when there is none.
    std::int64_t integer(std::string_view sql);

    /// Rows that the latest statement inserted, changed or deleted.
    std::int64_t changeCount() const noexcept;

    bool isReadOnly() const noexcept { return m_isReadOnly; }
    sqlite3* handle() const noexcept { return m_handle; }

private:
    void configure(const StoreSettings& settings);
    void enterWAL(int timeout);

    sqlite3* m_handle = nullptr;
    bool m_isReadOnly;
};

/// Throws the failure that the engine reports for its latest call.
[[noreturn]] ORRENBY_EXPORT void throwStoreError(sqlite3* connection, int resultCode);

/// All or nothing: what was done since is undone unless it is committed.
///
/// The outermost one takes the place of the one writer at once, waiting for the busy timeout, so that nothing
/// it reads can change before it writes. Inside a transaction it is a savepoint.
class ORRENBY_EXPORT Transaction {
public:
    enum class Kind { Write, Read };

    explicit Transaction(Connection& connection, Kind kind = Kind::Write);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    /// When this throws, nothing was kept.
    void commit();

private:
    void undo() noexcept;

    Connection& m_connection;
    bool m_isSavepoint;
    bool m_isOpen = true;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
