#include "Orrenby/Platform/Text/RegularExpression.hpp"

#include "Orrenby/Platform/Text/UTF16.hpp"
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <unicode/regex.h>
#include <unicode/unistr.h>

namespace orrenby::inline ORRENBY_ABI {

namespace {

using Failure = RegularExpressionError;
using Kind = RegularExpressionError::Kind;

/// The engine counts in 32 bits.
constexpr std::size_t longestText = std::numeric_limits<std::int32_t>::max();

Failure errorOf(UErrorCode status, Kind otherwise, std::size_t position = 0)
{
    const std::string reason = u_errorName(status);
    if (status == U_REGEX_TIME_OUT)
        return {Kind::TimeLimitExceeded, 0, reason};
    if (status == U_REGEX_STACK_OVERFLOW)
        return {Kind::TooDeep, 0, reason};
    return {otherwise, position, reason};
}

std::uint32_t flagsOf(const RegularExpressionOptions& options) noexcept
{
    std::uint32_t flags = 0;
    const auto add = [&](bool isWanted, std::uint32_t flag) { flags |= isWanted ? flag : 0; };
    add(options.isCaseInsensitive, UREGEX_CASE_INSENSITIVE);
    add(options.allowsComments, UREGEX_COMMENTS);
    add(options.dotMatchesLineSeparators, UREGEX_DOTALL);
    add(options.anchorsMatchLines, UREGEX_MULTILINE);
    add(options.usesUnicodeWordBoundaries, UREGEX_UWORD);
    return flags;
}

/// The limit in steps of about a millisecond.
std::int32_t stepsOf(double seconds) noexcept
{
    if (!(seconds > 0))
        return 0;
    return static_cast<std::int32_t>(
        std::fmin(std::ceil(seconds * 1000), std::numeric_limits<std::int32_t>::max()));
}

icu::UnicodeString viewOf(const std::u16string& text)
{
    return {false, text.data(), static_cast<std::int32_t>(text.size())}; // not copied
}

/// Where in the pattern the engine stopped. It says so as a line and the number of characters read of it.
std::size_t positionOf(const UParseError& where, const std::u16string& pattern)
{
    std::size_t position = 0;
    std::int32_t line = 1;
    std::int32_t read = 0;
    while (position < pattern.size() && (line < where.line || (line == where.line && read < where.offset))) {
        const char16_t unit = pattern[position];
        const bool isSecond = unit == u'\n' && position > 0 && pattern[position - 1] == u'\r';
        const bool isPair = (unit & 0xFC00U) == 0xD800U && position + 1 < pattern.size();
        position += isPair ? 2 : 1;
        if (unit == u'\r' || unit == u'\u0085' || unit == u'\u2028' || (unit == u'\n' && !isSecond)) {
            ++line;
            read = 0;
        } else if (!isSecond)
            ++read;
    }
    return position;
}

/// One text that the pattern is tried on.
class Attempt {
public:
    Attempt(const icu::RegexPattern& pattern, std::string_view text, double timeLimit)
        : m_text(utf16FromUTF8(text))
        , m_view(viewOf(m_text))
    {
        if (m_text.size() > longestText) {
            status = U_INDEX_OUTOFBOUNDS_ERROR;
            return;
        }
        m_matcher.reset(pattern.matcher(m_view, status));
        if (U_SUCCESS(status))
            m_matcher->setTimeLimit(stepsOf(timeLimit), status);
    }

    Attempt(const Attempt&) = delete; // the view refers to the text beside it
    Attempt& operator=(const Attempt&) = delete;
    ~Attempt() = default;

    bool matches() { return U_SUCCESS(status) && m_matcher->matches(status) != 0 && U_SUCCESS(status); }
    bool find() { return U_SUCCESS(status) && m_matcher->find(status) != 0 && U_SUCCESS(status); }

    RegularExpressionMatch match()
    {
        std::vector<std::optional<NSRange>> groups;
        const auto count = m_matcher->groupCount();
        groups.reserve(static_cast<std::size_t>(count) + 1);
        for (std::int32_t group = 0; group <= count; ++group) {
            const auto start = m_matcher->start(group, status);
            const auto end = m_matcher->end(group, status);
            if (start < 0)
                groups.emplace_back();
            else
                groups.emplace_back(NSRange{.location = static_cast<std::size_t>(start),
                    .length = static_cast<std::size_t>(end - start)});
        }
        return RegularExpressionMatch(std::move(groups));
    }

    std::string replaceAll(const icu::UnicodeString& replacement)
    {
        if (U_FAILURE(status))
            return {};
        icu::UnicodeString result;
        while (find()) // the engine's own loop forgets that a time limit ended it
            m_matcher->appendReplacement(result, replacement, status);
        m_matcher->appendTail(result);
        return utf8FromUTF16({result.getBuffer(), static_cast<std::size_t>(result.length())});
    }

    UErrorCode status = U_ZERO_ERROR;

private:
    std::u16string m_text;
    icu::UnicodeString m_view;
    std::unique_ptr<icu::RegexMatcher> m_matcher;
};

template <class T> Result<T, Failure> outcome(T value, UErrorCode status, Kind otherwise = Kind::Failed)
{
    if (U_FAILURE(status))
        return Result<T, Failure>::failure(errorOf(status, otherwise));
    return Result<T, Failure>::success(std::move(value));
}

} // namespace

struct RegularExpression::Compiled {
    std::string pattern;
    Options options;
    std::unique_ptr<const icu::RegexPattern> engine;
    std::size_t groups = 0;

