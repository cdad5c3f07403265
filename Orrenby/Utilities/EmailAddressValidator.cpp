#include "Orrenby/Utilities/EmailAddressValidator.hpp"

#include "Orrenby/Utilities/EmailAddressPieces.hpp"
#include <algorithm>

namespace orrenby::inline ORRENBY_ABI {

EmailAddress::Validator::Validator()
    : Validator(std::vector<EmailAddressValidationRule>())
{}

EmailAddress::Validator::Validator(std::vector<EmailAddressValidationRule> rules)
    : m_rules(std::make_shared<std::vector<EmailAddressValidationRule>>(std::move(rules)))
{}

const EmailAddress::Validator& EmailAddress::Validator::addRule(EmailAddressValidationRule rule) const
{
    m_rules->push_back(std::move(rule));
    return *this;
}

bool EmailAddress::Validator::validate(std::string_view emailAddress) const
{
    if (!isValid(emailAddress))
        return false;
    const auto rules = *m_rules; // a rule may add another one to this validator
    return std::all_of(rules.begin(), rules.end(),
        [&](const EmailAddressValidationRule& rule) { return rule.evaluate(emailAddress); });
}

bool EmailAddress::DomainPrefixValidationRule::evaluate(std::string_view emailAddress) const
{
    const auto pieces = detail::nonEmptyPieces(emailAddress, '@');
    if (pieces.empty())
        return true;
    const auto labels = detail::nonEmptyPieces(pieces.back(), '.');
    if (labels.size() < 3)
        return true;
    std::string joined;
    for (auto label = labels.begin(); label != labels.end() - 2; ++label)
        joined += *label;
    return std::none_of(invalidPrefixes.begin(), invalidPrefixes.end(),
        [&](const std::string& prefix) { return joined.find(prefix) != std::string::npos; });
}

bool EmailAddress::DomainSuffixValidationRule::evaluate(std::string_view emailAddress) const
{
    const auto pieces = detail::nonEmptyPieces(emailAddress, '@');
    if (pieces.empty())
        return false;
    const auto labels = detail::nonEmptyPieces(pieces.back(), '.');
    return std::any_of(validDomains.begin(), validDomains.end(), [&](const std::string& domain) {
        const auto wanted = detail::nonEmptyPieces(domain, '.');
        return wanted.size() <= labels.size() && std::equal(wanted.rbegin(), wanted.rend(), labels.rbegin());
    });
}

} // namespace orrenby
