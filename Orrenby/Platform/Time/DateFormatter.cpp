#include "Orrenby/Platform/Time/DateFormatter.hpp"

#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Time/DateStrictness.hpp"
#include "Orrenby/Platform/Time/Milliseconds.hpp"
#include "Orrenby/Platform/Time/ServerTimestamp.hpp"
#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <mutex>
#include <string_view>
#include <unicode/calendar.h>
#include <unicode/dtptngen.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

using detail::DateStrictness;
using detail::ServerTimestamp;

std::string utf8(const icu::UnicodeString& text)
{
    std::string result;
    return text.toUTF8String(result);
}

icu::Locale icuLocale(const Locale& locale) { return icu::Locale(locale.identifier().c_str()); }

icu::DateFormat::EStyle icuStyle(DateFormatter::Style style)
{
    switch (style) {
    case DateFormatter::Style::None:
        return icu::DateFormat::kNone;
    case DateFormatter::Style::Short:
        return icu::DateFormat::kShort;
    case DateFormatter::Style::Medium:
        return icu::DateFormat::kMedium;
    case DateFormatter::Style::Long:
        return icu::DateFormat::kLong;
    case DateFormatter::Style::Full:
        return icu::DateFormat::kFull;
    }
    return icu::DateFormat::kNone;
}

/// Years of two digits are those from 80 years ago on.
void setCentury(icu::SimpleDateFormat& format)
{
    constexpr std::int32_t yearsBack = 80;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Calendar> calendar(format.getCalendar()->clone());
    calendar->setTime(detail::milliseconds(Date::now()), status);
    calendar->add(UCAL_YEAR, -yearsBack, status);
    format.set2DigitYearStart(calendar->getTime(status), status);
}

std::u16string_view unitsOf(const icu::UnicodeString& text)
{
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

/// ICU's formatter of one configuration. Never changes, and ICU's own `const` operations work on copies of
/// its calendar, so that all threads may share it.
struct Engine {
    explicit Engine(std::unique_ptr<const icu::SimpleDateFormat> newFormat)
        : format(std::move(newFormat))
        , strictness(unitsOf(patternOf(*format)))
    {}

    static icu::UnicodeString patternOf(const icu::SimpleDateFormat& format)
    {
        icu::UnicodeString pattern;
        return format.toPattern(pattern);
    }

    std::unique_ptr<const icu::SimpleDateFormat> format;
    DateStrictness strictness;
};

} // namespace

struct DateFormatter::Parts {
    std::unique_ptr<icu::SimpleDateFormat> makeFormat() const
    {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::SimpleDateFormat> result;
        if (!format.empty()) {
            result = std::make_unique<icu::SimpleDateFormat>(
                icu::UnicodeString::fromUTF8(format), icuLocale(locale), status);
        } else if (dateStyle != Style::None || timeStyle != Style::None) {
            std::unique_ptr<icu::DateFormat> styled(icu::DateFormat::createDateTimeInstance(
                icuStyle(dateStyle), icuStyle(timeStyle), icuLocale(locale)));
            if (dynamic_cast<icu::SimpleDateFormat*>(styled.get()))
                result.reset(static_cast<icu::SimpleDateFormat*>(styled.release()));
        }
        if (!result || U_FAILURE(status))
            return nullptr;
        result->adoptTimeZone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(zone.name())));
        setCentury(*result);
        result->setLenient(false);
        result->setBooleanAttribute(UDAT_PARSE_PARTIAL_LITERAL_MATCH, false, status);
        result->setBooleanAttribute(UDAT_PARSE_MULTIPLE_PATTERNS_FOR_MATCH, false, status);
        return result;
    }

    /// Nothing when there is neither format nor style.
    const Engine* engine()
    {
        if (isReady.load(std::memory_order_acquire))
            return made.get();
        const auto lock = std::lock_guard(mutex);
        if (!isReady.load(std::memory_order_relaxed)) {
            if (auto newFormat = makeFormat())
                made = std::make_unique<const Engine>(std::move(newFormat));
            isReady.store(true, std::memory_order_release);
        }
        return made.get();
    }

    Locale locale = Locale::current();
    TimeZone zone = TimeZone::system();
    std::string format;
    Style dateStyle = Style::None;
    Style timeStyle = Style::None;

    std::mutex mutex; ///< Of making the engine.
    std::atomic<bool> isReady = false;
    std::unique_ptr<const Engine> made;
};

