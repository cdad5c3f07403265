#include "Orrenby/Utilities/EmailAddressValidator.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Utilities/EmailAddressPieces.hpp"
#include <algorithm>
#include <utility>

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

std::optional<EmailAddressRefusal> EmailAddress::Validator::explain(std::string_view emailAddress) const
{
    if (!isValid(emailAddress))
        return EmailValidationRule().explain(emailAddress);
    const auto rules = *m_rules; // a rule may add another one to this validator
    for (std::size_t place = 0; place < rules.size(); ++place)
        if (auto refusal = rules[place].explain(emailAddress)) {
            refusal->rule = place;
            refusal->piece.reset();
            return refusal;
        }
    return std::nullopt;
}

EmailAddressRefusal EmailAddress::EmailValidationRule::explain(std::string_view emailAddress) const
{
    auto mismatch = emailPatternMismatch(emailAddress);
    if (!mismatch)
        return {.sentence = "The address is in order."}; // asked without a refusal
    return {
        .piece = mismatch->piece, .position = mismatch->position, .sentence = std::move(mismatch->sentence)};
}

namespace {

/// Where the domain begins: behind the last "@" that has something behind it.
std::size_t domainPosition(std::string_view emailAddress)
{
    const auto pieces = detail::nonEmptyPieces(emailAddress, '@');
    return pieces.empty() ? emailAddress.size()
                          : static_cast<std::size_t>(pieces.back().data() - emailAddress.data());
}

/// The labels before the last two of the domain, without dots. Nothing when there are none.
std::optional<std::string> joinedLabels(std::string_view emailAddress)
{
    const auto pieces = detail::nonEmptyPieces(emailAddress, '@');
    if (pieces.empty())
        return std::nullopt;
    const auto labels = detail::nonEmptyPieces(pieces.back(), '.');
    if (labels.size() < 3)
        return std::nullopt;
    std::string joined;
    for (auto label = labels.begin(); label != labels.end() - 2; ++label)
        joined += *label;
    return joined;
}

/// The first of the texts that is in one, or nothing.
const std::string* firstContained(const std::vector<std::string>& texts, std::string_view whole)
{
    const auto found = std::find_if(texts.begin(), texts.end(),
        [&](const std::string& text) { return whole.find(text) != std::string_view::npos; });
    return found != texts.end() ? &*found : nullptr;
}

} // namespace

bool EmailAddress::DomainPrefixValidationRule::evaluate(std::string_view emailAddress) const
{
    const auto joined = joinedLabels(emailAddress);
    return !joined || firstContained(invalidPrefixes, *joined) == nullptr;
}

EmailAddressRefusal EmailAddress::DomainPrefixValidationRule::explain(std::string_view emailAddress) const
{
    const auto joined = joinedLabels(emailAddress);
    const auto* const prefix = joined ? firstContained(invalidPrefixes, *joined) : nullptr;
    return {.position = domainPosition(emailAddress),
        .sentence = "\"" + (prefix != nullptr ? *prefix : std::string())
            + "\" may not stand in the domain before its last two labels."};
}

std::string EmailAddress::DomainPrefixValidationRule::description() const
{
    return "not in the domain: " + describe(invalidPrefixes);
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

EmailAddressRefusal EmailAddress::DomainSuffixValidationRule::explain(std::string_view emailAddress) const
{
    std::string accepted;
    for (std::size_t place = 0; place < validDomains.size(); ++place) {
        if (place != 0)
            accepted += place + 1 == validDomains.size() ? " or " : ", ";
        accepted += "\"" + validDomains[place] + "\"";
    }
    return {.position = domainPosition(emailAddress),
        .sentence = accepted.empty() ? "No domain is accepted."
                                     : "The domain does not end in " + accepted + "."};
}

std::string EmailAddress::DomainSuffixValidationRule::description() const
{
    return "domains: " + describe(validDomains);
}

} // namespace orrenby
