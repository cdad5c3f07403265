#pragma once

/// @file
/// Finds postal addresses. Not in the umbrella header: part of DataDetector.cpp.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/DataDetectorRules.hpp"
#include "Orrenby/Platform/Text/DataDetectorText.hpp"
#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A piece of text as addresses are read.
struct AddressToken {
    enum class Kind { End, Break, Word, Number, Comma, Other };
    Kind kind = Kind::End;
    DetectorSpan span{};
    /// Of a word: whether it begins with a capital, be it behind "d'".
    bool isCapital = false;
    /// Of a word: whether a full stop stands behind it.
    bool hasDot = false;
    /// Of a number: what its digits say, and whether it is "5th".
    unsigned value = 0;
    bool isOrdinal = false;

    /// Behind the token and its full stop.
    std::size_t next() const { return span.end + (hasDot ? 1 : 0); }
};

/// Reads words, numbers, commas and line breaks; blanks are nothing, and what is longer than 80 bytes is
/// neither word nor number.
class AddressTokens {
public:
    explicit AddressTokens(const DetectorText& text)
        : m_text(text)
    {}
    AddressToken at(std::size_t place) const;

private:
    AddressToken lineBreak(std::size_t begin) const;
    AddressToken word(std::size_t begin) const;
    AddressToken number(std::size_t begin) const;

    const DetectorText& m_text;
};

/// What stands behind street and house number: unit, postcode and place, country.
class AddressTail {
public:
    AddressTail(const DetectorText& text, const DetectorRules& rules)
        : m_text(text)
        , m_rules(rules)
        , m_tokens(text)
    {}

    struct End {
        std::size_t place = 0;
        /// Whether a place was named.
        bool hasPlace = false;
    };
    End after(std::size_t end) const;

private:
    std::size_t afterUnits(std::size_t end) const;
    std::size_t afterUnit(std::size_t end) const;
    /// The place from which to go on behind a comma, a line break or both.
    std::size_t afterSeparator(std::size_t place) const;
    std::optional<std::size_t> postcodeThenPlace(std::size_t place) const;
    std::optional<std::size_t> placeThenPostcode(std::size_t place) const;
    std::optional<std::size_t> placeName(std::size_t place) const;
    std::optional<std::size_t> regionAndPostcode(std::size_t place) const;
    std::optional<std::size_t> postcode(std::size_t place, bool isBeforePlace) const;
    std::optional<std::size_t> country(std::size_t place) const;
    std::size_t matched(std::string_view form, std::size_t place) const;

    const DetectorText& m_text;
    const DetectorRules& m_rules;
    AddressTokens m_tokens;
};

/// Gives the postal addresses of a text from left to right; they do not overlap.
///
/// An address has a street with a house number, or a post-office box. What stands around these is looked at
/// over a bounded number of words, so that each byte is read a bounded number of times. Not synchronised.
class AddressScanner {
public:
    AddressScanner(const DetectorText& text, const DetectorRules& rules)
        : m_text(text)
        , m_rules(rules)
        , m_tokens(text)
        , m_tail(text, rules)
    {}

    std::optional<DetectorSpan> next();

private:
    /// Remembers words of the same line that stand side by side.
    static constexpr std::size_t mostWordsBefore = 3;

    std::optional<DetectorSpan> addressAt(const AddressToken& token) const;
    std::optional<std::size_t> afterHouseNumber(const AddressToken& number) const;
    std::optional<std::size_t> streetNamed(std::size_t place) const;
    std::optional<std::size_t> streetByLastWord(std::size_t place) const;
    std::optional<DetectorSpan> firstWord(const AddressToken& word) const;
    std::optional<DetectorSpan> compound(const AddressToken& word) const;
    std::optional<DetectorSpan> lastWord(const AddressToken& word) const;
    std::optional<DetectorSpan> box(const AddressToken& word) const;
    std::optional<DetectorSpan> japanese(std::size_t begin) const;
    /// Behind the words of a name, of which one at least is a capital one.
    std::optional<std::size_t> name(std::size_t place, bool mayHoldNumbers) const;
    struct House {
        std::size_t end = 0;
        /// Whether it may as well be a year.
        bool isYear = false;
    };
    std::optional<House> houseNumber(std::size_t place) const;
    bool isHouseNumber(const AddressToken& token) const;
    bool mayBeginAddress(const AddressToken& word) const;
    /// All roles of a word, added up.
    std::uint16_t roles(const AddressToken& word) const;
    bool isRole(const AddressToken& word, StreetRole role) const
    {
        return (roles(word) & static_cast<std::uint16_t>(role)) != 0;
    }
    void remember(const AddressToken& token);

    const DetectorText& m_text;
    const DetectorRules& m_rules;
    AddressTokens m_tokens;
    AddressTail m_tail;
    std::size_t m_place = 0;
    std::array<AddressToken, mostWordsBefore> m_before{};
    std::size_t m_beforeCount = 0;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
