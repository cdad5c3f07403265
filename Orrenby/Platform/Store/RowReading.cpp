#include "Orrenby/Platform/Store/RowReading.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Store/NSEntityDescription.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include <algorithm>
#include <sqlite3.h>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

[[noreturn]] void refuse(const NSEntityDescription& entity, const std::string& key)
{
    throw StoreError(StoreError::Kind::Corrupt,
        {.message = "A value of " + entity.name().value_or("") + "." + key + " is of another kind",
            .key = key});
}

Any attributeValue(
    sqlite3_stmt* row, int column, const NSEntityDescription& entity, const AttributeDescription& attribute)
{
    const int type = sqlite3_column_type(row, column);
    if (type == SQLITE_NULL)
        return {};
    const auto require = [&](int wanted) {
        if (type != wanted)
            refuse(entity, attribute.name);
    };
    switch (attribute.kind) {
    case AttributeKind::Int:
        require(SQLITE_INTEGER);
        return sqlite3_column_int64(row, column);
    case AttributeKind::Bool:
        require(SQLITE_INTEGER);
        return sqlite3_column_int64(row, column) != 0;
    case AttributeKind::Double:
        require(SQLITE_FLOAT);
        return sqlite3_column_double(row, column);
    case AttributeKind::Date:
        require(SQLITE_FLOAT);
        return Date(sqlite3_column_double(row, column));
    case AttributeKind::Text: {
        require(SQLITE_TEXT);
        const auto* const begin = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
        if (begin == nullptr)
            throw std::bad_alloc();
        return std::string(begin, static_cast<std::size_t>(sqlite3_column_bytes(row, column)));
    }
    case AttributeKind::Bytes: {
        require(SQLITE_BLOB);
        const auto* const begin = static_cast<const std::byte*>(sqlite3_column_blob(row, column));
        return Data(begin, begin + sqlite3_column_bytes(row, column));
    }
    case AttributeKind::UUID: {
        UUID::Bytes bytes{};
        if (type != SQLITE_BLOB
            || static_cast<std::size_t>(sqlite3_column_bytes(row, column)) != bytes.size())
            refuse(entity, attribute.name);
        std::copy_n(
            static_cast<const std::uint8_t*>(sqlite3_column_blob(row, column)), bytes.size(), bytes.begin());
        return UUID(bytes);
    }
    }
    return {};
}

} // namespace

void StatementRow::read(std::vector<Any>& values) const
{
    constexpr int firstColumn = 2; // after the key and the version

    auto* const row = m_statement.handle();
    values.clear();
    values.reserve(m_entity.valueCount());
    int column = firstColumn;
    for (const auto& attribute : m_entity.attributes())
        values.push_back(attributeValue(row, column++, m_entity, attribute));
    for (; values.size() < m_entity.valueCount(); ++column) {
        const int type = sqlite3_column_type(row, column);
        if (type != SQLITE_NULL && type != SQLITE_INTEGER)
            refuse(m_entity, sqlite3_column_name(row, column));
        values.push_back(type == SQLITE_NULL ? Any() : Any(std::int64_t(sqlite3_column_int64(row, column))));
    }
}

} // namespace orrenby::inline ORRENBY_ABI::detail
