#include "Orrenby/Utilities/Log/LoggedValue.hpp"

#include "Orrenby/Utilities/Log/AnyLoggable.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

void readLoggable(const Loggable& value, LoggedValue& read)
{
    if (const auto* adapter = dynamic_cast<const AnyLoggable*>(&value))
        return LoggedAccess::read(*adapter, read);
    read.kind = LoggedKind::Loggable;
    if (read.wantsMessage)
        read.message = value.message();
    if (read.wantsError)
        read.error = value.error();
}

void readException(const std::exception& value, LoggedValue& read)
{
    if (const auto* held = dynamic_cast<const AnyError*>(&value)) {
        if (const auto* exception = held->cast<std::exception>())
            return readException(*exception, read);
    } else if (const auto* loggable = dynamic_cast<const Loggable*>(&value))
        return readLoggable(*loggable, read);
    else if (const auto* platformError = dynamic_cast<const NSError*>(&value))
        return readCustomised(*platformError, read);

    const auto* error = dynamic_cast<const Error*>(&value);
    if (auto custom = error != nullptr ? error->customNSError() : std::nullopt) {
        read.kind = LoggedKind::CustomError;
        if (read.wantsMessage)
            read.message = Log::errorMessage(*custom);
        if (read.wantsError)
            read.error = std::move(custom);
        return;
    }
    read.kind = LoggedKind::Error;
    if (read.wantsMessage)
        read.message = error != nullptr ? error->debugDescription() : debugDescribe(value);
    if (read.wantsError)
        read.error = toNSError(value);
}

void readThrown(const std::exception_ptr& value, LoggedValue& read)
{
    if (value != nullptr)
        readException(AnyError(value), read);
    else if (read.wantsMessage)
        read.message = "none";
}

void readAny(const Any& value, LoggedValue& read)
{
    if (const auto* loggable = value.view<Loggable>())
        return readLoggable(*loggable, read);
    const auto* exception = value.view<std::exception>();
    const auto* content = value.loggedContent();
    // An exception counts by its dynamic class, which a reference does not tell; a value's class is its own.
    if (exception != nullptr && (content == nullptr || value.kind() == Any::Kind::Object))
        return readException(*exception, read);
    if (content != nullptr) {
        read.kind = LoggedKind::Loggable;
        if (read.wantsMessage)
            read.message = content->message();
        if (read.wantsError)
            content->readError(read.error);
        return;
    }
    if (const auto* thrown = value.get<std::exception_ptr>())
        return readThrown(*thrown, read);

    if (value.kind() == Any::Kind::Text || value.kind() == Any::Kind::Dictionary)
        read.kind = LoggedKind::Loggable;
    else if (value.isErrorValue())
        read.kind = LoggedKind::Error;
    if (read.wantsMessage)
        read.message = value.kind() == Any::Kind::Text ? std::string(value.text()) : value.debugDescription();
    if (read.wantsError && read.kind == LoggedKind::Error)
        read.error = NSError(
            value.typeName(), 1, {{std::string(NSLocalizedDescriptionKey), value.description()}});
}

} // namespace orrenby::inline ORRENBY_ABI::detail
