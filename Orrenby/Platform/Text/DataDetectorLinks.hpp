#pragma once

/// @file
/// Finds links and mail addresses. Not in the umbrella header: part of DataDetector.cpp.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Text/DataDetectorRules.hpp"
#include "Orrenby/Platform/Text/DataDetectorText.hpp"
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A link in a text.
struct DetectedLink {
    DetectorSpan span{};
    /// What its URL has in front of the text: nothing, "mailto:" or "http://".
    std::string_view prefix{};
};

/// The URL of a link: its text behind the prefix, with all that a URL cannot hold percent-encoded. Nothing
/// when it begins with no scheme.
std::optional<URL> linkURL(std::string_view prefix, std::string_view text);

/// Where a link ends that has begun: before the first character that no URL holds, before a bracket that has
/// no partner inside the link, and before punctuation that ends a sentence.
///
/// Ends are asked for in ascending order, and all of them together read each byte a constant number of times:
/// the partners of brackets are looked for once per stretch without barriers.
class LinkEnds {
public:
    explicit LinkEnds(const DetectorText& text)
        : m_text(text)
    {}

    struct End {
        /// Behind the link.
        std::size_t link = 0;
        /// Where to look for the next one.
        std::size_t resume = 0;
    };
    /// @param from  A place inside the link from which on it may end.
    End endOf(std::size_t begin, std::size_t from);

private:
    static constexpr std::size_t nowhere = static_cast<std::size_t>(-1);
    struct Bracket {
        std::size_t place;
        std::size_t partner;
    };

    void pairBrackets(std::size_t begin);
    const Bracket& bracketAt(std::size_t place);
    /// The length of what may stand in a link, 0 at its end.
    std::size_t lengthAt(std::size_t place) const;
    std::size_t withoutPunctuation(std::size_t begin, std::size_t end) const;

    const DetectorText& m_text;
    std::vector<Bracket> m_brackets;
    std::size_t m_nextBracket = 0;
    std::size_t m_pairedUntil = 0;
};

/// Gives the links of a text from left to right; they do not overlap.
///
/// Reads each byte a constant number of times. Not synchronised.
class LinkScanner {
public:
    LinkScanner(const DetectorText& text, const DetectorRules& rules)
        : m_text(text)
        , m_rules(rules)
        , m_ends(text)
    {}

    std::optional<DetectedLink> next();

private:
    /// A run of characters that may stand before the "@" of an address.
    struct Head {
        std::size_t begin = 0;
        std::size_t end = 0;
        /// Behind the last character that no scheme has.
        std::size_t scheme = 0;
        /// Behind the last ideograph.
        std::size_t narrow = 0;
        bool hasDot = false;
    };
    /// A name with dots.
    struct Domain {
        std::size_t end = 0;
        std::size_t labels = 0;
        std::size_t lastLabel = 0;
        bool isSound = false;
        bool isAllDigits = false;
    };

    Head headAt(std::size_t begin) const;
    std::optional<DetectedLink> schemeLink(const Head& head);
    std::optional<DetectedLink> mailLink(const Head& head);
    std::optional<DetectedLink> domainLink(const Head& head);
    Domain domainAt(std::size_t begin) const;
    bool dropCapitalLabel(std::size_t begin, Domain& domain) const;
    DomainEnding ending(const Domain& domain) const;
    bool isCapitalLabel(const Domain& domain) const;
    bool mayFollow(SchemeForm form, std::size_t place) const;
    std::size_t endOfPort(std::size_t place) const;

    const DetectorText& m_text;
    const DetectorRules& m_rules;
    LinkEnds m_ends;
    std::size_t m_place = 0;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
