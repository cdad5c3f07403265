#pragma once

/// @file
/// E-mail addresses that are known to be well-formed.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// An address as one text.
struct EmailAddressText {
    std::string stringValue{}; ///< The whole text.
};
/// An address as what stands before and behind its "@".
struct EmailAddressParts {
    std::string localPart{}; ///< In front of the "@", as it would be written there.
    std::string domain{};    ///< Behind the "@".
};

/// An e-mail address. There is none that does not pass the pattern (`isValid`).
///
/// Whether anybody reads mail there is another matter. What an application refuses beyond the pattern belongs
/// to `EmailAddress::Validator`, in `Utilities/EmailAddressValidator.hpp`.
///
/// In every domain label but the last, only ASCII lower-case letters, digits and "-" may stand between its
/// first and last character: "a@MaiL.example.com" passes, "a@MAIL.example.com" does not.
///
/// @snippet Tests/Utilities/EmailAddressTests.cpp Making an address
///
/// A plain value, equal by its text with regard to case. Not synchronised.
class ORRENBY_EXPORT EmailAddress {
public:
    class Validator;
    class BlockValidationRule;
    class EmailValidationRule;
    class DomainPrefixValidationRule;
    class DomainSuffixValidationRule;

    /// Whether the whole text passes the pattern. Linear in its length.
    static bool isValid(std::string_view text);

    /// The address, or nothing when the text does not pass the pattern: `make({.stringValue = text})`.
    static std::optional<EmailAddress> make(EmailAddressText text);
    /// The same of the parts with an "@" between them: `make({.localPart = "a", .domain = "b.co"})`.
    static std::optional<EmailAddress> make(EmailAddressParts parts);

    /// The whole address as it was given.
    const std::string& stringValue() const noexcept { return m_stringValue; }
    /// What stands before the first "@", which may be one inside the quotation marks of a quoted local part.
    std::string_view localPart() const noexcept;
    /// What stands behind the last "@".
    std::string_view domain() const noexcept;

    const std::string& description() const noexcept { return m_stringValue; }

    friend bool operator==(const EmailAddress&, const EmailAddress&) = default;

private:
    explicit EmailAddress(std::string stringValue)
        : m_stringValue(std::move(stringValue))
    {}

    std::string m_stringValue;
};

/// The same as `EmailAddress::isValid`.
ORRENBY_EXPORT bool isValidEmail(std::string_view text);

inline namespace literals {

/// An address that stands in the program: `"a@b.co"_email`. A text that is no address is a programming error
/// and ends the process.
ORRENBY_EXPORT EmailAddress operator""_email(const char* text, std::size_t length);

} // namespace literals

} // namespace orrenby

template <> struct std::hash<orrenby::EmailAddress> {
    std::size_t operator()(const orrenby::EmailAddress& address) const noexcept
    {
        return std::hash<std::string>{}(address.stringValue());
    }
};
