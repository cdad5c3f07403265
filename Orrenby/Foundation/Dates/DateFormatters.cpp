#include "Orrenby/Foundation/Dates/DateFormatters.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <cstddef>
#include <memory>
#include <mutex>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr std::size_t countLimit = 10;

/// The one cache, never destroyed: dates are still written while the process exits.
struct Place {
    static Place& shared()
    {
        static auto& place = *new Place;
        return place;
    }

    std::mutex mutex;
    Ref<DateFormatters::FormatterCache> cache = std::make_shared<DateFormatters::FormatterCache>();
};

/// What the cache holds under the key, or else a new formatter after `setUp(formatter)`.
template <class F> Ref<const DateFormatter> formatter(std::string_view key, F setUp)
{
    const auto cache = DateFormatters::cache();
    cache->setCountLimit(countLimit);
    if (auto known = cache->object(key))
        return known;
    const auto made = std::make_shared<DateFormatter>();
    setUp(*made);
    cache->setObject(made, key);
    return made;
}

/// With the current locale's pattern for the fields of a template, or without a pattern where there is none.
Ref<const DateFormatter> formatterOfTemplate(std::string_view key, std::string_view fields)
{
    return formatter(key, [&](DateFormatter& made) {
        if (auto format = DateFormatter::dateFormat(fields, Locale::current()))
            made.setDateFormat(*std::move(format));
    });
}

} // namespace

Ref<DateFormatters::FormatterCache> DateFormatters::cache()
{
    auto& place = Place::shared();
    const auto lock = std::lock_guard(place.mutex);
    return place.cache;
}

void DateFormatters::setCache(Ref<FormatterCache> cache)
{
    if (!cache)
        fatalError("The formatters of dates need a cache", "Foundation/DateFormatters");
    auto& place = Place::shared();
    const auto lock = std::lock_guard(place.mutex);
    place.cache.swap(cache); // the old one goes once the lock is open
}

void DateFormatters::setupCache() { cache()->setCountLimit(countLimit); }

Ref<const DateFormatter> DateFormatters::default_()
{
    return formatter(kDefaultDateFormatterKey, [](DateFormatter& made) {
        made.setLocale(Locale("en_US_POSIX"));
        made.setDateFormat("yyyy-MM-dd'T'HH:mm:ss.SSS'Z'");
        made.setTimeZone(TimeZone::gmt());
    });
}

Ref<const DateFormatter> DateFormatters::halvetServer() { return default_(); }

Ref<const DateFormatter> DateFormatters::spotifyTopArtist()
{
    return formatter(XOLMSpotifyTopArtistDateFormatterKey, [](DateFormatter& made) {
        made.setLocale(Locale::current());
        made.setDateFormat("MMM d, yyyy, hh:mm a");
        made.setTimeZone(TimeZone::system());
    });
}

Ref<const DateFormatter> DateFormatters::birthday()
{
    return formatter(XOLMBirthdayDateFormatterKey,
        [](DateFormatter& made) { made.setDateStyle(DateFormatter::Style::Long); });
}

Ref<const DateFormatter> DateFormatters::chatPrimary()
{
    return formatterOfTemplate(XOLMChatPrimaryDateFormatterKey, "EEE, MMM d");
}

Ref<const DateFormatter> DateFormatters::chatPrimaryYear()
{
    return formatterOfTemplate(XOLMChatPrimaryYearDateFormatterKey, "EEE, MMM d, YYYY");
}

Ref<const DateFormatter> DateFormatters::chatWeekday()
{
    return formatterOfTemplate(XOLMChatWeekDayDateFormatterKey, "EEEE");
}

Ref<const DateFormatter> DateFormatters::chatCreated()
{
    return formatterOfTemplate(XOLMChatCreatedDateFormatterKey, "MMM d, yyyy 'at' hh:mm a");
}

Ref<const DateFormatter> DateFormatters::chatMatch()
{
    return formatter(XOLMChatMatchDateFormatterKey,
        [](DateFormatter& made) { made.setDateStyle(DateFormatter::Style::Short); });
}

Ref<const DateFormatter> DateFormatters::chatTime()
{
    return formatter(XOLMChatTimeSupplementaryDateFormatterKey, [](DateFormatter& made) {
        made.setDateStyle(DateFormatter::Style::None);
        made.setTimeStyle(DateFormatter::Style::Short);
    });
}

Ref<const DateFormatter> DateFormatters::feedFull()
{
    return formatterOfTemplate(XOLMFeedFullDateFormatterKey, "MMMM d");
}

} // namespace orrenby
