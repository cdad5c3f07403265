// Timestamps are read and written as ICU does it, whatever the bytes; names of zones and locales may be
// anything; what a formatter reads from a text, it writes as a text that it reads as the same date.

#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Time/DateFormatter.hpp"
#include "Tests/Platform/Time/ICUTimestamps.hpp"
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

using namespace orrenby;

namespace {

constexpr auto serverFormat = "yyyy-MM-dd'T'HH:mm:ss.SSS'Z'";

void requireThat(bool isTrue)
{
    if (!isTrue)
        std::abort();
}

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

/// What ICU reads, but for blanks, a missing end and what is no text, which a strict reader refuses.
void requireReadAsByICU(std::string_view text)
{
    const auto date = timestamps().date(text);
    if (!isValidUTF8(text) || !text.ends_with('Z')
        || hasBlanks(icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())}))) {
        requireThat(!date);
        return;
    }
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
    static const auto& months = formatter("d. MMMM y G", "de_DE");
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
