#pragma once

/// @file
/// Regular expressions.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Text/NSRange.hpp"
#include "Orrenby/Platform/Text/RegularExpressionError.hpp"
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// How a pattern is read, and how long a text may take.
struct RegularExpressionOptions {
    bool isCaseInsensitive = false; ///< Letters match those of the other case, beyond ASCII as well.
    /// White space in the pattern, and what follows a "#", mean nothing.
    bool allowsComments = false;
    bool dotMatchesLineSeparators = false; ///< A "." matches line ends, too.
    /// "^" and "$" also match at the beginning and end of each line.
    bool anchorsMatchLines = false;
    /// "\b" follows the boundaries of Unicode's words.
    bool usesUnicodeWordBoundaries = false;
    /// Seconds that one call may take, roughly; none when 0. It is counted in the engine's steps, each of
    /// which takes about a millisecond, so that the same text fails on every machine.
    double timeLimit = 1;

    friend bool operator==(const RegularExpressionOptions&, const RegularExpressionOptions&) = default;
};

/// What one match covers.
///
/// A plain value. Not synchronised.
class ORRENBY_EXPORT RegularExpressionMatch {
public:
    /// Made by `RegularExpression`. The first group is all of the match.
    explicit RegularExpressionMatch(std::vector<std::optional<NSRange>> groups) noexcept
        : m_groups(std::move(groups))
    {}

    /// All of the match, in UTF-16 units.
    NSRange range() const { return m_groups.front().value_or(NSRange()); }

    /// What a group covers: 0 is all of the match, 1 the first pair of parentheses. Nothing for a group that
    /// took no part in the match, and for a number beyond the last.
    std::optional<NSRange> range(std::size_t group) const
    {
        return group < m_groups.size() ? m_groups[group] : std::nullopt;
    }

    /// All groups, the whole match first.
    const std::vector<std::optional<NSRange>>& ranges() const noexcept { return m_groups; }

    friend bool operator==(const RegularExpressionMatch&, const RegularExpressionMatch&) = default;

private:
    std::vector<std::optional<NSRange>> m_groups;
};

/// A pattern in ICU's syntax, compiled once and tried on any number of texts.
///
/// Ranges are UTF-16 units; `UTF16View::slice` gives what stands there. "." does not match line ends (LF, VT,
/// FF, CR, U+0085, U+2028, U+2029) unless asked to. A text that is no UTF-8 is read with U+FFFD in place of
/// what is none.
///
/// The engine goes back and tries again, so that a pattern such as "(a+)+b" takes exponential time on the
/// wrong text; the time limit ends that. For text from outside choose patterns whose alternatives exclude
/// each other.
///
/// Every operation that may exceed the limit throws a `RegularExpressionError`; its twin with `try` in its
/// name gives a `Result` instead.
///
/// @snippet Tests/Platform/Text/RegularExpressionTests.cpp Finding matches
///
/// A handle: copies share one immutable pattern. Each call converts the text to UTF-16 first, which is
/// linear. Safe to use from several threads.
class ORRENBY_EXPORT RegularExpression {
public:
    /// The types that belong to it, under shorter names.
    using Options = RegularExpressionOptions;
    using Match = RegularExpressionMatch;
    using Error = RegularExpressionError;

    /// Throws when the pattern is no regular expression.
    explicit RegularExpression(std::string_view pattern, Options options = {});
    static Result<RegularExpression, Error> tryMake(std::string_view pattern, Options options = {});

    /// What it was made with. The reference lives as long as a copy does.
    const std::string& pattern() const noexcept;
    const Options& options() const noexcept;

    /// Pairs of parentheses that capture.
    std::size_t numberOfCaptureGroups() const noexcept;

    /// The number of a group that the pattern names `(?<name>…)`.
    std::optional<std::size_t> captureGroup(std::string_view name) const;

    /// Whether the pattern matches the text from its start to its end.
    bool matches(std::string_view text) const;
    Result<bool, Error> tryMatches(std::string_view text) const;

    /// The match that begins first. Nothing when there is none; the twin gives a failure instead of throwing
    /// it.
    std::optional<Match> firstMatch(std::string_view text) const;
    Result<std::optional<Match>, Error> tryFirstMatch(std::string_view text) const;

    /// First to last, none overlapping another. An empty match is one, too.
    std::vector<Match> allMatches(std::string_view text) const;
    Result<std::vector<Match>, Error> tryAllMatches(std::string_view text) const;

    /// The text with another in place of each match. "$1" or "${name}" in it stands for what a group covers,
    /// "\$" for the sign itself.
    std::string replacingMatches(std::string_view text, std::string_view withTemplate) const;
    Result<std::string, Error> tryReplacingMatches(
        std::string_view text, std::string_view withTemplate) const;

    /// A template that stands for the text itself.
    static std::string escapedTemplate(std::string_view text);
    /// A pattern that matches the text itself.
    static std::string escapedPattern(std::string_view text);

    /// Of one pattern with the same options.
    friend bool operator==(const RegularExpression& first, const RegularExpression& second) noexcept
    {
        return first.pattern() == second.pattern() && first.options() == second.options();
    }

private:
    struct Compiled;
    explicit RegularExpression(std::shared_ptr<const Compiled> compiled) noexcept
        : m_compiled(std::move(compiled))
    {}

    std::shared_ptr<const Compiled> m_compiled;
};

} // namespace orrenby

template <> struct std::hash<orrenby::RegularExpression> {
    std::size_t operator()(const orrenby::RegularExpression& expression) const noexcept
    {
        return std::hash<std::string>{}(expression.pattern());
    }
};
