#include "Orrenby/Utilities/EmailAddress.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Text/EmailPattern.hpp"
#include "Orrenby/Utilities/EmailAddressPieces.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

std::vector<std::string_view> nonEmptyPieces(std::string_view text, char separator)
{
    std::vector<std::string_view> pieces;
    while (!text.empty()) {
        const auto end = text.find(separator);
        if (end != 0)
            pieces.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return pieces;
}

} // namespace detail

bool EmailAddress::isValid(std::string_view text) { return matchesEmailPattern(text); }

bool isValidEmail(std::string_view text) { return EmailAddress::isValid(text); }

std::optional<EmailAddress> EmailAddress::make(EmailAddressText text)
{
    if (!isValid(text.stringValue))
        return std::nullopt;
    return EmailAddress(std::move(text.stringValue));
}

std::optional<EmailAddress> EmailAddress::make(EmailAddressParts parts)
{
    return make(EmailAddressText{std::move(parts.localPart) + "@" + parts.domain});
}

// What passed the pattern has an "@" with something on both sides of it, so that there are two pieces at
// least, and neither the first nor the last is empty.
std::string_view EmailAddress::localPart() const noexcept
{
    return std::string_view(m_stringValue).substr(0, m_stringValue.find('@'));
}

std::string_view EmailAddress::domain() const noexcept
{
    const auto last = m_stringValue.find_last_not_of('@');
    const auto text = std::string_view(m_stringValue).substr(0, last + 1);
    return text.substr(text.rfind('@') + 1);
}

inline namespace literals {

EmailAddress operator""_email(const char* text, std::size_t length)
{
    auto address = EmailAddress::make(EmailAddressText{std::string(text, length)});
    if (!address)
        fatalError("Could not create an Email with the specified string", "Utilities/EmailAddress", 169);
    return *std::move(address);
}

} // namespace literals

} // namespace orrenby
