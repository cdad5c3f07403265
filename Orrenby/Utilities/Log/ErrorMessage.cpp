#include "Orrenby/Utilities/Log/ErrorMessage.hpp"

#include <optional>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::Log {

namespace {

std::optional<std::string> textOf(const Any& value)
{
    const auto* text = value.get<std::string>();
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

/// @param valueFor  Gives the value for a key.
template <class ValueFor> std::optional<std::string> messageFrom(const ValueFor& valueFor)
{
    if (auto description = textOf(valueFor(NSLocalizedDescriptionKey)))
        return description;
    auto failure = textOf(valueFor(NSLocalizedFailureErrorKey));
    if (!failure)
        return std::nullopt;
    if (const auto reason = textOf(valueFor(NSLocalizedFailureReasonErrorKey)))
        return "Error:" + *failure + " Reason:" + *reason;
    return failure;
}

} // namespace

std::string errorMessage(const NSError& error)
{
    if (auto message = messageFrom([&](std::string_view key) { return error.userInfo()[key]; }))
        return *std::move(message);
    if (const auto provider = NSError::userInfoValueProvider(error.domain()))
        if (auto message = messageFrom([&](std::string_view key) { return provider(error, key); }))
            return *std::move(message);
    return "Domain: " + error.domain() + " Code: " + std::to_string(error.code());
}

} // namespace orrenby::Log
