#pragma once

/// @file
/// The tables that tell links, telephone numbers and addresses from other text. Not in the umbrella header:
/// part of DataDetector.cpp.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/EmbeddedText.hpp"
#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// How a link goes on behind the colon of its scheme.
enum class SchemeForm { Unknown, Host, Path, Word, Number, Mail, Query };

/// What a name's last label says about the name.
enum class DomainEnding { Unknown, Known, FileEnding };

/// How many digits stand behind a calling code.
struct CallingCode {
    std::size_t codeLength = 0;
    std::size_t fewest = 0;
    std::size_t most = 0;
};

/// What may stand between two groups of digits; several are added up.
enum class PhoneSeparator : std::uint8_t { None = 1, Blank = 2, Dash = 4, Dot = 8, Slash = 16 };

/// One group of digits in the form of a telephone number.
struct PhoneFormGroup {
    /// The separators before it that fit.
    std::uint8_t separators = 0;
    bool isInBrackets = false;
    /// For each of the first digits, one bit for each digit that fits.
    std::vector<std::uint16_t> digits{};
    std::size_t fewest = 0;
    std::size_t most = 0;
};
using PhoneForm = std::vector<PhoneFormGroup>;

/// The parts that a word can have in an address; several are added up.
enum class StreetRole : std::uint16_t {
    After = 1,
    Alone = 2,
    First = 4,
    Last = 8,
    Lead = 16,
    Particle = 32,
    Number = 64,
    Unit = 128,
    Compass = 256,
    Box = 512,
    Time = 1024,
    Article = 2048,
    /// Begins the name of a post-office box, which may have several words.
    BoxBegin = 4096,
};

/// A form of postcodes: see Postcodes.txt.
struct PostcodeForm {
    std::string form;
    bool isBeforePlace = false;
};

/// The tables, read once from the texts of the folder DataDetectorRules.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT DetectorRules {
public:
    static const DetectorRules& shared();

    explicit DetectorRules(std::span<const EmbeddedText> texts);

    /// All words are given in lower case.
    SchemeForm schemeForm(std::string_view scheme) const;
    DomainEnding domainEnding(std::string_view label) const;
    /// Of the calling code at the front of some digits.
    std::optional<CallingCode> callingCode(std::string_view digits) const;
    /// The forms of so many groups.
    const std::vector<PhoneForm>& phoneForms(std::size_t groups) const;
    static constexpr std::size_t mostPhoneGroups = 8;
    bool isPhoneWord(std::string_view word) const { return m_phoneWords.count(std::string(word)) != 0; }
    bool isExtensionWord(std::string_view word) const { return m_extensions.count(std::string(word)) != 0; }
    /// All roles of a word, added up.
    std::uint16_t roles(std::string_view word) const;
    bool hasRole(std::string_view word, StreetRole role) const
    {
        return (roles(word) & static_cast<std::uint16_t>(role)) != 0;
    }
    /// What street word a longer word ends in.
    struct Suffix {
        /// In bytes; 0 when there is none.
        std::size_t length = 0;
        /// Whether the word is an address only with a place behind it.
        bool wantsPlace = false;
    };
    Suffix suffix(std::string_view word) const;
    /// Whether some word with one of the roles `First`, `Last` and `BoxBegin`, with which an address may
    /// begin, has this first byte and so many in all. Most words of a text need no look-up then.
    bool mayBeginAddress(unsigned char first, std::size_t length) const
    {
        return length < m_beginnings.size() && m_beginnings[length][first];
    }
    const std::vector<PostcodeForm>& postcodeForms() const noexcept { return m_postcodes; }
    /// In upper case, as it has to be written.
    bool isRegion(std::string_view word) const { return m_regions.count(std::string(word)) != 0; }
    bool isCountry(std::string_view words) const { return m_countries.count(std::string(words)) != 0; }

private:
    void readLine(std::string_view file, std::string_view line);
    void readDomains(std::string_view line);
    void readCallingCode(std::span<const std::string_view> columns);
    void readStreetWord(std::string_view word, std::string_view role);
    void addRole(std::string_view word, StreetRole role);

    std::unordered_map<std::string, SchemeForm> m_schemes;
    std::unordered_map<std::string, DomainEnding> m_domains;
    std::unordered_map<std::string, CallingCode> m_callingCodes;
    std::vector<PhoneForm> m_phoneForms[mostPhoneGroups + 1];
    std::unordered_set<std::string> m_phoneWords;
    std::unordered_set<std::string> m_extensions;
    std::unordered_map<std::string, std::uint16_t> m_streetWords;
    std::unordered_map<std::string, bool> m_suffixes;
    std::array<std::bitset<256>, 24> m_beginnings;
    std::vector<PostcodeForm> m_postcodes;
    std::unordered_set<std::string> m_regions;
    std::unordered_set<std::string> m_countries;
};

/// The files of the folder DataDetectorRules.
std::span<const EmbeddedText> detectorRuleTexts();

/// Reads one line of PhoneForms.txt.
ORRENBY_EXPORT PhoneForm phoneForm(std::string_view line);

} // namespace orrenby::inline ORRENBY_ABI::detail
