#include "Orrenby/Platform/Store/Statement.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Store/Connection.hpp"
#include <sqlite3.h>

namespace orrenby::inline ORRENBY_ABI::detail {

Statement::~Statement() { sqlite3_finalize(m_handle); }

void Statement::check(int resultCode) const
{
    if (resultCode != SQLITE_OK)
        throwStoreError(sqlite3_db_handle(m_handle), resultCode);
}

void Statement::bind(int position, std::int64_t value)
{
    check(sqlite3_bind_int64(m_handle, position, value));
}

void Statement::bindText(int position, std::string_view text)
{
    // A view of nothing would be bound as null.
    const char* const begin = text.data() != nullptr ? text.data() : "";
    check(sqlite3_bind_text64(m_handle, position, begin, text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

void Statement::bindNull(int position) { check(sqlite3_bind_null(m_handle, position)); }

void Statement::bind(int position, const Any& value)
{
    switch (value.kind()) {
    case Any::Kind::Null:
        return bindNull(position);
    case Any::Kind::Bool:
        return bind(position, std::int64_t(*value.get<bool>()));
    case Any::Kind::Int:
        return bind(position, *value.get<std::int64_t>());
    case Any::Kind::Double:
        return check(sqlite3_bind_double(m_handle, position, *value.get<double>()));
    case Any::Kind::Date:
        return check(sqlite3_bind_double(m_handle, position, value.get<Date>()->secondsSince1970()));
    case Any::Kind::Text: {
        const auto text = value.text();
        return check(
            sqlite3_bind_text64(m_handle, position, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8));
    }
    case Any::Kind::Bytes: {
        const auto& bytes = *value.get<Data>();
        if (bytes.empty())
            return check(sqlite3_bind_zeroblob(m_handle, position, 0));
        return check(sqlite3_bind_blob64(m_handle, position, bytes.data(), bytes.size(), SQLITE_STATIC));
    }
    default:
        if (const auto* const uuid = value.get<UUID>())
            return check(sqlite3_bind_blob64(
                m_handle, position, uuid->bytes().data(), uuid->bytes().size(), SQLITE_STATIC));
        fatalError("A value of this kind cannot be stored", "Platform/Statement", 64);
    }
}

bool Statement::step()
{
    const int resultCode = sqlite3_step(m_handle);
    if (resultCode == SQLITE_ROW)
        return true;
    if (resultCode != SQLITE_DONE) {
        auto* const connection = sqlite3_db_handle(m_handle);
        const int extendedCode = sqlite3_extended_errcode(connection);
        // Resetting keeps the words of the failure.
        sqlite3_reset(m_handle);
        throwStoreError(connection, extendedCode);
    }
    sqlite3_reset(m_handle);
    return false;
}

void Statement::run()
{
    while (step()) {}
}

void Statement::reset() noexcept
{
    sqlite3_reset(m_handle);
    sqlite3_clear_bindings(m_handle);
}

std::int64_t Statement::integer(int column) const noexcept { return sqlite3_column_int64(m_handle, column); }

double Statement::floating(int column) const noexcept { return sqlite3_column_double(m_handle, column); }

bool Statement::isNull(int column) const noexcept
{
    return sqlite3_column_type(m_handle, column) == SQLITE_NULL;
}

std::string_view Statement::text(int column) const noexcept
{
    const auto* const begin = sqlite3_column_text(m_handle, column);
    if (begin == nullptr)
        return {};
    return {reinterpret_cast<const char*>(begin),
        static_cast<std::size_t>(sqlite3_column_bytes(m_handle, column))};
}

} // namespace orrenby::inline ORRENBY_ABI::detail
