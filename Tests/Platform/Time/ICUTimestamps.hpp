#pragma once

/// @file
/// What ICU makes of server timestamps: the judge of ours.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unicode/calendar.h>
#include <unicode/smpdtfmt.h>

namespace orrenby::testing {

/// ICU's formatter of the same format, locale and zone, strict and with a calendar of its own.
///
/// Not synchronised.
class ICUTimestamps {
public:
    ICUTimestamps()
        : m_format("yyyy-MM-dd'T'HH:mm:ss.SSS'Z'", icu::Locale("en_US_POSIX"), m_status)
    {
        m_format.adoptTimeZone(icu::TimeZone::createTimeZone("GMT"));
        m_format.setLenient(false);
        m_calendar.reset(m_format.getCalendar()->clone());
    }

    std::string text(double milliseconds)
    {
        m_calendar->setTime(milliseconds, m_status);
        icu::UnicodeString text;
        icu::FieldPosition nowhere;
        m_format.format(*m_calendar, text, nowhere);
        std::string result;
        return text.toUTF8String(result);
    }

    /// Milliseconds, for a text that ICU reads from its start to its end.
    std::optional<double> read(std::string_view text)
    {
        const auto units = icu::UnicodeString::fromUTF8(
            {text.data(), static_cast<std::int32_t>(text.size())});
        icu::ParsePosition place(0);
        m_calendar->clear();
        m_format.parse(units, *m_calendar, place);
        if (units.isEmpty() || place.getErrorIndex() >= 0 || place.getIndex() != units.length())
            return std::nullopt;
        UErrorCode status = U_ZERO_ERROR;
        const auto moment = m_calendar->getTime(status);
        return U_FAILURE(status) ? std::nullopt : std::optional(moment);
    }

private:
    UErrorCode m_status = U_ZERO_ERROR;
    icu::SimpleDateFormat m_format;
    std::unique_ptr<icu::Calendar> m_calendar;
};

} // namespace orrenby::testing
