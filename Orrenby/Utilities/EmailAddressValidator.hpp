#pragma once

/// @file
/// Which e-mail addresses an application accepts.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include "Orrenby/Utilities/EmailAddress.hpp"
#include <concepts>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

template <class T>
concept EvaluatesEmailAddress = requires(const T& rule, std::string_view address)
{
    // clang-format off
    { rule.evaluate(address) } -> std::convertible_to<bool>;
    // clang-format on
};
template <class T>
concept TestsText = std::predicate<const T&, std::string_view>;

} // namespace detail

/// Any rule for e-mail addresses: holds a copy of a value that has `bool evaluate(std::string_view address)
/// const`.
///
/// Copies share what they hold. Not synchronised.
class EmailAddressValidationRule {
public:
    template <detail::OtherThan<EmailAddressValidationRule> Rule>
        requires detail::EvaluatesEmailAddress<Rule> EmailAddressValidationRule(Rule rule)
            : m_box(std::make_shared<const BoxOf<Rule>>(std::move(rule)))
        {}

        /// Whether the address is acceptable. It is the whole text, and has passed the pattern when a
        /// validator asks.
        bool evaluate(std::string_view emailAddress) const { return m_box->evaluate(emailAddress); }

    private:
        struct Box {
            virtual ~Box() = default;
            virtual bool evaluate(std::string_view emailAddress) const = 0;
        };
        template <class Rule> struct BoxOf final : Box {
            explicit BoxOf(Rule held)
                : rule(std::move(held))
            {}
            bool evaluate(std::string_view emailAddress) const override
            {
                return rule.evaluate(emailAddress);
            }
            Rule rule;
        };

        std::shared_ptr<const Box> m_box;
};

/// Runs the pattern and then rules in their order.
///
/// @snippet Tests/Utilities/EmailAddressValidatorTests.cpp Validating an address
///
/// A handle: copies share their rules. Not synchronised.
class ORRENBY_EXPORT EmailAddress::Validator {
public:
    Validator();
    explicit Validator(std::vector<EmailAddressValidationRule> rules);
    template <detail::EvaluatesEmailAddress... Rules>
        requires(sizeof...(Rules) > 0)
    explicit Validator(Rules... rules)
        : Validator(std::vector<EmailAddressValidationRule>{EmailAddressValidationRule(std::move(rules))...})
    {}

    const std::vector<EmailAddressValidationRule>& rules() const noexcept { return *m_rules; }

    /// Appends a rule: a value with `evaluate`, or a callable from text to `bool`. Gives this validator, so
    /// that calls chain.
    const Validator& addRule(EmailAddressValidationRule rule) const;
    template <detail::TestsText Block>
        requires(!detail::EvaluatesEmailAddress<Block>)
    const Validator& addRule(Block block) const;

    /// Whether the address passes the pattern and all rules. Nothing is asked after the first refusal.
    bool validate(std::string_view emailAddress) const;

    /// What tells this validator and its copies from others.
    const void* sharedIdentity() const noexcept { return m_rules.get(); }

private:
    std::shared_ptr<std::vector<EmailAddressValidationRule>> m_rules;
};

/// Asks a callable.
class EmailAddress::BlockValidationRule {
public:
    explicit BlockValidationRule(std::function<bool(std::string_view)> block)
        : rule(std::move(block))
    {}
    bool evaluate(std::string_view emailAddress) const { return rule(emailAddress); }

    std::function<bool(std::string_view)> rule;
};

/// The pattern alone, as `EmailAddress::isValid`.
class EmailAddress::EmailValidationRule {
public:
    bool evaluate(std::string_view emailAddress) const { return isValid(emailAddress); }
};

/// Refuses addresses with certain texts in the domain before its last two labels.
///
/// These labels are joined without a dot: of "a.b.example.com" the text is "ab". A domain of two labels
/// passes. An empty text among the prefixes is contained in every text.
class ORRENBY_EXPORT EmailAddress::DomainPrefixValidationRule {
public:
    explicit DomainPrefixValidationRule(std::vector<std::string> invalidTexts)
        : invalidPrefixes(std::move(invalidTexts))
    {}
    bool evaluate(std::string_view emailAddress) const;

    std::vector<std::string> invalidPrefixes;
};

/// Accepts only addresses whose domain ends in the labels of one of these, with regard to case: with
/// "example.com", "mail.example.com" passes and "myexample.com" does not. Without any it refuses all.
class ORRENBY_EXPORT EmailAddress::DomainSuffixValidationRule {
public:
    explicit DomainSuffixValidationRule(std::vector<std::string> domains)
        : validDomains(std::move(domains))
    {}
    bool evaluate(std::string_view emailAddress) const;

    std::vector<std::string> validDomains;
};

template <detail::TestsText Block>
    requires(!detail::EvaluatesEmailAddress<Block>)
const EmailAddress::Validator& EmailAddress::Validator::addRule(Block block) const
{
    return addRule(EmailAddressValidationRule(BlockValidationRule(std::move(block))));
}

} // namespace orrenby
