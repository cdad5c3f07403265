#pragma once

/// @file
/// Which e-mail addresses an application accepts.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include "Orrenby/Utilities/EmailAddress.hpp"
#include "Orrenby/Utilities/EmailAddressRefusal.hpp"
#include <concepts>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class EmailAddressValidationRule;

namespace detail {

template <class T>
concept EvaluatesEmailAddress = requires(const T& rule, std::string_view address)
{
    // clang-format off
    { rule.evaluate(address) } -> std::convertible_to<bool>;
    // clang-format on
};
/// A rule that can also say why it refuses.
template <class T>
concept ExplainsEmailAddress = requires(const T& rule, std::string_view address)
{
    // clang-format off
    { rule.explain(address) } -> std::convertible_to<EmailAddressRefusal>;
    // clang-format on
};
/// A rule that is not boxed yet.
template <class T>
concept PlainEmailAddressRule = OtherThan<T, EmailAddressValidationRule> && EvaluatesEmailAddress<T>;
template <class T>
concept TestsText = std::predicate<const T&, std::string_view>;

} // namespace detail

/// Any rule for e-mail addresses: holds a copy of a value that has `bool evaluate(std::string_view address)
/// const`, and possibly `EmailAddressRefusal explain(std::string_view address) const`, which is asked about
/// addresses that `evaluate` refuses.
///
/// Copies share what they hold. Not synchronised.
class EmailAddressValidationRule {
public:
    /// Keeps a copy of the rule, which all copies of this one share.
    template <detail::PlainEmailAddressRule Rule>
    EmailAddressValidationRule(Rule rule)
        : m_box(std::make_shared<const BoxOf<Rule>>(std::move(rule)))
    {}

    /// Whether the address is acceptable. It is the whole text, and has passed the pattern when a
    /// validator asks.
    bool evaluate(std::string_view emailAddress) const { return m_box->evaluate(emailAddress); }

