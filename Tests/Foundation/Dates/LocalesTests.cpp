#include "Orrenby/Foundation/Dates/Locales.hpp"

#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Testing/LocaleOverride.hpp"
#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace orrenby;
using orrenby::testing::LocaleOverride;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// The names of the languages that the locale counts as.
std::vector<std::string> languages(const char* locale)
{
    const auto there = LocaleOverride({.locale = locale});
    std::vector<std::string> result;
    const std::pair<bool, const char*> answers[] = {{Locales::isActiveLanguageEnglish(), "English"},
        {Locales::isActiveLanguageGerman(), "German"}, {Locales::isActiveLanguageFrench(), "French"},
        {Locales::isActiveLanguageKorean(), "Korean"}, {Locales::isActiveLanguageJapanese(), "Japanese"},
        {Locales::isActiveLanguageIndonesian(), "Indonesian"}};
    for (const auto& [is, name] : answers)
        if (is)
            result.emplace_back(name);
    return result;
}

struct MapsToken {};
struct Route {
    using TranslationToken = MapsToken;
};
struct Invoice {};

} // namespace

TEST(Locales, AskForTheLanguage)
{
    //! [Asking for the language]
    const auto london = LocaleOverride({.locale = "en_GB"});

    EXPECT_TRUE(Locales::isActiveLanguageEnglish());
    EXPECT_TRUE(Locales::isActiveLanguage("en"));
    EXPECT_FALSE(Locales::isActiveLanguage("en_GB"));
    //! [Asking for the language]
}

TEST(Locales, GiveTheCurrentLocale)
{
    const auto vienna = LocaleOverride({.locale = "de_AT"});

    EXPECT_EQ(Locales::active(), Locale("de_AT"));
    EXPECT_EQ(Locales::activeLanguage(), "de");
}

TEST(Locales, KnowSixLanguages)
{
    EXPECT_THAT(languages("en_US"), ElementsAre("English"));
    EXPECT_THAT(languages("de_CH"), ElementsAre("German"));
    EXPECT_THAT(languages("fr_CA"), ElementsAre("French"));
    EXPECT_THAT(languages("ko_KR"), ElementsAre("Korean"));
    EXPECT_THAT(languages("ja_JP@calendar=japanese"), ElementsAre("Japanese"));
    EXPECT_THAT(languages("id"), ElementsAre("Indonesian"));
    EXPECT_THAT(languages("th_TH"), IsEmpty());
}

TEST(Locales, TakeEveryLanguageWhoseCodeBeginsSo)
{
    EXPECT_THAT(languages("kok_IN"), ElementsAre("Korean")); // Konkani
    EXPECT_THAT(languages("den_CA"), ElementsAre("German")); // Slave
    const auto tokyo = LocaleOverride({.locale = "ja_JP"});
    EXPECT_TRUE(Locales::isActiveLanguage("j"));
    EXPECT_TRUE(Locales::isActiveLanguage(""));
    EXPECT_FALSE(Locales::isActiveLanguage("jap"));
}

TEST(Locales, TellUpperFromLowerCase)
{
    const auto paris = LocaleOverride({.locale = "fr_FR"});

    EXPECT_FALSE(Locales::isActiveLanguage("FR"));
}

TEST(Locales, HaveNoLanguageInTheNeutralLocale)
{
    const auto nowhere = LocaleOverride({.locale = ""});

    EXPECT_EQ(Locales::activeLanguage(), std::nullopt);
    EXPECT_FALSE(Locales::isActiveLanguage(""));
    EXPECT_THAT(languages(""), IsEmpty());
}

TEST(Locales, FollowTheCurrentLocale)
{
    const auto start = LocaleOverride({.locale = "de_DE"});

    Locale::setCurrent(Locale("id_ID"));

    EXPECT_TRUE(Locales::isActiveLanguageIndonesian());
    EXPECT_FALSE(Locales::isActiveLanguageGerman());
}

TEST(LanguageCode, StandsForAText)
{
    using Code = Locales::LanguageCode;
    std::vector<std::string> texts;
    for (const auto code : allCases<Code>)
        texts.push_back(RawRepresentation<Code>::rawValue(code));

    EXPECT_THAT(texts, ElementsAre("en_US", "en_GB", "de", "ja", "fr"));
    EXPECT_EQ(describe(Code::englishGB), "en_GB");
}

TEST(LanguageCode, IsMadeOfItsText)
{
    using Representation = RawRepresentation<Locales::LanguageCode>;

    EXPECT_EQ(Representation::make("en_GB"), Locales::LanguageCode::englishGB);
    EXPECT_EQ(Representation::make("fr"), Locales::LanguageCode::french);
    for (const char* text : {"", "en", "EN_GB", "en-GB", "fr_FR", "ko"})
        EXPECT_EQ(Representation::make(text), std::nullopt) << text;
}

TEST(LanguageCode, IsCodedAsItsText)
{
    using Code = Locales::LanguageCode;

    const auto text = JSONEncoder().encodeText(std::vector{Code::japanese, Code::german});

    EXPECT_EQ(text, R"(["ja","de"])");
    EXPECT_THAT(JSONDecoder().decode<std::vector<Code>>(text), ElementsAre(Code::japanese, Code::german));
}

TEST(TranslationBundle, IsThatOfTheLibrary)
{
    //! [Finding the texts of a library]
    const auto maps = Bundle("com.example.maps");

    Locales::registerTranslationBundle<MapsToken>(maps);

    EXPECT_EQ(Locales::translationBundle<MapsToken>(), maps);
    EXPECT_EQ(Locales::translationBundle<Route>(), maps); // says: using TranslationToken = MapsToken;
    //! [Finding the texts of a library]
}

TEST(TranslationBundle, IsTheApplicationsWhenNoneIsRegistered)
{
    EXPECT_EQ(Locales::translationBundle<Invoice>(), Bundle::main());
}

TEST(TranslationBundle, IsAskedForByThreadsWhileItIsRegistered)
{
    const auto maps = Bundle("com.example.maps");
    std::vector<int> right(3);
    std::vector<std::thread> threads;

    for (int& count : right)
        threads.emplace_back([&] {
            for (int round = 0; round < 100; ++round) {
                Locales::registerTranslationBundle<MapsToken>(maps);
                count += Locales::translationBundle<Route>() == maps ? 1 : 0;
            }
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_THAT(right, Each(100));
}

TEST(TranslationBundle, IsTheOneRegisteredLast)
{
    const auto first = Bundle("com.example.first");
    const auto second = Bundle("com.example.second");

    Locales::registerTranslationBundle<MapsToken>(first);
    Locales::registerTranslationBundle<Route>(second);

    EXPECT_EQ(Locales::translationBundle<MapsToken>(), second);
}
