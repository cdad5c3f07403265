/// @file
/// What dates as text cost: server timestamps beside ICU's own formatter, which is made once and kept, as
/// ours are; differences and other formats for orientation.

#include "Orrenby/Foundation/Dates/DateFormatters.hpp"
#include "Orrenby/Platform/Time/Calendar.hpp"
#include "Orrenby/Platform/Time/DateFormatter.hpp"
#include <array>
#include <benchmark/benchmark.h>
#include <string>
#include <unicode/smpdtfmt.h>

using namespace orrenby;

namespace {

constexpr auto serverFormat = "yyyy-MM-dd'T'HH:mm:ss.SSS'Z'";
constexpr auto timestamp = "2020-01-02T03:04:05.678Z";
constexpr double start = 1'577'934'245.678;
constexpr double step = 86'461.001; // a day and a little, so that all fields change

void setUp(DateFormatter& formatter)
{
    formatter.setLocale(Locale("en_US_POSIX"));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateFormat(serverFormat);
}

/// Made once, as a caller who knows what it costs does.
icu::SimpleDateFormat& icuFormat()
{
    static auto& format = *[] {
        UErrorCode status = U_ZERO_ERROR;
        auto* made = new icu::SimpleDateFormat(serverFormat, icu::Locale("en_US_POSIX"), status);
        made->adoptTimeZone(icu::TimeZone::createTimeZone("GMT"));
        made->setLenient(false);
        return made;
    }();
    return format;
}

/// Another moment each time, within some hundred years.
class Moments {
public:
    double next()
    {
        m_seconds += step;
        if (m_seconds > start + 4e9)
            m_seconds = start;
        return m_seconds;
    }

private:
    double m_seconds = start;
};

void format_buffer(benchmark::State& state)
{
    DateFormatter formatter;
    setUp(formatter);
    std::array<char, 24> buffer;
    Moments moments;
    for (auto _ : state) {
        benchmark::DoNotOptimize(formatter.format(Date(moments.next()), buffer));
        benchmark::DoNotOptimize(buffer);
    }
}

void format_accessor(benchmark::State& state)
{
    Moments moments;
    for (auto _ : state)
        benchmark::DoNotOptimize(DateFormatters::default_()->string(Date(moments.next())));
}

/// Into one text again and again, which is the cheapest that ICU offers.
void format_icu(benchmark::State& state)
{
    icu::UnicodeString text;
    Moments moments;
    for (auto _ : state) {
        text.remove();
        icuFormat().format(1'000 * moments.next(), text);
        benchmark::DoNotOptimize(text);
    }
}

void parse_inHand(benchmark::State& state)
{
    DateFormatter formatter;
    setUp(formatter);
    std::string text = timestamp;
    for (auto _ : state) {
        benchmark::DoNotOptimize(text);
        benchmark::DoNotOptimize(formatter.date(text));
    }
}

void parse_accessor(benchmark::State& state)
{
    std::string text = timestamp;
    for (auto _ : state) {
        benchmark::DoNotOptimize(text);
        benchmark::DoNotOptimize(DateFormatters::default_()->date(text));
    }
}

void parse_icu(benchmark::State& state)
{
    const icu::UnicodeString text(timestamp);
    for (auto _ : state) {
        icu::ParsePosition place(0);
        benchmark::DoNotOptimize(icuFormat().parse(text, place));
    }
}

void format_longStyle(benchmark::State& state)
{
    DateFormatter formatter;
    formatter.setLocale(Locale("de_DE"));
    formatter.setTimeZone(TimeZone::fromName("Europe/Berlin").value());
    formatter.setDateStyle(DateFormatter::Style::Long);
    Moments moments;
    for (auto _ : state)
        benchmark::DoNotOptimize(formatter.string(Date(moments.next())));
}

void difference_days(benchmark::State& state)
{
    const auto calendar = Calendar(Locale("de_DE"), TimeZone::fromName("Europe/Berlin").value());
    Moments moments;
    for (auto _ : state)
        benchmark::DoNotOptimize(calendar.difference(CalendarUnit::Day, Date(start), Date(moments.next())));
}

void ordinality_dayInEra(benchmark::State& state)
{
    const auto calendar = Calendar::autoUpdatingCurrent();
    Moments moments;
    for (auto _ : state)
        benchmark::DoNotOptimize(calendar.ordinality({}, Date(moments.next())));
}

BENCHMARK(format_buffer);
BENCHMARK(format_accessor);
BENCHMARK(format_icu);
BENCHMARK(parse_inHand);
BENCHMARK(parse_accessor);
BENCHMARK(parse_icu);
BENCHMARK(format_longStyle);
BENCHMARK(difference_days);
BENCHMARK(ordinality_dayInEra);

} // namespace
