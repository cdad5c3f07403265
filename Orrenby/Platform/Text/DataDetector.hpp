#pragma once

/// @file
/// Finds links, mail addresses, telephone numbers and postal addresses in text.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Owned.hpp"
#include "Orrenby/Platform/Text/DataMatch.hpp"
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// Finds data in running text, as a reader would who does not check whether anybody lives or answers there.
///
/// - **Links** are URLs with a scheme ("https://…", "tel:…"), mail addresses, which get "mailto:", and names
///   such as "example.com", which get "http://" when their last label is a known top-level domain. The scheme
///   keeps its spelling. What a URL cannot hold is percent-encoded in the URL, so that it always is one.
///   Punctuation behind a link and brackets without a partner inside it are no part of it.
/// - **Telephone numbers** are international ("+49 30 …", "0049 …"), or in a form that some country uses, or
///   stand behind a word such as "Tel."; with their extension. They have no URL.
/// - **Addresses** are a street with a house number, or a post-office box, with what follows of unit,
///   postcode, place and country. They have no URL.
///
/// Matches do not overlap: of two that would, the one that begins first stands, and of two that begin
/// together the longer. All kinds take part in this, so that the digits in a link are no telephone number,
/// whichever kinds were asked for.
///
/// The rules are tables of words and forms in the folder DataDetectorRules; nothing is read when the program
/// runs. It guesses: Docs list what it is known to miss.
///
/// @snippet Tests/Platform/Text/DataDetectorTests.cpp Finding data
///
/// The time is linear in the length, whatever the text. Safe to use from several threads.
class ORRENBY_EXPORT DataDetector {
public:
    class Scan;

    /// @param kinds  What is reported.
    explicit DataDetector(DataKind kinds) noexcept
        : m_kinds(kinds)
    {}

    /// What is reported.
    DataKind kinds() const noexcept { return m_kinds; }

    /// All matches from left to right.
    std::vector<DataMatch> matches(std::string_view text) const;

    /// The leftmost match. Reads no more of the text than it has to.
    std::optional<DataMatch> firstMatch(std::string_view text) const;

private:
    DataKind m_kinds;
};

/// Gives the matches one by one, for who may want to stop before the end.
///
/// @snippet Tests/Platform/Text/DataDetectorTests.cpp Finding data one by one
///
/// Not synchronised.
class ORRENBY_EXPORT DataDetector::Scan {
public:
    /// @param text  Outlives the scan.
    Scan(const DataDetector& detector, std::string_view text);

    Scan(Scan&&) noexcept;
    Scan& operator=(Scan&&) noexcept;
    ~Scan();

    /// The next match, or nothing at the end and ever after.
    std::optional<DataMatch> next();

    /// How many bytes were looked at so far, each as often as it was looked at. A bounded multiple of the
    /// text's length.
    std::size_t work() const noexcept;

private:
    struct State;
    detail::Owned<State> m_state;
};

} // namespace orrenby
