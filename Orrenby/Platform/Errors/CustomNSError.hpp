#pragma once

/// @file
/// Error types that declare their domain, code and user information themselves.

#include "Orrenby/Platform/Errors/Error.hpp"
#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

/// Base of an error type that says how it looks as a platform error object.
///
/// `Derived` declares any of the three operations below again to replace its default, and overrides
/// `description()`. Copying and bridging follow from them. Export a type that is thrown across a library's
/// edge.
///
/// @snippet Tests/Platform/Errors/CustomNSErrorTests.cpp Declaring an error type
///
/// Not synchronised.
template <class Derived> class ORRENBY_EXPORT CustomNSError : public Error {
public:
    /// Whose codes these are. By default the printed name of the type.
    static std::string errorDomain() { return typeName<Derived>(); }

    std::int64_t errorCode() const { return 1; }

    /// Empty by default.
    Dictionary errorUserInfo() const { return {}; }

    std::string debugDescription() const override { return this->fullPrintedForm(typeName<Derived>()); }

    /// Made of the three operations above, and of the copy constructor.
    std::unique_ptr<Error> clone() const override
    {
        // Made as what is returned: a `std::unique_ptr<Derived>` on the way costs each error type 10 ms.
        return std::unique_ptr<Error>(new Derived(self()));
    }
    NSError nsError() const override
    {
        return NSError(Derived::errorDomain(), self().errorCode(), self().errorUserInfo());
    }
    std::optional<NSError> customNSError() const override { return this->nsError(); }

    /// Lets `Derived` default its comparison: the bases have no state to compare. Whole errors compare only
    /// by what `Derived` says.
    template <class Base>
        requires(std::is_base_of_v<Base, Derived> && !std::same_as<Base, Derived>)
    friend bool operator==(const Base&, const Base&) noexcept { return true; }

protected:
    CustomNSError() noexcept = default;

    /// The error as what it is.
    const Derived& self() const noexcept { return static_cast<const Derived&>(*this); }
};

} // namespace orrenby
