#pragma once

/// @file
/// Operations on URLs: made from texts that may be missing, resolved, their queries read and written.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/QueryItems.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
#include <optional>
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

ORRENBY_EXPORT std::optional<Dictionary> queryParams(const URL& url);
ORRENBY_EXPORT URL prepending(URL url, const URL& baseURL);
ORRENBY_EXPORT URL addingQueryItems(const URL& url, const QueryItems& items, QueryEncoding form);
ORRENBY_EXPORT URL settingQueryItems(const URL& url, const QueryItems& items, QueryEncoding form);

} // namespace detail

/// The URL of a text, or nothing when there is no text or it is none.
///
/// @snippet Tests/Foundation/URLTests.cpp Making a URL of a text that may be missing
///
/// Linear. Safe to use from several threads.
ORRENBY_EXPORT std::optional<URL> makeURL(std::optional<std::string_view> text);

/// What the names in the query of a URL stand for, decoded; all values are texts. Nothing when there is no
/// query, or an empty one.
///
/// Items without "=" are passed over, and so are those that are no UTF-8 once decoded; of a repeated name the
/// last one counts. "+" is a plus. See `QueryItems` for all of them.
///
/// @snippet Tests/Foundation/URLTests.cpp Looking up what the query says
///
/// Linear. Safe to use from several threads.
inline constexpr auto queryParams = pipeable<const URL&>(
    [](const URL& url) { return detail::queryParams(url); });

/// The URL as it is meant in a document at `baseURL`, as `URL::make(text, relativeTo)` resolves it. An
/// absolute URL stays as it is.
///
/// When that gives nothing, because neither has a scheme, the log gets a critical entry "URLComponents failed
/// to concatenate baseURL" and the URL comes back unchanged.
///
/// @snippet Tests/Foundation/URLTests.cpp Calling a service at a base
///
/// Linear. Safe to use from several threads.
inline constexpr auto prepending = pipeable<URL>(
    [](URL url, const URL& baseURL) { return detail::prepending(std::move(url), baseURL); });

/// The URL with items behind those of its query. The query that is there stays as it is written; without
/// items, so does the whole.
///
/// @snippet Tests/Foundation/URLTests.cpp Adding to a query
///
/// Linear. Safe to use from several threads.
inline constexpr auto addingQueryItems = pipeable<const URL&>(
    [](const URL& url, const QueryItems& items, QueryEncoding form = QueryEncoding::Percent) {
        return detail::addingQueryItems(url, items, form);
    });

/// The URL with these items as its query, and with no query when there are none.
///
/// @snippet Tests/Foundation/URLTests.cpp Adding to a query
inline constexpr auto settingQueryItems = pipeable<const URL&>(
    [](const URL& url, const QueryItems& items, QueryEncoding form = QueryEncoding::Percent) {
        return detail::settingQueryItems(url, items, form);
    });

} // namespace orrenby
