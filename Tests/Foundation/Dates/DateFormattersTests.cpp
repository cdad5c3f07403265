#include "Orrenby/Foundation/Dates/DateFormatters.hpp"

#include "Orrenby/Testing/LocaleOverride.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

using namespace orrenby;
using orrenby::testing::LocaleOverride;
using ::testing::Each;
using ::testing::ElementsAre;

namespace {

using Accessor = Ref<const DateFormatter> (*)();

constexpr double second = 1577934245.678; // 2020-01-02T03:04:05.678Z

/// All that have a key of their own, in the order of `keys`.
constexpr Accessor accessors[] = {DateFormatters::default_, DateFormatters::spotifyTopArtist,
    DateFormatters::birthday, DateFormatters::chatPrimary, DateFormatters::chatPrimaryYear,
    DateFormatters::chatWeekday, DateFormatters::chatCreated, DateFormatters::chatMatch,
    DateFormatters::chatTime, DateFormatters::feedFull};

constexpr std::string_view keys[] = {DateFormatters::kDefaultDateFormatterKey,
    DateFormatters::XOLMSpotifyTopArtistDateFormatterKey, DateFormatters::XOLMBirthdayDateFormatterKey,
    DateFormatters::XOLMChatPrimaryDateFormatterKey, DateFormatters::XOLMChatPrimaryYearDateFormatterKey,
    DateFormatters::XOLMChatWeekDayDateFormatterKey, DateFormatters::XOLMChatCreatedDateFormatterKey,
    DateFormatters::XOLMChatMatchDateFormatterKey, DateFormatters::XOLMChatTimeSupplementaryDateFormatterKey,
    DateFormatters::XOLMFeedFullDateFormatterKey};

std::vector<std::string> texts(Date date)
{
    std::vector<std::string> result;
    for (const auto accessor : accessors)
        result.push_back(accessor()->string(date));
    return result;
}

std::vector<std::string> descriptions()
{
    std::vector<std::string> result;
    for (const auto accessor : accessors)
        result.push_back(accessor()->description());
    return result;
}

} // namespace

TEST(DateFormatters, WriteDatesForPeople)
{
    //! [Writing dates for people]
    const auto berlin = LocaleOverride({.locale = "de_DE", .timeZone = "Europe/Berlin"});
    const auto sent = Date(1577934245);

    EXPECT_EQ(DateFormatters::chatPrimary()->string(sent), "Do., 2. Jan.");
    EXPECT_EQ(DateFormatters::chatTime()->string(sent), "04:04");
    EXPECT_EQ(DateFormatters::feedFull()->string(sent), "2. Januar");
    //! [Writing dates for people]
}

TEST(DateFormatters, WriteForTheServer)
{
    //! [Writing for the server]
    const auto bangkok = LocaleOverride({.locale = "th_TH", .timeZone = "Asia/Bangkok"});

    EXPECT_EQ(DateFormatters::halvetServer()->string(Date(1577934245.678)), "2020-01-02T03:04:05.678Z");
    //! [Writing for the server]
}

TEST(DateFormatters, HaveTenKeysWithTheseTexts)
{
    EXPECT_THAT(keys,
        ElementsAre("kDefaultDateFormatterKey", "XOLMSpotifyTopArtistDateFormatterKey",
            "XOLMBirthdayDateFormatterKey", "XOLMChatPrimaryDateFormatterKey",
            "XOLMChatPrimaryDateYearFormatterKey", "XOLMChatWeekDayDateFormatterKey",
            "XOLMChatCreatedDateFormatterKey", "XOLMChatMatchDateFormatterKey",
            "XOLMChatTimeSupplementaryDateFormatterKey", "XOLMFeedFullDateFormatterKey"));
}