DateFormatter::DateFormatter()
    : m_parts(detail::Owned<Parts>::make())
{}

DateFormatter::~DateFormatter() = default;

void DateFormatter::change()
{
    m_parts->isReady.store(false, std::memory_order_relaxed);
    m_parts->made.reset();
    const auto& zone = m_parts->zone.name();
    m_isTimestamp = m_parts->format == ServerTimestamp::format
        && m_parts->locale.identifier() == "en_US_POSIX" && (zone == "GMT" || zone == "UTC");
}

std::optional<std::string> DateFormatter::dateFormat(std::string_view fromTemplate, const Locale& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(icuLocale(locale), status));
    if (U_FAILURE(status))
        return std::nullopt;
    const auto pattern = generator->getBestPattern(icu::UnicodeString::fromUTF8(fromTemplate), status);
    return U_FAILURE(status) || pattern.isEmpty() ? std::nullopt : std::optional(utf8(pattern));
}

std::string DateFormatter::dateFormat() const
{
    if (!m_parts->format.empty())
        return m_parts->format;
    const auto* engine = m_parts->engine();
    return engine ? utf8(Engine::patternOf(*engine->format)) : std::string();
}

void DateFormatter::setDateFormat(std::string format)
{
    m_parts->format = std::move(format);
    change();
}

Locale DateFormatter::locale() const { return m_parts->locale; }

void DateFormatter::setLocale(Locale locale)
{
    m_parts->locale = std::move(locale);
    change();
}

TimeZone DateFormatter::timeZone() const { return m_parts->zone; }

void DateFormatter::setTimeZone(TimeZone zone)
{
    m_parts->zone = std::move(zone);
    change();
}

DateFormatter::Style DateFormatter::dateStyle() const noexcept { return m_parts->dateStyle; }

void DateFormatter::setDateStyle(Style style)
{
    m_parts->dateStyle = style;
    setDateFormat({});
}

DateFormatter::Style DateFormatter::timeStyle() const noexcept { return m_parts->timeStyle; }

void DateFormatter::setTimeStyle(Style style)
{
    m_parts->timeStyle = style;
    setDateFormat({});
}

std::string DateFormatter::string(Date date) const
{
    const auto milliseconds = detail::milliseconds(date);
    if (m_isTimestamp) {
        char text[ServerTimestamp::length];
        if (ServerTimestamp::write(milliseconds, text))
            return {text, sizeof text};
    }
    const auto* engine = m_parts->engine();
    if (!engine || std::isnan(milliseconds))
        return {};
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text;
    engine->format->format(milliseconds, text, nullptr, status);
    return U_FAILURE(status) ? std::string() : utf8(text);
}

std::optional<Date> DateFormatter::date(std::string_view text) const
{
    if (m_isTimestamp)
        if (const auto milliseconds = ServerTimestamp::read(text))
            return detail::dateFromMilliseconds(static_cast<double>(*milliseconds));
    const auto* engine = m_parts->engine();
    if (!engine || !isValidUTF8(text))
        return std::nullopt;
    const auto units = icu::UnicodeString::fromUTF8(text);
    if (!engine->strictness.admits(unitsOf(units)))
        return std::nullopt;
    icu::ParsePosition place(0);
    const auto milliseconds = engine->format->parse(units, place);
    if (place.getErrorIndex() >= 0 || place.getIndex() != units.length() || units.isEmpty())
        return std::nullopt;
    return detail::dateFromMilliseconds(milliseconds);
}

std::size_t DateFormatter::format(Date date, std::span<char> buffer) const
{
    if (m_isTimestamp && buffer.size() >= ServerTimestamp::length
        && ServerTimestamp::write(detail::milliseconds(date), buffer.data()))
        return ServerTimestamp::length;
    const auto text = string(date);
    if (text.size() <= buffer.size())
        std::copy(text.begin(), text.end(), buffer.begin());
    return text.size();
}

std::string DateFormatter::description() const
{
    return dateFormat() + ", " + m_parts->locale.identifier() + ", " + m_parts->zone.name();
}

} // namespace orrenby
