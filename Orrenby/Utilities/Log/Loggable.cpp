#include "Orrenby/Utilities/Log/Loggable.hpp"

#include "Orrenby/Platform/Errors/Error.hpp"

namespace orrenby::inline ORRENBY_ABI {

Loggable::~Loggable() = default;

std::string Loggable::message() const
{
    const auto* error = dynamic_cast<const Error*>(this);
    return error != nullptr ? error->debugDescription() : typeName(*this);
}

std::optional<NSError> Loggable::error() const { return std::nullopt; }

} // namespace orrenby