TEST(DateFormatters, AreSetUpForTheCurrentLocaleAndZone)
{
    const auto berlin = LocaleOverride({.locale = "de_DE", .timeZone = "Europe/Berlin"});

    EXPECT_THAT(descriptions(),
        ElementsAre("yyyy-MM-dd'T'HH:mm:ss.SSS'Z', en_US_POSIX, GMT",
            "MMM d, yyyy, hh:mm a, de_DE, Europe/Berlin", "d. MMMM y, de_DE, Europe/Berlin",
            "EEE, d. MMM, de_DE, Europe/Berlin", "EEE, d. MMM YYYY, de_DE, Europe/Berlin",
            "cccc, de_DE, Europe/Berlin", "d. MMM yyyy, h:mm\u202Fa, de_DE, Europe/Berlin",
            "dd.MM.yy, de_DE, Europe/Berlin", "HH:mm, de_DE, Europe/Berlin",
            "d. MMMM, de_DE, Europe/Berlin"));
}

TEST(DateFormatters, HaveStylesWhereTheyHaveNoFormat)
{
    using Style = DateFormatter::Style;
    const auto somewhere = LocaleOverride();
    const auto styles = [](const Ref<const DateFormatter>& formatter) {
        return std::pair(formatter->dateStyle(), formatter->timeStyle());
    };

    EXPECT_EQ(styles(DateFormatters::birthday()), std::pair(Style::Long, Style::None));
    EXPECT_EQ(styles(DateFormatters::chatMatch()), std::pair(Style::Short, Style::None));
    EXPECT_EQ(styles(DateFormatters::chatTime()), std::pair(Style::None, Style::Short));
    EXPECT_EQ(styles(DateFormatters::chatPrimary()), std::pair(Style::None, Style::None));
}

TEST(DateFormatters, WriteServerTimestampsWhateverTheLocaleAndTheZone)
{
    for (const char* locale : {"en_US", "ar_EG", "fa_IR", "th_TH", "ja_JP@calendar=japanese"})
        for (const char* zone : {"GMT", "Europe/Berlin", "Australia/Lord_Howe"}) {
            const auto somewhere = LocaleOverride({.locale = locale, .timeZone = zone});

            EXPECT_EQ(DateFormatters::default_()->string(Date(second)), "2020-01-02T03:04:05.678Z")
                << locale << ", " << zone;
        }
}

TEST(DateFormatters, HaveOneForTheServerThatIsTheDefaultOne)
{
    const auto somewhere = LocaleOverride();

    EXPECT_EQ(DateFormatters::halvetServer(), DateFormatters::default_());
    EXPECT_EQ(DateFormatters::cache()->count(), 1U);
}

TEST(DateFormatters, WriteTheYearOfTheWeek)
{
    //! [The year of the week]
    const auto munich = LocaleOverride({.locale = "de_DE", .timeZone = "Europe/Berlin"});
    const auto newYear = Date(1609459200); // Friday, 1 January 2021, in the last week of 2020

    EXPECT_EQ(DateFormatters::chatPrimaryYear()->string(newYear), "Fr., 1. Jan. 2020");
    EXPECT_EQ(DateFormatters::birthday()->string(newYear), "1. Januar 2021");
    //! [The year of the week]
}

TEST(DateFormatters, DifferInTheYearOfTheWeekAsWeeksDo)
{
    const auto lastDayOf2019 = Date(1577750400); // Tuesday
    const auto year = [&](const char* locale) {
        const auto there = LocaleOverride({.locale = locale});
        const auto text = DateFormatters::chatPrimaryYear()->string(lastDayOf2019);
        return text.substr(text.size() - 4);
    };

    EXPECT_EQ(year("en_US"), "2020");             // its first week has 1 January in it
    EXPECT_EQ(year("en_GB"), "2020");             // its first week has most days in 2020
    const auto firstDayOf2021 = Date(1609459200); // Friday
    const auto american = LocaleOverride();
    EXPECT_EQ(DateFormatters::chatPrimaryYear()->string(firstDayOf2021), "Fri, Jan 1, 2021");
}

