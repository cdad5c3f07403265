#pragma once

/// @file
/// Addresses of things on the web and elsewhere.

#include "Orrenby/Platform/Export.hpp"
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// A URL, absolute or relative: a text that the grammar of RFC 3986 accepts. There is none that it does not.
///
/// Nothing is mended and nothing is normalised: blanks, text beyond ASCII and a "%" without two digits make a
/// text no URL, and "HTTP://a/b/../c" stays as it is. The parts are views into the text, as they are written
/// there, and valid as long as the URL is; `URLComponents` decodes them, and changes them.
///
/// The empty text is a relative URL, which refers to the document that it stands in.
///
/// @snippet Tests/Platform/Net/URLTests.cpp Reading a URL
///
/// A plain value, equal by its text: "http://a" and "http://a/" differ. Each part is looked for when it is
/// asked for, in time linear in the text. Not synchronised.
class ORRENBY_EXPORT URL {
public:
    /// The URL of the text, or nothing when it is none.
    static std::optional<URL> make(std::string_view text);

    /// The absolute URL that the text stands for in a document at `relativeTo`, as RFC 3986, section 5.2,
    /// resolves it: "../c" in "http://a/b/d" is "http://a/c".
    ///
    /// A text with a scheme stands for itself. Nothing when the text is no URL, and when neither it nor
    /// `relativeTo` has a scheme.
    ///
    /// @snippet Tests/Platform/Net/URLTests.cpp Resolving a relative URL
    static std::optional<URL> make(std::string_view text, const URL& relativeTo);

    /// The whole text. That of a relative URL is as relative as it is.
    const std::string& absoluteString() const noexcept { return m_text; }

    /// Without its colon, as it is spelled. A URL without one is relative.
    std::optional<std::string_view> scheme() const noexcept;

    /// What stands before the ":" or "@" of the authority.
    std::optional<std::string_view> user() const noexcept;

    /// What stands between the first ":" before the "@" and the "@".
    std::optional<std::string_view> password() const noexcept;

    /// Without port; an IP address of version 6 without its brackets. Empty in "file:///etc", nothing in
    /// "mailto:a@b.co".
    std::optional<std::string_view> host() const noexcept;

    /// Nothing where no number follows the host, or one that is no port (above 65535).
    std::optional<std::uint16_t> port() const noexcept;

    /// With its leading slash, if it has one; empty where there is none.
    std::string_view path() const noexcept;

    /// What follows the "?". Empty in "/a?", nothing in "/a".
    std::optional<std::string_view> query() const noexcept;

    /// What follows the "#". Empty in "/a#", nothing in "/a".
    std::optional<std::string_view> fragment() const noexcept;

    /// The same as `absoluteString()`.
    const std::string& description() const noexcept { return m_text; }

    friend bool operator==(const URL&, const URL&) = default;

    /// By the bytes of the texts.
    friend std::strong_ordering operator<=>(const URL&, const URL&) = default;

private:
    explicit URL(std::string text) noexcept
        : m_text(std::move(text))
    {}

    std::string m_text;
};

inline namespace literals {

/// A URL that stands in the program: `"https://example.com/a"_url`. A text that is no URL is a programming
/// error and ends the process.
ORRENBY_EXPORT URL operator""_url(const char* text, std::size_t length);

} // namespace literals

} // namespace orrenby

template <> struct std::hash<orrenby::URL> {
    std::size_t operator()(const orrenby::URL& url) const noexcept
    {
        return std::hash<std::string>()(url.absoluteString());
    }
};
