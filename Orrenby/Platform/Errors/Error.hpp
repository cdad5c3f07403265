#pragma once

/// @file
/// What every error type of the library can do.

#include "Orrenby/Platform/Export.hpp"
#include <atomic>
#include <exception>
#include <memory>
#include <optional>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

class NSError;

/// An error value that says what happened and can be seen as a platform error object.
///
/// It is thrown and caught by its own type; this interface serves code that handles errors it does not know.
/// Most error types do not derive from it directly: `GlobalError` and `NestedError` supply domain, code and
/// user information from a few declarations, `CustomNSError` leaves them to the type.
///
/// Include NSError.hpp to call `nsError()` or `customNSError()`.
///
/// An error does not change while it is handled: its const members are safe to use from several threads. One
/// pointer of storage.
class ORRENBY_EXPORT Error : public std::exception {
public:
    ~Error() override;

    /// What happened, in one line. By default the printed name of the dynamic type.
    virtual std::string description() const;

    /// The full printed form: the printed name of the type, then the description in parentheses, if it says
    /// more.
    virtual std::string debugDescription() const;

    /// A copy of the same dynamic type.
    virtual std::unique_ptr<Error> clone() const = 0;

    /// This error as a platform error object.
    ///
    /// By default its domain is the printed name of the dynamic type, its code 1 and its localised
    /// description `description()`.
    virtual NSError nsError() const;

    /// The same as `nsError()` if the type itself declares domain, code and user information; nothing if they
    /// are only made up for it.
    virtual std::optional<NSError> customNSError() const;

    /// `description()`, made at the first call; the text lives as long as this object. Costs an allocation
    /// once.
    const char* what() const noexcept final;

protected:
    Error() noexcept = default;
    Error(const Error& other) noexcept;
    Error& operator=(const Error& other) noexcept;

    /// The full printed form under a given printed name.
    std::string fullPrintedForm(const std::string& typeName) const;

private:
    mutable std::atomic<const std::string*> m_what = nullptr;
};

} // namespace orrenby