TEST(DateFormatters, AreTheSameEachTime)
{
    const auto somewhere = LocaleOverride();

    for (const auto accessor : accessors)
        EXPECT_EQ(accessor(), accessor());
}

TEST(DateFormatters, AreKeptUnderTheirKeys)
{
    const auto somewhere = LocaleOverride();
    const auto cache = DateFormatters::cache();

    for (std::size_t place = 0; place < std::size(keys); ++place) {
        EXPECT_EQ(cache->object(keys[place]), nullptr) << keys[place];
        const auto made = accessors[place]();
        EXPECT_EQ(cache->object(keys[place]), made) << keys[place];
    }
    EXPECT_EQ(cache->count(), 10U);
}

TEST(DateFormatters, AreWhateverWasStoredUnderTheirKeys)
{
    const auto somewhere = LocaleOverride();
    const auto own = std::make_shared<DateFormatter>();

    DateFormatters::cache()->setObject(own, DateFormatters::XOLMFeedFullDateFormatterKey);

    EXPECT_EQ(DateFormatters::feedFull(), own);
}

TEST(DateFormatters, AreMadeAgainOnceTheCacheWasEmptied)
{
    const auto somewhere = LocaleOverride();
    const auto before = texts(Date(second));
    const auto kept = DateFormatters::birthday();

    DateFormatters::cache()->removeAll();

    EXPECT_NE(DateFormatters::birthday(), kept);
    EXPECT_EQ(texts(Date(second)), before);
    EXPECT_EQ(kept->string(Date(second)), "January 2, 2020");
}

TEST(DateFormatters, SetTheLimitOfTheCacheEachTime)
{
    const auto somewhere = LocaleOverride();
    const auto cache = DateFormatters::cache();

    for (const auto accessor : accessors) {
        cache->setCountLimit(3);
        const auto made = accessor();
        EXPECT_EQ(cache->countLimit(), 10U);

        cache->setCountLimit(3);
        EXPECT_EQ(accessor(), made) << "it was found";
        EXPECT_EQ(cache->countLimit(), 10U);
    }
}

TEST(DateFormatters, SetTheLimitOfTheCacheBeforeTheyLookIntoIt)
{
    const auto somewhere = LocaleOverride();
    const auto cache = DateFormatters::cache();
    const auto oldest = std::make_shared<DateFormatter>();
    cache->setObject(oldest, DateFormatters::XOLMBirthdayDateFormatterKey);
    for (int number = 0; number < 10; ++number)
        cache->setObject(std::make_shared<DateFormatter>(), std::to_string(number));

    const auto made = DateFormatters::birthday();

    EXPECT_NE(made, oldest) << "the eleventh has to go first";
    EXPECT_EQ(made->string(Date(second)), "January 2, 2020");
    EXPECT_EQ(cache->count(), 10U);
}

TEST(DateFormatters, MakeRoomForAnEleventhObjectInTheirCache)
{
    const auto somewhere = LocaleOverride();
    for (const auto accessor : accessors)
        accessor();

    DateFormatters::cache()->setObject(std::make_shared<DateFormatter>(), "another");

    EXPECT_EQ(DateFormatters::cache()->count(), 10U);
    EXPECT_EQ(DateFormatters::cache()->object(keys[0]), nullptr);
}

TEST(DateFormatters, SetUpTheLimitOfTheirCache)
{
    const auto somewhere = LocaleOverride();
    const auto before = DateFormatters::cache()->countLimit();

    DateFormatters::setupCache();

    EXPECT_EQ(before, 0U);
    EXPECT_EQ(DateFormatters::cache()->countLimit(), 10U);
    EXPECT_EQ(DateFormatters::cache()->count(), 0U);
}

TEST(DateFormatters, StayWhenTheLimitOfTheirCacheIsSetUp)
{
    const auto somewhere = LocaleOverride();
    const auto kept = DateFormatters::birthday();

    DateFormatters::setupCache();

    EXPECT_EQ(DateFormatters::birthday(), kept);
}

