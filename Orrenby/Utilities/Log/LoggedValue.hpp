#pragma once

/// @file
/// How a value of any type is read when it is logged. Not for use of its own.

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Errors/ErrorValue.hpp"
#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/StaticText.hpp"
#include "Orrenby/Utilities/Log/Loggable.hpp"
#include <concepts>
#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

enum class LoggedKind : std::uint8_t { Loggable, CustomError, Error, Unknown };

/// What was found out about a value, as far as it was wanted.
struct LoggedValue {
    bool wantsMessage = false;
    bool wantsError = false;

    LoggedKind kind = LoggedKind::Unknown;
    bool isStaticText = false;
    std::string message{};
    std::optional<NSError> error{};
};

ORRENBY_EXPORT void readLoggable(const Loggable& value, LoggedValue& read);
ORRENBY_EXPORT void readException(const std::exception& value, LoggedValue& read);
ORRENBY_EXPORT void readThrown(const std::exception_ptr& value, LoggedValue& read);
ORRENBY_EXPORT void readAny(const Any& value, LoggedValue& read);

template <class T> void readLogged(const T& value, LoggedValue& read);

template <class T> void readCustomised(const T& value, LoggedValue& read)
{
    read.kind = LoggedKind::Loggable;
    read.isStaticText = std::is_same_v<T, StaticText>;
    if (read.wantsMessage)
        read.message = LoggableConformance<T>::message(value);
    if (read.wantsError)
        read.error = LoggableConformance<T>::error(value);
}

/// An error value that is no exception.
template <class T> void readPlainError(const T& value, LoggedValue& read)
{
    read.kind = LoggedKind::Error;
    if (read.wantsMessage)
        read.message = debugDescribe(value);
    if (read.wantsError)
        read.error = toNSError(value);
}

/// An object is read as what it is, not as what the reference sees.
template <class T> void readReference(const Ref<T>& reference, LoggedValue& read)
{
    if (reference == nullptr) {
        if (read.wantsMessage)
            read.message = "none";
        return;
    }
    if constexpr (std::is_polymorphic_v<T>) {
        if (const auto* loggable = dynamic_cast<const Loggable*>(reference.get()))
            return readLoggable(*loggable, read);
        if (const auto* exception = dynamic_cast<const std::exception*>(reference.get()))
            return readException(*exception, read);
    }
    readLogged(*reference, read);
}

template <class T> void readLogged(const T& value, LoggedValue& read)
{
    if constexpr (std::derived_from<T, Loggable>)
        readLoggable(value, read);
    else if constexpr (std::same_as<T, Any>)
        readAny(value, read);
    else if constexpr (CustomisedLoggable<T>)
        readCustomised(value, read);
    else if constexpr (std::derived_from<T, std::exception>)
        readException(value, read);
    else if constexpr (std::same_as<T, std::exception_ptr>)
        readThrown(value, read);
    else if constexpr (ErrorValue<T>)
        readPlainError(value, read);
    else if constexpr (AnyReference<T>)
        readReference(value, read);
    else if (read.wantsMessage)
        read.message = debugDescribe(value);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
