#pragma once

/// @file
/// Finds telephone numbers. Not in the umbrella header: part of DataDetector.cpp.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/DataDetectorRules.hpp"
#include "Orrenby/Platform/Text/DataDetectorText.hpp"
#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Gives the telephone numbers of a text from left to right; they do not overlap.
///
/// A number is international ("+" and a calling code with as many digits as its country has), or has one of
/// the forms of PhoneForms.txt, or stands behind a word such as "Tel.".
///
/// Reads each byte a constant number of times. Not synchronised.
class PhoneScanner {
public:
    PhoneScanner(const DetectorText& text, const DetectorRules& rules)
        : m_text(text)
        , m_rules(rules)
    {}

    std::optional<DetectorSpan> next();

private:
    static constexpr std::size_t mostGroups = DetectorRules::mostPhoneGroups;
    static constexpr std::size_t mostDigits = 18; // "011" or "00" and a number of 15 digits

    /// Digits that stand together.
    struct Group {
        std::size_t begin = 0;
        /// Behind its closing bracket, if it has brackets.
        std::size_t end = 0;
        std::size_t firstDigit = 0;
        std::size_t digits = 0;
        PhoneSeparator separator = PhoneSeparator::None;
        bool isInBrackets = false;
    };
    /// Groups that may be parts of one number.
    struct Candidate {
        std::size_t begin = 0;
        bool hasPlus = false;
        std::size_t count = 0;
        std::array<Group, mostGroups> groups{};
        /// All digits in one line.
        std::string digits{};
    };
    struct Separation {
        std::size_t end = 0;
        PhoneSeparator separator = PhoneSeparator::None;
    };

    Candidate candidateAt(std::size_t begin) const;
    bool readGroup(std::size_t place, Candidate& candidate) const;
    std::optional<Separation> separationAt(std::size_t place, const Group& before) const;
    bool mayBegin(std::size_t place) const;
    bool isInGroupsOfFour(const Candidate& candidate) const;
    bool mayEnd(const Candidate& candidate, std::size_t groups) const;
    bool isNumber(const Candidate& candidate, std::size_t groups) const;
    bool isInternational(const Candidate& candidate, std::size_t groups) const;
    bool isNational(const Candidate& candidate, std::size_t groups) const;
    bool fits(const Candidate& candidate, const PhoneForm& form) const;
    bool isAnnounced(const Candidate& candidate, std::size_t groups) const;
    bool hasPhoneWordBefore(std::size_t place) const;
    std::size_t withExtension(std::size_t end) const;

    const DetectorText& m_text;
    const DetectorRules& m_rules;
    std::size_t m_place = 0;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
