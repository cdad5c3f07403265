#include "Orrenby/Platform/Store/StoreError.hpp"
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr std::string_view kindNames[] = {"Other", "CannotOpen", "ReadOnly", "DiskFull", "InputOutput",
    "Busy", "Corrupt", "Constraint", "SchemaMismatch", "InvalidModel", "InvalidPredicate", "InvalidValue",
    "DeleteDenied", "Conflict", "ObjectGone", "MigrationFailed"};

} // namespace

struct StoreError::Content {
    Kind kind;
    Context context;
};

StoreError::StoreError(Kind kind, Context context)
    : m_content(std::make_shared<const Content>(Content{kind, std::move(context)}))
{}

StoreError::Kind StoreError::kind() const noexcept { return m_content->kind; }

const StoreError::Context& StoreError::context() const noexcept { return m_content->context; }

std::string StoreError::description() const
{
    return std::string(kindNames[static_cast<std::size_t>(kind())]) + ": " + message();
}

Dictionary StoreError::errorUserInfo() const { return {{NSLocalizedDescriptionKey, description()}}; }

} // namespace orrenby
