// Step 21: one shared formatter for each purpose, in the language and the zone that were current when it was
// made.

#include "Orrenby/Foundation/Dates/DateDifferences.hpp"
#include "Orrenby/Foundation/Dates/DateFormatters.hpp"
#include "Orrenby/Foundation/Dates/DateFromText.hpp"
#include "Orrenby/Foundation/Dates/Locales.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include "Orrenby/Platform/Time/TimeZone.hpp"
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace orrenby;

namespace {

void show(const char* title, const std::string& text) { std::printf("%-9s %s\n", title, text.c_str()); }

/// What was made for the language before is put aside together with its cache.
void choose(const char* locale, const char* zone)
{
    Locale::setCurrent(Locale(locale));
    TimeZone::setSystem(TimeZone::fromName(zone).value());
    DateFormatters::setCache(std::make_shared<DateFormatters::FormatterCache>());
}

} // namespace

int main()
{
    const auto sent = date("2020-12-31T22:45:00.500Z").value();
    for (const auto& [locale, zone] :
        {std::pair("en_GB", "Europe/London"), std::pair("de_DE", "Europe/Berlin"),
            std::pair("th_TH", "Asia/Bangkok"), std::pair("ar_EG", "Africa/Cairo")}) {
        choose(locale, zone);
        std::printf("%s, where people speak %s\n", zone, Locales::activeLanguage().value().c_str());
        show("birthday", DateFormatters::birthday()->string(sent));
        show("chat", DateFormatters::chatPrimary()->string(sent));
        show("time", DateFormatters::chatTime()->string(sent));
    }

    // The server reads the same wherever that is.
    show("server", DateFormatters::halvetServer()->string(sent));
    JSONEncoder encoder;
    encoder.setDateEncodingStrategy(
        JSONEncoder::DateEncodingStrategy::formatted(DateFormatters::halvetServer()));
    show("JSON", encoder.encodeText(std::vector{sent}));

    choose("de_DE", "Europe/Berlin");
    const auto read = sent + 1.9 + 15 * 60; // a quarter past midnight there
    std::printf("read after %lld ms, %lld whole days, %lld midnight\n",
        static_cast<long long>(read | milliseconds(sent)), static_cast<long long>(read | days(sent)),
        static_cast<long long>(read | differenceInDays(sent)));
    return Locales::isActiveLanguageGerman() && !(sent | isAtLeastOneDayInThePast(read)) ? 0 : 1;
}
