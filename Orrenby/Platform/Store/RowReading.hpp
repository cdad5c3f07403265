#pragma once

/// @file
/// Reading the values of a row. Not in the umbrella header: stores read with it.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Store/RecordSource.hpp"
#include "Orrenby/Platform/Store/Statement.hpp"
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The current row of a statement whose columns are those of `columnList`. What is not of the kind that the
/// entity says makes the file `Corrupt`.
class StatementRow final : public RecordRow {
public:
    StatementRow(const Statement& statement, const NSEntityDescription& entity) noexcept
        : m_statement(statement)
        , m_entity(entity)
    {}

    void read(std::vector<Any>& values) const override;

private:
    const Statement& m_statement;
    const NSEntityDescription& m_entity;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
