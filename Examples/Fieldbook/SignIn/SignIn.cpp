#include "SignIn/SignIn.hpp"

#include "Orrenby/Utilities/EmailAddressValidator.hpp"
#include "Terminal/Text.hpp"
#include <cstddef>

namespace fieldbook {

namespace {

using orrenby::EmailAddress;

bool isReadBySomebody(std::string_view address)
{
    const auto name = address.substr(0, address.find('@'));
    return name != "noreply" && name != "no-reply";
}

const EmailAddress::Validator& validator()
{
    static const auto shared = EmailAddress::Validator(
        EmailAddress::BlockValidationRule(isReadBySomebody, "Nobody reads what is sent to this address."));
    return shared;
}

/// People count characters, from 1.
std::size_t characterAt(std::size_t position, std::string_view text)
{
    std::size_t count = 1;
    for (auto rest = text; text.size() - rest.size() < position; ++count)
        takeCharacter(rest);
    return count;
}

} // namespace

orrenby::Result<EmailAddress, std::string> addressToSignIn(std::string_view text)
{
    using Outcome = orrenby::Result<EmailAddress, std::string>;
    if (const auto refusal = validator().explain(text)) {
        auto place = '"' + std::string(text) + '"';
        // A rule refuses the address as a whole.
        if (refusal->piece)
            place += ", character " + std::to_string(characterAt(refusal->position, text));
        return Outcome::failure(printable(place + ": " + refusal->sentence));
    }
    return Outcome::success(EmailAddress::make({.stringValue = std::string(text)}).value());
}

} // namespace fieldbook
