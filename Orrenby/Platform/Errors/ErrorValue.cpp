#include "Orrenby/Platform/Errors/ErrorValue.hpp"

#include <system_error>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

NSError bridgedException(const std::exception& exception)
{
    if (const auto* error = dynamic_cast<const Error*>(&exception))
        return error->nsError();

    auto userInfo = Dictionary{{std::string(NSLocalizedDescriptionKey), exception.what()}};
    if (const auto* error = dynamic_cast<const std::system_error*>(&exception))
        return NSError(error->code().category().name(), error->code().value(), std::move(userInfo));
    return NSError(typeName(exception), 1, std::move(userInfo));
}

} // namespace detail

} // namespace orrenby