    /// Why the address is not acceptable, or nothing when it is. A rule that cannot tell gives the whole
    /// address and a sentence that says no more than that.
    std::optional<EmailAddressRefusal> explain(std::string_view emailAddress) const
    {
        return evaluate(emailAddress) ? std::nullopt : std::optional(m_box->explain(emailAddress));
    }

private:
    struct Box {
        virtual ~Box() = default;
        virtual bool evaluate(std::string_view emailAddress) const = 0;
        virtual EmailAddressRefusal explain(std::string_view emailAddress) const = 0;
    };
    template <class Rule> struct BoxOf final : Box {
        explicit BoxOf(Rule held)
            : rule(std::move(held))
        {}
        bool evaluate(std::string_view emailAddress) const override { return rule.evaluate(emailAddress); }
        EmailAddressRefusal explain([[maybe_unused]] std::string_view emailAddress) const override
        {
            if constexpr (detail::ExplainsEmailAddress<Rule>)
                return rule.explain(emailAddress);
            else
                return {.sentence = "A rule of the application refuses the address."};
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

    /// With these rules, asked in this order.
    explicit Validator(std::vector<EmailAddressValidationRule> rules);

    /// With these rules, asked in this order.
    template <detail::EvaluatesEmailAddress... Rules>
        requires(sizeof...(Rules) > 0)
    explicit Validator(Rules... rules)
        : Validator(std::vector<EmailAddressValidationRule>{EmailAddressValidationRule(std::move(rules))...})
    {}

    /// In the order in which they are asked. They change with `addRule`, of a copy as well.
    const std::vector<EmailAddressValidationRule>& rules() const noexcept { return *m_rules; }

    /// Appends a rule: a value with `evaluate`, or a callable from text to `bool`. Gives this validator, so
    /// that calls chain.
    const Validator& addRule(EmailAddressValidationRule rule) const;
    template <detail::TestsText Block>
        requires(!detail::EvaluatesEmailAddress<Block>)
    const Validator& addRule(Block block) const;

    /// Whether the address passes the pattern and all rules. Nothing is asked after the first refusal.
    bool validate(std::string_view emailAddress) const;

    /// Why `validate` refuses the address, or nothing when it accepts it: the first thing that keeps it from
    /// being one, or the first rule that refuses it.
    ///
    /// @snippet Tests/Utilities/EmailAddressRefusalTests.cpp Explaining a refusal
    ///
    /// The rules are asked exactly as `validate` asks them, and the one that refuses is then asked why.
    std::optional<EmailAddressRefusal> explain(std::string_view emailAddress) const;

    /// What tells this validator and its copies from others.
    const void* sharedIdentity() const noexcept { return m_rules.get(); }

private:
    std::shared_ptr<std::vector<EmailAddressValidationRule>> m_rules;
};

/// Asks a callable. What it refuses is explained by a sentence that goes with it.
class EmailAddress::BlockValidationRule {
public:
    /// An empty callable is not refused here; asking it throws.
    explicit BlockValidationRule(std::function<bool(std::string_view)> block,
        std::string refusal = "A rule of the application refuses the address.")
        : rule(std::move(block))
        , sentence(std::move(refusal))
    {}

    /// What the callable says.
    bool evaluate(std::string_view emailAddress) const { return rule(emailAddress); }

    /// The sentence that goes with the callable, without a place in the text.
    EmailAddressRefusal explain(std::string_view) const { return {.sentence = sentence}; }

    std::function<bool(std::string_view)> rule; ///< What is asked.
    std::string sentence;                       ///< What it says of an address that is refused.
};

/// The pattern alone, as `EmailAddress::isValid`.
class EmailAddress::EmailValidationRule {
public:
    /// Whether the whole text is an address.
    bool evaluate(std::string_view emailAddress) const { return isValid(emailAddress); }

    /// What keeps the text from being an address, and where.
    ORRENBY_EXPORT EmailAddressRefusal explain(std::string_view emailAddress) const;

    std::string description() const { return "the pattern"; }
    friend bool operator==(const EmailValidationRule&, const EmailValidationRule&) = default;
};

/// Refuses addresses with certain texts in the domain before its last two labels.
///
/// These labels are joined without a dot: of "a.b.example.com" the text is "ab". A domain of two labels
/// passes. An empty text among the prefixes is contained in every text.
class ORRENBY_EXPORT EmailAddress::DomainPrefixValidationRule {
public:
    /// Refuses these texts; without any it refuses nothing.
    explicit DomainPrefixValidationRule(std::vector<std::string> invalidTexts)
        : invalidPrefixes(std::move(invalidTexts))
    {}

    /// Whether none of the texts is there. True without a domain of three labels or more.
    bool evaluate(std::string_view emailAddress) const;
    /// Points to the domain, and names the first of the texts that is there.
    EmailAddressRefusal explain(std::string_view emailAddress) const;

    /// `not in the domain: ["mail"]`
    std::string description() const;
    friend bool operator==(const DomainPrefixValidationRule&, const DomainPrefixValidationRule&) = default;

    std::vector<std::string> invalidPrefixes; ///< None of them may be there.
};

/// Accepts only addresses whose domain ends in the labels of one of these, with regard to case: with
/// "example.com", "mail.example.com" passes and "myexample.com" does not. Without any it refuses all.
class ORRENBY_EXPORT EmailAddress::DomainSuffixValidationRule {
public:
    /// Accepts these domains; without any it accepts nothing.
    explicit DomainSuffixValidationRule(std::vector<std::string> domains)
        : validDomains(std::move(domains))
    {}

    /// Whether one of the domains fits.
    bool evaluate(std::string_view emailAddress) const;
    /// Points to the domain, and names those that are accepted.
    EmailAddressRefusal explain(std::string_view emailAddress) const;

    /// `domains: ["example.com"]`
    std::string description() const;
    friend bool operator==(const DomainSuffixValidationRule&, const DomainSuffixValidationRule&) = default;

    std::vector<std::string> validDomains; ///< One of them has to fit.
};

template <detail::TestsText Block>
    requires(!detail::EvaluatesEmailAddress<Block>)
const EmailAddress::Validator& EmailAddress::Validator::addRule(Block block) const
{
    return addRule(EmailAddressValidationRule(BlockValidationRule(std::move(block))));
}

} // namespace orrenby

template <> struct std::hash<orrenby::EmailAddress::EmailValidationRule> {
    std::size_t operator()(const orrenby::EmailAddress::EmailValidationRule&) const noexcept { return 1; }
};
template <> struct std::hash<orrenby::EmailAddress::DomainPrefixValidationRule> {
    std::size_t operator()(const orrenby::EmailAddress::DomainPrefixValidationRule& rule) const
    {
        return std::hash<std::string>{}(rule.description());
    }
};
template <> struct std::hash<orrenby::EmailAddress::DomainSuffixValidationRule> {
    std::size_t operator()(const orrenby::EmailAddress::DomainSuffixValidationRule& rule) const
    {
        return std::hash<std::string>{}(rule.description());
    }
};
