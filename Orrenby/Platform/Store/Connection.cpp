#include "Orrenby/Platform/Store/Connection.hpp"
#include "Orrenby/Platform/Store/PredicateTree.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include <algorithm>
#include <chrono>
#include <sqlite3.h>
#include <sys/stat.h>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

StoreError::Kind kindOf(int resultCode)
{
    switch (resultCode & 0xFF) {
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return StoreError::Kind::CannotOpen;
    case SQLITE_READONLY:
        return StoreError::Kind::ReadOnly;
    case SQLITE_FULL:
        return StoreError::Kind::DiskFull;
    case SQLITE_IOERR:
        return StoreError::Kind::InputOutput;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        return StoreError::Kind::Busy;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_FORMAT:
        return StoreError::Kind::Corrupt;
    case SQLITE_CONSTRAINT:
        return StoreError::Kind::Constraint;
    case SQLITE_SCHEMA:
        return StoreError::Kind::SchemaMismatch;
    default:
        return StoreError::Kind::Other;
    }
}

const char* name(StoreSynchronous synchronous)
{
    switch (synchronous) {
    case StoreSynchronous::Normal:
        return "NORMAL";
    case StoreSynchronous::Off:
        return "OFF";
    default:
        return "FULL";
    }
}

std::string_view textOf(sqlite3_value* value)
{
    const auto* const begin = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {begin != nullptr ? begin : "", static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

/// `orrenby_matches(operator, ignoresCase, text, other)`, so that the same code decides in the store as in
/// memory.
void matches(sqlite3_context* context, int, sqlite3_value** arguments)
{
    const bool isEmpty = sqlite3_value_type(arguments[2]) == SQLITE_NULL
        || sqlite3_value_type(arguments[3]) == SQLITE_NULL;
    if (isEmpty)
        return sqlite3_result_null(context);
    const auto operation = static_cast<PredicateOperator>(sqlite3_value_int(arguments[0]));
    const bool isMatch = matchesText(
        operation, sqlite3_value_int(arguments[1]) != 0, textOf(arguments[2]), textOf(arguments[3]));
    sqlite3_result_int(context, isMatch ? 1 : 0);
}

int milliseconds(double seconds)
{
    // Also for what is no number.
    return seconds > 0 ? static_cast<int>(std::min(seconds * 1000, 2e9)) : 0;
}

/// SQLite takes a file of one byte for an empty one and would write over it.
void refuseSingleByte(const std::string& file)
{
    struct stat found = {};
    if (stat(file.c_str(), &found) == 0 && S_ISREG(found.st_mode) && found.st_size == 1)
        throw StoreError(StoreError::Kind::Corrupt, {.message = "The file holds a single byte"});
}

} // namespace

void throwStoreError(sqlite3* connection, int resultCode)
{
    const char* const message = connection != nullptr ? sqlite3_errmsg(connection)
                                                      : sqlite3_errstr(resultCode);
    throw StoreError(kindOf(resultCode), {.message = message, .resultCode = resultCode});
}

Connection::Connection(const StoreSettings& settings)
    : m_isReadOnly(settings.isReadOnly)
{
    const int access = settings.isReadOnly ? SQLITE_OPEN_READONLY
                                           : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    // Without a mutex: the store has one. A path is a path, never a URI.
    const int flags = access | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE | SQLITE_OPEN_EXRESCODE;
    const char* const path = settings.path.empty() ? ":memory:" : settings.path.c_str();
    try {
        if (settings.path.find('\0') != std::string::npos)
            throw StoreError(StoreError::Kind::CannotOpen, {.message = "The path holds a null character"});
        // A leading dot keeps a file named ":memory:" a file.
        const std::string file = path[0] == ':' && !settings.path.empty() ? "./" + settings.path : path;
        refuseSingleByte(file);
        const int resultCode = sqlite3_open_v2(file.c_str(), &m_handle, flags, nullptr);
        if (resultCode != SQLITE_OK)
            throwStoreError(m_handle, resultCode);
        configure(settings);
    } catch (...) {
        sqlite3_close_v2(m_handle);
        throw;
    }
}

Connection::~Connection() { sqlite3_close_v2(m_handle); }

void Connection::configure(const StoreSettings& settings)
{
    sqlite3_busy_timeout(m_handle, milliseconds(settings.busyTimeout));
    // What a damaged or forged file says is not trusted, and cannot run anything.
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_create_function_v2(m_handle, "orrenby_matches", 4,
        SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY, nullptr, matches, nullptr, nullptr, nullptr);
    execute("PRAGMA foreign_keys = ON; PRAGMA cell_size_check = ON; PRAGMA temp_store = MEMORY;");
    execute(std::string("PRAGMA synchronous = ") + name(settings.synchronous));
    if (!settings.isReadOnly && !settings.path.empty())
        enterWAL(milliseconds(settings.busyTimeout));
    else
        integer("PRAGMA schema_version"); // the first look into the file, which tells what is none
    if (settings.maximumPageCount > 0)
        execute("PRAGMA max_page_count = " + std::to_string(settings.maximumPageCount));
}

void Connection::enterWAL(int timeout)
{
    constexpr int pause = 2; // milliseconds

    // Two that change a new file to this mode at the same time would wait for each other for ever; one of
    // them is told at once that the file is busy, without having waited.
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeout);
    int resultCode = SQLITE_OK;
    do {
        resultCode = sqlite3_exec(m_handle, "PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr);
    } while ((resultCode & 0xFF) == SQLITE_BUSY && std::chrono::steady_clock::now() < end
        && sqlite3_sleep(pause) > 0);
    if (resultCode != SQLITE_OK)
        throwStoreError(m_handle, resultCode);
}

void Connection::execute(const std::string& sql)
{
    const int resultCode = sqlite3_exec(m_handle, sql.c_str(), nullptr, nullptr, nullptr);
    if (resultCode != SQLITE_OK)
        throwStoreError(m_handle, resultCode);
}

Statement Connection::prepare(std::string_view sql)
{
    sqlite3_stmt* statement = nullptr;
    const int resultCode = sqlite3_prepare_v3(
        m_handle, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    if (resultCode != SQLITE_OK)
        throwStoreError(m_handle, resultCode);
    return Statement(statement);
}

std::int64_t Connection::integer(std::string_view sql)
{
    auto statement = prepare(sql);
    return statement.step() ? statement.integer(0) : 0;
}

std::int64_t Connection::changeCount() const noexcept { return sqlite3_changes64(m_handle); }

Transaction::Transaction(Connection& connection, Kind kind)
    : m_connection(connection)
    , m_isSavepoint(sqlite3_get_autocommit(connection.handle()) == 0)
{
    m_connection.execute(m_isSavepoint ? "SAVEPOINT nested"
            : kind == Kind::Write      ? "BEGIN IMMEDIATE"
                                       : "BEGIN");
}

Transaction::~Transaction()
{
    if (m_isOpen)
        undo();
}

void Transaction::commit()
{
    m_isOpen = false;
    try {
        m_connection.execute(m_isSavepoint ? "RELEASE nested" : "COMMIT");
    } catch (...) {
        undo();
        throw;
    }
}

void Transaction::undo() noexcept
{
    // Some failures, a full disk among them, have ended the transaction already.
    if (sqlite3_get_autocommit(m_connection.handle()) != 0)
        return;
    const char* const sql = m_isSavepoint ? "ROLLBACK TO nested; RELEASE nested" : "ROLLBACK";
    sqlite3_exec(m_connection.handle(), sql, nullptr, nullptr, nullptr);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
