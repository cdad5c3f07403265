#pragma once

/// @file
/// Queries as dictionaries, with their old habits. See `QueryItems` for the list that loses nothing.

#include "Orrenby/Foundation/AnyEntries.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Either form of a dictionary, looked at while a call lasts.
class ORRENBY_EXPORT QuerySource {
public:
    QuerySource(const Dictionary& dictionary) noexcept
        : m_dictionary(&dictionary)
    {}
    QuerySource(const AnyEntries& entries) noexcept
        : m_entries(&entries)
    {}

    std::string encoded() const;

private:
    const Dictionary* m_dictionary = nullptr;
    const AnyEntries* m_entries = nullptr;
};

ORRENBY_EXPORT Dictionary queryParameters(std::string_view text);

} // namespace detail

/// The parameters in a query, or in the query of a URL's text: names and values are split at "&" and "=",
/// then percent-encoded, *not* decoded: what was encoded already is encoded twice, "%20" becomes "%2520".
///
/// The query is what stands between the first "?" and the second, or the whole text when there is none; a
/// fragment is no part of its own. The value ends at a second "=". Pieces without "=" are passed over, and so
/// are those that are no UTF-8; an empty name or value stays. Of a repeated name the last value counts.
///
/// @snippet Tests/Foundation/QueryParametersTests.cpp Parameters of a text
///
/// Linear. Safe to use from several threads.
inline constexpr auto queryParameters = pipeable<std::string_view>(
    [](std::string_view text) { return detail::queryParameters(text); });

/// The entries as "key=value" with "&" between them, in their order, keys and values escaped by `urlencode`.
///
/// Values are texts or numbers: integers as they are, floating numbers without ".0" at the end, booleans as
/// "1" and "0". Every other value, and every key that is no text, gets a critical entry in the log, and its
/// entry is left out. A text that is no UTF-8 becomes "(null)".
///
/// @snippet Tests/Foundation/QueryParametersTests.cpp A query of a dictionary
///
/// Takes a `Dictionary`, or `AnyEntries` where keys are of several kinds. Linear. Safe to use from several
/// threads.
inline constexpr auto urlEncodeQueryParameters = pipeable<detail::QuerySource>(
    [](detail::QuerySource source) { return source.encoded(); });

/// The text, "?", and the dictionary as `urlEncodeQueryParameters` writes it. The "?" is always added, even
/// behind a query and even before nothing.
///
/// @snippet Tests/Foundation/QueryParametersTests.cpp A path with parameters
inline constexpr auto pathByAppendingQueryParameters = pipeable<std::string_view>(
    [](std::string_view text, detail::QuerySource parameters) {
        return std::string(text) + "?" + parameters.encoded();
    });

} // namespace orrenby
