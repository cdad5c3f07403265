#pragma once

/// @file
/// A prepared statement. Not in the umbrella header: the stores keep theirs to themselves.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <cstdint>
#include <string_view>
#include <utility>

struct sqlite3_stmt;

namespace orrenby::inline ORRENBY_ABI::detail {

/// A statement that can be run again and again. Positions of values begin at 1, of columns at 0.
///
/// Not synchronised.
class ORRENBY_EXPORT Statement {
public:
    Statement() noexcept = default;
    explicit Statement(sqlite3_stmt* handle) noexcept
        : m_handle(handle)
    {}
    Statement(Statement&& other) noexcept
        : m_handle(std::exchange(other.m_handle, nullptr))
    {}
    Statement& operator=(Statement&& other) noexcept
    {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~Statement();

    explicit operator bool() const noexcept { return m_handle != nullptr; }

    void bind(int position, std::int64_t value);
    /// The text is copied.
    void bindText(int position, std::string_view text);
    void bindNull(int position);
    /// Null, booleans, integers, floating numbers, dates, texts, bytes and UUIDs. Texts and bytes are *not*
    /// copied: `value` stays as it is until the statement is reset.
    void bind(int position, const Any& value);

    /// Whether there is a row. After the last one the statement is ready for its next run.
    bool step();
    /// Runs to the end.
    void run();
    /// Gives up the current run and forgets the values. Never fails.
    void reset() noexcept;

    std::int64_t integer(int column) const noexcept;
    double floating(int column) const noexcept;
    bool isNull(int column) const noexcept;
    /// Valid until the next step.
    std::string_view text(int column) const noexcept;

    sqlite3_stmt* handle() const noexcept { return m_handle; }

private:
    void check(int resultCode) const;

    sqlite3_stmt* m_handle = nullptr;
};

/// Resets a statement at the end of a block, however it is left.
class StatementRun {
public:
    explicit StatementRun(Statement& statement) noexcept
        : m_statement(statement)
    {}
    StatementRun(const StatementRun&) = delete;
    StatementRun& operator=(const StatementRun&) = delete;
    ~StatementRun() { m_statement.reset(); }

private:
    Statement& m_statement;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
