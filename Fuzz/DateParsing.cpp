// Timestamps are read and written as ICU does it, whatever the bytes; names of zones and locales may be
// anything; what a formatter reads from a text, it writes as a text that it reads as the same date.

#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Time/DateFormatter.hpp"
#include "Tests/Platform/Time/ICUTimestamps.hpp"
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

using namespace orrenby;

namespace {

constexpr auto serverFormat = "yyyy-MM-dd'T'HH:mm:ss.SSS'Z'";

const DateFormatter& formatter(const char* format, const char* locale)
{
    auto& made = *new DateFormatter; // kept for ever, one for each call site
    made.setLocale(Locale(locale));
    made.setTimeZone(TimeZone::gmt());
    made.setDateFormat(format);
    return made;
}

const DateFormatter& timestamps()
{
    static const auto& made = formatter(serverFormat, "en_US_POSIX");
    return made;
}

testing::ICUTimestamps& judge()
{
    static auto& made = *new testing::ICUTimestamps;
    return made;
}

bool hasBlanks(const icu::UnicodeString& text)
{
    for (std::int32_t place = 0; place < text.length(); ++place)
        if (u_isUWhiteSpace(text[place]))
            return true;
    return false;
}

/// The digits of the longest number, in any script.
int longestNumber(const icu::UnicodeString& text)
{
    int longest = 0;
    int digits = 0;
    for (std::int32_t place = 0; place < text.length(); place = text.moveIndex32(place, 1)) {
        digits = u_isdigit(text.char32At(place)) ? digits + 1 : 0;
        longest = std::max(longest, digits);
    }
    return longest;
}

/// What ICU reads, but for blanks, a missing end, numbers that overflow and what is no text, which a strict
/// reader refuses.
void requireReadAsByICU(std::string_view text)
{
    constexpr int digitsOfYears = 6;
    constexpr int digitsOfFractions = 9;
    const auto date = timestamps().date(text);
    const auto units = icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
    const auto digits = longestNumber(units);
    const bool hasExponent = text.find_first_of("Ee") != std::string_view::npos;
    if (!isValidUTF8(text) || !text.ends_with('Z') || hasExponent || hasBlanks(units)
        || digits > digitsOfFractions)
        return requireThat(!date);
    if (digits > digitsOfYears)
        return; // in a fraction it is read, in a year ICU would overflow
    const auto judged = judge().read(text);
    requireThat(date.has_value() == judged.has_value());
    requireThat(!date || date->secondsSince1970() == *judged / 1'000);
}

/// Any moment that ICU reckons with.
void requireWrittenAsByICU(std::string_view bytes)
{
    double seconds = 0;
    if (bytes.size() < sizeof seconds)
        return;
    std::memcpy(&seconds, bytes.data(), sizeof seconds);
    if (!(std::abs(seconds) < 1e14)) {
        timestamps().string(Date(seconds));
        return;
    }
    const auto whole = std::floor(seconds * 1'000);
    requireThat(timestamps().string(Date(whole / 1'000)) == judge().text(whole));
}

void requireReadAgain(const DateFormatter& formatter, std::string_view text)
{
    if (const auto date = formatter.date(text))
        requireThat(formatter.date(formatter.string(*date)) == date);
}

void requireNames(std::string_view text)
{
    const Locale locale(text);
    requireThat(Locale(locale.identifier()) == locale);
    if (const auto zone = TimeZone::fromName(text))
        requireThat(TimeZone::fromName(zone->name()) == zone);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const auto& minutes = formatter("yyyy-MM-dd HH:mm", "en_US");
    static const auto& months = formatter("d. MMMM yyyy G", "de_DE");
    static const auto& persian = formatter("yyyy/MM/dd", "fa_IR");
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    requireReadAsByICU(text);
    requireWrittenAsByICU(text);
    requireReadAgain(minutes, text);
    requireReadAgain(months, text);
    requireReadAgain(persian, text);
    requireNames(text);
    return 0;
}
