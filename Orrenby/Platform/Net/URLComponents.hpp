#pragma once

/// @file
/// The parts of a URL, to be read decoded, changed, and put together again.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Net/URLQueryItem.hpp"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// The parts of a URL as they stand in its text; nothing is resolved.
///
/// Each part has two forms. The plain one is decoded, and what is set is escaped as far as its part needs it;
/// any bytes will do, so that what is read need not be UTF-8 where the URL escapes other bytes. The
/// percent-encoded one is the text as it is written; what may not be written there is refused: the setter
/// gives `false` and changes nothing.
///
/// A part that is missing is nothing, one that is empty is an empty text: "/a", "/a?" and "/a?b" have no
/// query, an empty one, and one with an item that has no value.
///
/// @snippet Tests/Platform/Net/URLComponentsTests.cpp Changing a query
///
/// A plain value, equal by its parts as they are written. Reading a decoded part takes time linear in it. Not
/// synchronised.
class ORRENBY_EXPORT URLComponents {
public:
    /// Those of the empty relative URL.
    URLComponents() = default;

    /// The parts of the URL as it is written; a relative one is not resolved.
    explicit URLComponents(const URL& url);

    /// Those of the text; nothing when it is no URL.
    static std::optional<URLComponents> make(std::string_view text);

    /// The URL's text, exactly as it was read when nothing was changed.
    ///
    /// A user, password or port without a host stands before an empty one. Nothing when the parts do not fit
    /// together: a path that does not begin with "/" behind a host, one that begins with "//" without any,
    /// one with a colon before its first slash without a scheme.
    std::optional<std::string> string() const;

    /// The URL; nothing when `string()` is.
    std::optional<URL> url() const;

    /// The absolute URL that the parts stand for in a document at `relativeTo`, see `URL::make`.
    std::optional<URL> url(const URL& relativeTo) const;

    /// As it is written, without the colon.
    const std::optional<std::string>& scheme() const noexcept { return m_scheme; }
    /// Letters, then also digits, "+", "-" and "."; `false` for anything else.
    bool setScheme(std::optional<std::string_view> scheme);

    /// The part before the host that names somebody, in its two forms; the password behind it likewise.
    std::optional<std::string> user() const;
    const std::optional<std::string>& percentEncodedUser() const noexcept { return m_user; }
    void setUser(std::optional<std::string_view> user);
    bool setPercentEncodedUser(std::optional<std::string_view> user);

    /// What stands behind the user and a colon. Whatever prints the URL prints it, too.
    std::optional<std::string> password() const;
    const std::optional<std::string>& percentEncodedPassword() const noexcept { return m_password; }
    void setPassword(std::optional<std::string_view> password);
    bool setPercentEncodedPassword(std::optional<std::string_view> password);

    /// An IP address of version 6 without its brackets.
    std::optional<std::string> host() const;
    /// With the brackets.
    const std::optional<std::string>& percentEncodedHost() const noexcept { return m_host; }
    /// An address of version 6 gets its brackets if it has none. A name beyond ASCII is escaped, as RFC 3986
    /// has it, and not brought into the form of the domain name system.
    void setHost(std::optional<std::string_view> host);
    bool setPercentEncodedHost(std::optional<std::string_view> host);

    /// Nothing when there is none, or it is none of 16 bits.
    std::optional<std::uint16_t> port() const noexcept;
    void setPort(std::optional<std::uint16_t> port);

    /// Empty, never missing. Slashes part it; one inside a piece is escaped in the percent-encoded form only.
    std::string path() const;
    const std::string& percentEncodedPath() const noexcept { return m_path; }
    void setPath(std::string_view path);
    bool setPercentEncodedPath(std::string_view path);

    /// Without the "?". The decoded form cannot be taken apart again: an escaped "&" looks like the others;
    /// see `queryItems`.
    std::optional<std::string> query() const;
    const std::optional<std::string>& percentEncodedQuery() const noexcept { return m_query; }
    void setQuery(std::optional<std::string_view> query);
    bool setPercentEncodedQuery(std::optional<std::string_view> query);

    /// The pieces of the query in their order, decoded. "+" is a plus; see `QueryItems` for queries of forms,
    /// where it is a blank.
    ///
    /// Nothing without a query, an empty list for an empty one. Nothing is lost: "a&&b" has three items, the
    /// second with an empty name.
    std::optional<std::vector<URLQueryItem>> queryItems() const;
    /// The same as they are written.
    std::optional<std::vector<URLQueryItem>> percentEncodedQueryItems() const;
    /// Escapes "&", "=" and "#" in names and values, and what may not stand in a query. An empty list makes
    /// an empty query, and so does a single item with neither name nor value.
    void setQueryItems(const std::optional<std::vector<URLQueryItem>>& items);

    /// Without the "#".
    std::optional<std::string> fragment() const;
    const std::optional<std::string>& percentEncodedFragment() const noexcept { return m_fragment; }
    void setFragment(std::optional<std::string_view> fragment);
    bool setPercentEncodedFragment(std::optional<std::string_view> fragment);

    /// `string()`, or an empty text when there is none.
    std::string description() const { return string().value_or(std::string()); }

    std::size_t hash() const noexcept;
    friend bool operator==(const URLComponents&, const URLComponents&) = default;

private:
    // All in the form in which they stand in a URL, and allowed there.
    std::optional<std::string> m_scheme;
    std::optional<std::string> m_user;
    std::optional<std::string> m_password;
    std::optional<std::string> m_host;
    std::optional<std::string> m_port; ///< Digits as they are written: "080", or none at all.
    std::string m_path;
    std::optional<std::string> m_query;
    std::optional<std::string> m_fragment;
};

} // namespace orrenby

template <> struct std::hash<orrenby::URLComponents> {
    std::size_t operator()(const orrenby::URLComponents& components) const noexcept
    {
        return components.hash();
    }
};
