#pragma once

/// @file
/// One formatter of dates for each purpose, made once and shared.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Time/Cache.hpp"
#include "Orrenby/Platform/Time/DateFormatter.hpp"
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// The application's formatters, kept in one cache for the whole process.
///
/// Each is made when it is asked for first, for the locale and the zone that are current then, and keeps
/// these: after people choose another language, put a new cache in the place of the old one. Those of
/// server timestamps follow neither.
///
/// @snippet Tests/Foundation/Dates/DateFormattersTests.cpp Writing dates for people
///
/// An accessor sets the cache's limit to 10, whatever it was, and looks its key up. If nothing is there it
/// makes the formatter, which costs tens of microseconds with its first text, and stores it. Otherwise it
/// costs less than a tenth of one. The formatters cannot be set up by those who get them.
///
/// Safe to use from several threads. Two that miss at the same time both make a formatter: the later store
/// wins.
class ORRENBY_EXPORT DateFormatters {
public:
    /// Formatters by their keys.
    using FormatterCache = Cache<std::string, DateFormatter>;

    /// Of `default_()`.
    static constexpr std::string_view kDefaultDateFormatterKey = "kDefaultDateFormatterKey";

    /// Of `spotifyTopArtist()`.
    static constexpr std::string_view XOLMSpotifyTopArtistDateFormatterKey
        = "XOLMSpotifyTopArtistDateFormatterKey";
    /// Of `birthday()`.
    static constexpr std::string_view XOLMBirthdayDateFormatterKey = "XOLMBirthdayDateFormatterKey";
    /// Of `chatPrimary()`.
    static constexpr std::string_view XOLMChatPrimaryDateFormatterKey = "XOLMChatPrimaryDateFormatterKey";
    /// The text differs from the name: "DateYear" where the name has "YearDate".
    static constexpr std::string_view XOLMChatPrimaryYearDateFormatterKey
        = "XOLMChatPrimaryDateYearFormatterKey";
    /// Of `chatWeekday()`.
    static constexpr std::string_view XOLMChatWeekDayDateFormatterKey = "XOLMChatWeekDayDateFormatterKey";
    /// Of `chatCreated()`.
    static constexpr std::string_view XOLMChatCreatedDateFormatterKey = "XOLMChatCreatedDateFormatterKey";
    /// Of `chatMatch()`.
    static constexpr std::string_view XOLMChatMatchDateFormatterKey = "XOLMChatMatchDateFormatterKey";

    /// Of `chatTime()`.
    static constexpr std::string_view XOLMChatTimeSupplementaryDateFormatterKey
        = "XOLMChatTimeSupplementaryDateFormatterKey";
    /// Of `feedFull()`.
    static constexpr std::string_view XOLMFeedFullDateFormatterKey = "XOLMFeedFullDateFormatterKey";

    DateFormatters() = delete;

    /// The cache that the accessors use.
    static Ref<FormatterCache> cache();

    /// Replaces it. Formatters of the old one stay good for those who hold them.
    ///
    /// @snippet Tests/Foundation/Dates/DateFormattersTests.cpp Choosing another language
    ///
    /// @param cache  None at all is a programming error and ends the process.
    static void setCache(Ref<FormatterCache> cache);

    /// Sets the limit of the cache to 10 formatters, which is the number of the keys.
    static void setupCache();

    /// Server timestamps, `2020-01-02T03:04:05.678Z`: the same in every locale and zone.
    static Ref<const DateFormatter> default_();

    /// `default_()`, by the name of the server.
    ///
    /// @snippet Tests/Foundation/Dates/DateFormattersTests.cpp Writing for the server
    static Ref<const DateFormatter> halvetServer();

    /// `Jan 2, 2020, 03:04 AM`: the fields stand in this order in every language.
    static Ref<const DateFormatter> spotifyTopArtist();

    /// `January 2, 2020`, in the locale's long form.
    static Ref<const DateFormatter> birthday();

    /// `Thu, Jan 2`
    static Ref<const DateFormatter> chatPrimary();

    /// `Thu, Jan 2, 2020`, where the year is that of the week: around New Year it can be the one before or
    /// after that of the day.
    ///
    /// @snippet Tests/Foundation/Dates/DateFormattersTests.cpp The year of the week
    static Ref<const DateFormatter> chatPrimaryYear();

    /// `Thursday`
    static Ref<const DateFormatter> chatWeekday();

    /// `Jan 2, 2020, 3:04 AM`, always with a clock of 12 hours.
    static Ref<const DateFormatter> chatCreated();

    /// `1/2/20`, in the locale's short form.
    static Ref<const DateFormatter> chatMatch();

    /// `3:04 AM`, by the locale's clock of 12 or 24 hours.
    static Ref<const DateFormatter> chatTime();

    /// `January 2`
    static Ref<const DateFormatter> feedFull();
};

} // namespace orrenby
