#pragma once

/// @file
/// Error types that get domain, code and user information from a few declarations.

#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Identifier of the main bundle, if it has one, ".", `typePart`.
ORRENBY_EXPORT std::string nestedErrorDomain(std::string typePart);

ORRENBY_EXPORT Dictionary nestedErrorUserInfo(
    Dictionary additional, std::string description, const std::optional<NSError>& underlying);

} // namespace detail

/// Base of an error type that is declared inside another type.
///
/// `Derived` says `using ParentType = Loader;` and overrides `description()`. It has either a function
/// `code()`, or a function `rawValue()` that gives an integer or an enumeration, whose value is the code. It
/// may declare `underlyingError()` and `additionalUserInfo()` again. A type without a parent derives from
/// `GlobalError` instead.
///
/// The printed names of both types are those of `typeName`; see there for how a type chooses its own.
///
/// @snippet Tests/Standard/NestedErrorTests.cpp Declaring a nested error
///
/// Not synchronised.
template <class Derived> class ORRENBY_EXPORT NestedError : public CustomNSError<Derived> {
public:
    /// The number of the error within its type: that of `rawValue()`. A type without one declares it again.
    std::int64_t code() const
    {
        static_assert(
            requires(const Derived& error) { error.rawValue(); },
            "an error type declares code(), or rawValue() that gives an integer or an enumeration");
        return static_cast<std::int64_t>(this->self().rawValue());
    }

    /// What caused this error. By default nothing.
    std::optional<NSError> underlyingError() const { return std::nullopt; }

    /// Entries of the user information beside the usual ones. By default none.
    Dictionary additionalUserInfo() const { return {}; }

    std::string description() const override = 0;

    /// The main bundle's identifier and a "." if it has one, the name of the parent type and a "." if there
    /// is one, the name of the type: `com.example.app.Loader.Reason`. It differs between applications, and
    /// changes when the identifier is set.
    static std::string errorDomain()
    {
        using ParentType = typename Derived::ParentType;
        if constexpr (std::is_void_v<ParentType>)
            return detail::nestedErrorDomain(typeName<Derived>());
        else
            return detail::nestedErrorDomain(typeName<ParentType>() + "." + typeName<Derived>());
    }

    std::int64_t errorCode() const { return this->self().code(); }

    /// The additional entries, then the description under `NSLocalizedDescriptionKey`, whatever the
    /// additional entries say there, then the underlying error under `NSUnderlyingErrorKey`, if there is one.
    Dictionary errorUserInfo() const
    {
        return detail::nestedErrorUserInfo(
            this->self().additionalUserInfo(), this->description(), this->self().underlyingError());
    }

protected:
    NestedError() noexcept = default;
};

/// Base of an error type that is declared at top level. In all else a `NestedError`.
template <class Derived> class ORRENBY_EXPORT GlobalError : public NestedError<Derived> {
public:
    /// There is no parent.
    using ParentType = void;

protected:
    GlobalError() noexcept = default;
};

} // namespace orrenby