    Attempt attempt(std::string_view text) const { return Attempt(*engine, text, options.timeLimit); }
};

Result<RegularExpression, Failure> RegularExpression::tryMake(std::string_view pattern, Options options)
{
    using Outcome = Result<RegularExpression, Failure>;
    const auto units = utf16FromUTF8(pattern);
    if (units.size() > longestText)
        return Outcome::failure({Kind::InvalidPattern, longestText, u_errorName(U_REGEX_PATTERN_TOO_BIG)});
    UErrorCode status = U_ZERO_ERROR;
    UParseError where{};
    std::unique_ptr<const icu::RegexPattern> engine(
        icu::RegexPattern::compile(viewOf(units), flagsOf(options), where, status));
    if (U_FAILURE(status))
        return Outcome::failure(errorOf(status, Kind::InvalidPattern, positionOf(where, units)));
    auto compiled = std::make_shared<Compiled>();
    *compiled = {.pattern = std::string(pattern), .options = options, .engine = std::move(engine)};
    const std::unique_ptr<const icu::RegexMatcher> matcher(compiled->engine->matcher(status));
    if (U_SUCCESS(status))
        compiled->groups = static_cast<std::size_t>(matcher->groupCount());
    return Outcome::success(RegularExpression(std::move(compiled)));
}

RegularExpression::RegularExpression(std::string_view pattern, Options options)
    : RegularExpression(tryMake(pattern, options).unwrap())
{}

const std::string& RegularExpression::pattern() const noexcept { return m_compiled->pattern; }

const RegularExpressionOptions& RegularExpression::options() const noexcept { return m_compiled->options; }

std::size_t RegularExpression::numberOfCaptureGroups() const noexcept { return m_compiled->groups; }

std::optional<std::size_t> RegularExpression::captureGroup(std::string_view name) const
{
    const auto units = utf16FromUTF8(name);
    if (units.size() > longestText)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    const auto number = m_compiled->engine->groupNumberFromName(viewOf(units), status);
    return U_SUCCESS(status) ? std::optional(static_cast<std::size_t>(number)) : std::nullopt;
}

Result<bool, Failure> RegularExpression::tryMatches(std::string_view text) const
{
    auto attempt = m_compiled->attempt(text);
    const bool isMatch = attempt.matches();
    return outcome(isMatch, attempt.status);
}

Result<std::optional<RegularExpressionMatch>, Failure> RegularExpression::tryFirstMatch(
    std::string_view text) const
{
    auto attempt = m_compiled->attempt(text);
    std::optional<Match> match;
    if (attempt.find())
        match = attempt.match();
    return outcome(std::move(match), attempt.status);
}

Result<std::vector<RegularExpressionMatch>, Failure> RegularExpression::tryAllMatches(
    std::string_view text) const
{
    auto attempt = m_compiled->attempt(text);
    std::vector<Match> matches;
    while (attempt.find())
        matches.push_back(attempt.match());
    return outcome(std::move(matches), attempt.status);
}

Result<std::string, Failure> RegularExpression::tryReplacingMatches(
    std::string_view text, std::string_view withTemplate) const
{
    const auto replacement = utf16FromUTF8(withTemplate);
    auto attempt = m_compiled->attempt(text);
    if (replacement.size() > longestText)
        attempt.status = U_INDEX_OUTOFBOUNDS_ERROR;
    auto replaced = attempt.replaceAll(viewOf(replacement));
    const auto status = attempt.status;
    const bool isTemplate = status == U_INDEX_OUTOFBOUNDS_ERROR
        || status == U_REGEX_INVALID_CAPTURE_GROUP_NAME;
    return outcome(std::move(replaced), status, isTemplate ? Kind::InvalidTemplate : Kind::Failed);
}

bool RegularExpression::matches(std::string_view text) const { return tryMatches(text).unwrap(); }

std::optional<RegularExpressionMatch> RegularExpression::firstMatch(std::string_view text) const
{
    return tryFirstMatch(text).unwrap();
}

std::vector<RegularExpressionMatch> RegularExpression::allMatches(std::string_view text) const
{
    return tryAllMatches(text).unwrap();
}

std::string RegularExpression::replacingMatches(std::string_view text, std::string_view withTemplate) const
{
    return tryReplacingMatches(text, withTemplate).unwrap();
}

std::string RegularExpression::escapedTemplate(std::string_view text)
{
    std::string result;
    for (const char character : text) {
        if (character == '\\' || character == '$')
            result += '\\';
        result += character;
    }
    return result;
}

std::string RegularExpression::escapedPattern(std::string_view text)
{
    constexpr std::string_view endOfQuote = "\\E";
    std::string result = "\\Q";
    while (true) {
        const auto end = text.find(endOfQuote);
        result += text.substr(0, end);
        if (end == std::string_view::npos)
            return result + "\\E";
        result += "\\E\\\\E\\Q"; // leaves the quotation for a backslash and an E
        text.remove_prefix(end + endOfQuote.size());
    }
}

} // namespace orrenby