TEST(DateFormatters, KeepTheLanguageThatTheyWereMadeFor)
{
    const auto start = LocaleOverride({.locale = "de_DE"});
    DateFormatters::chatWeekday();

    Locale::setCurrent(Locale("fr_FR"));

    EXPECT_EQ(DateFormatters::chatWeekday()->string(Date(second)), "Donnerstag");
    EXPECT_EQ(DateFormatters::feedFull()->string(Date(second)), "2 janvier");
}

TEST(DateFormatters, SpeakAnotherLanguageOnceTheCacheIsReplaced)
{
    const auto start = LocaleOverride({.locale = "de_DE"});

    //! [Choosing another language]
    EXPECT_EQ(DateFormatters::chatWeekday()->string(Date(1577934245)), "Donnerstag");

    Locale::setCurrent(Locale("fr_FR"));
    DateFormatters::setCache(std::make_shared<DateFormatters::FormatterCache>());

    EXPECT_EQ(DateFormatters::chatWeekday()->string(Date(1577934245)), "jeudi");
    //! [Choosing another language]
}

TEST(DateFormatters, KeepWhatACacheOfTheApplicationHolds)
{
    const auto somewhere = LocaleOverride();
    const auto own = std::make_shared<DateFormatters::FormatterCache>();

    DateFormatters::setCache(own);
    const auto made = DateFormatters::chatMatch();

    EXPECT_EQ(DateFormatters::cache(), own);
    EXPECT_EQ(own->object(DateFormatters::XOLMChatMatchDateFormatterKey), made);
}

TEST(DateFormatters, CannotBeSetUpByThoseWhoGetThem)
{
    static_assert(std::is_same_v<decltype(*DateFormatters::birthday()), const DateFormatter&>);
    static_assert(!std::is_default_constructible_v<DateFormatters>);
}

TEST(DateFormatters, AreSharedByThreads)
{
    const auto somewhere = LocaleOverride({.locale = "de_DE", .timeZone = "Europe/Berlin"});
    const auto wanted = texts(Date(second));
    DateFormatters::cache()->removeAll();
    std::vector<int> right(4);
    std::vector<std::thread> threads;

    for (int& count : right)
        threads.emplace_back([&] {
            for (int round = 0; round < 50; ++round) {
                count += texts(Date(second)) == wanted ? 1 : 0;
                if (round % 10 == 9)
                    DateFormatters::cache()->removeAll();
            }
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_THAT(right, Each(50));
}

TEST(DateFormatters, AreSharedByThreadsWhileTheCacheIsReplaced)
{
    const auto somewhere = LocaleOverride();
    std::vector<int> right(3);
    std::vector<std::thread> threads;

    for (int& count : right)
        threads.emplace_back([&count] {
            for (int round = 0; round < 200; ++round) {
                const auto text = DateFormatters::default_()->string(Date(second));
                count += text == "2020-01-02T03:04:05.678Z" ? 1 : 0;
            }
        });
    for (int round = 0; round < 200; ++round) {
        DateFormatters::setCache(std::make_shared<DateFormatters::FormatterCache>());
        DateFormatters::setupCache();
    }
    for (auto& thread : threads)
        thread.join();

    EXPECT_THAT(right, Each(200));
}

TEST(DateFormatters, AreThoseOfTheLaterStore)
{
    const auto somewhere = LocaleOverride();
    const auto first = DateFormatters::birthday();
    const auto later = std::make_shared<DateFormatter>();

    DateFormatters::cache()->setObject(later, DateFormatters::XOLMBirthdayDateFormatterKey);

    EXPECT_EQ(DateFormatters::birthday(), later);
    EXPECT_NE(DateFormatters::birthday(), first);
}

TEST(DateFormattersDeathTest, EndTheProcessWithoutACache)
{
    EXPECT_DEATH(DateFormatters::setCache(nullptr),
        "Fatal error: The formatters of dates need a cache: file Foundation/DateFormatters");
}
