#include "Upload/RetryAfter.hpp"

#include "Orrenby/Platform/Time/Date.hpp"
#include "Orrenby/Platform/Time/DateFormatter.hpp"
#include "Orrenby/Platform/Time/Locale.hpp"
#include "Orrenby/Platform/Time/TimeZone.hpp"
#include <algorithm>
#include <charconv>
#include <memory>
#include <string>

namespace fieldbook {

namespace {

/// Dates of header fields, in the one form that is written today.
const orrenby::DateFormatter& headerDates()
{
    static const auto formatter = [] {
        auto made = std::make_shared<orrenby::DateFormatter>();
        made->setLocale(orrenby::Locale("en_US_POSIX"));
        made->setTimeZone(orrenby::TimeZone::gmt());
        made->setDateFormat("EEE, dd MMM yyyy HH:mm:ss 'GMT'");
        return made;
    }();
    return *formatter;
}

} // namespace

std::optional<double> secondsToRetryAfter(const Answer& answer)
{
    const auto text = answer.headers.value("Retry-After");
    if (!text || text->empty())
        return {};
    int seconds = 0;
    const auto* const end = text->data() + text->size();
    if (const auto [rest, error] = std::from_chars(text->data(), end, seconds);
        error == std::errc() && rest == end && seconds >= 0)
        return seconds;
    const auto date = headerDates().date(*text);
    return date ? std::optional(std::max(0.0, date->secondsSince(orrenby::Date::now()))) : std::nullopt;
}

} // namespace fieldbook
