#pragma once

/// @file
/// The platform's error object: domain, code and user information.

#include "Orrenby/Platform/Errors/Error.hpp"
#include "Orrenby/Platform/Errors/NSErrorKeys.hpp"
#include "Orrenby/Platform/Errors/UserInfoValueProvider.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// An error as domain, code and user information, the form in which errors of all types can be reported and
/// compared.
///
/// A handle: copies share one immutable object. It can be thrown, and it can be derived from; a subclass
/// overrides `clone()`.
///
/// @snippet Tests/Platform/Errors/NSErrorTests.cpp Reading a platform error
///
/// Copying costs a reference count. Safe to use from several threads.
class ORRENBY_EXPORT NSError : public Error {
public:
    /// @param domain    Whose codes these are.
    /// @param code      Which of them.
    /// @param userInfo  Whatever else is known, under the keys of NSErrorKeys.hpp and others.
    NSError(std::string_view domain, std::int64_t code, Dictionary userInfo = {});
    NSError(const NSError&) noexcept = default;
    NSError& operator=(const NSError&) noexcept = default;
    ~NSError() override;

    /// What it was made with. The references live as long as a copy of the error does.
    const std::string& domain() const noexcept;
    std::int64_t code() const noexcept;
    const Dictionary& userInfo() const noexcept;

    /// The text under `NSLocalizedDescriptionKey`, in the user information or else from the domain's
    /// provider; without either, a sentence that names domain and code.
    std::string localizedDescription() const;

    /// The error under `NSUnderlyingErrorKey`, if it is one.
    std::optional<NSError> underlyingError() const;

    /// Whether both handles share one object.
    bool isSame(const NSError& other) const noexcept { return m_contents == other.m_contents; }

    /// `Error Domain=D Code=1`, then the localised description in quotes and ` UserInfo=[…]` where there are
    /// any.
    std::string description() const override;

    std::unique_ptr<Error> clone() const override;

    /// The same object.
    NSError nsError() const final;
    std::optional<NSError> customNSError() const final;

    /// By domain, code and user information; the class does not matter.
    ORRENBY_EXPORT friend bool operator==(const NSError& first, const NSError& second);

    /// Sets what answers for errors of `domain`; an empty provider removes the one there is. Safe to use from
    /// several threads.
    static void setUserInfoValueProvider(std::string_view domain, UserInfoValueProvider provider);

    /// Empty when the domain has none. Safe to use from several threads.
    static UserInfoValueProvider userInfoValueProvider(std::string_view domain);

private:
    struct Contents;
    std::shared_ptr<const Contents> m_contents;
};

} // namespace orrenby

template <> struct std::hash<orrenby::NSError> {
    ORRENBY_EXPORT std::size_t operator()(const orrenby::NSError& error) const noexcept;
};
