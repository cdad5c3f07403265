#include "Orrenby/Foundation/NSError.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Objects/CallSite.hpp"
#include "Orrenby/Utilities/Log/Append.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

NSError makeNSError(NSErrorOptions options)
{
    auto userInfo = std::move(options.userInfo).value_or(Dictionary());
    userInfo.set(NSLocalizedDescriptionKey, options.description.get().value_or(options.domain));
    return NSError(options.domain, options.code, std::move(userInfo));
}

namespace detail {

std::optional<NSError> validatedException(const std::exception& exception, std::string_view file)
{
    if (const auto* any = dynamic_cast<const AnyError*>(&exception); any && !any->isErrorValue())
        return std::nullopt;

    const auto* error = dynamic_cast<const Error*>(&exception);
    if (const auto found = error ? error->customNSError() : std::nullopt)
        return NSError(found->domain(), found->code(), found->userInfo());

    refuseAsNSError(error ? error->debugDescription() : debugDescribe(exception), file);
    return std::nullopt;
}

std::optional<NSError> validatedThrown(const std::exception_ptr& thrown, std::string_view file)
{
    return thrown ? validatedException(AnyError(thrown), file) : std::nullopt;
}

std::optional<NSError> validatedAny(const Any& value, std::string_view file)
{
    if (const auto* exception = value.view<std::exception>())
        return validatedException(*exception, file);
    if (value.isErrorValue())
        refuseAsNSError(value.debugDescription(), file);
    return std::nullopt;
}

void refuseAsNSError(const std::string& printedValue, std::string_view file)
{
    const auto error = NSError("NSErrorValidatingInitializerEncounteredSwiftError " + std::string(file), 0,
        {{"Swift.Error", printedValue},
            {std::string(NSLocalizedDescriptionKey),
                "NSError validating initializer encountered a Swift.Error"}});
    Log::_append([] { return false; }, Log::Level::critical, error, Dictionary(),
        CallSite("Foundation/NSError", 53, "init(validating:file:)"));
}

} // namespace detail

} // namespace orrenby
