#include "Orrenby/Foundation/Dates/DateFormatters.hpp"

#include "Orrenby/Foundation/Dates/DateFromText.hpp"
#include "Orrenby/Platform/Text/EmbeddedText.hpp"
#include "Orrenby/Testing/LocaleOverride.hpp"
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The files of Tests/Foundation/Dates/Golden, whose form stands in the README.md there.
std::span<const EmbeddedText> goldenDateTexts();

} // namespace orrenby::inline ORRENBY_ABI::detail

using namespace orrenby;
using orrenby::testing::LocaleOverride;

namespace {

constexpr std::string_view localeMark = "# ";

struct Column {
    const char* name;
    Ref<const DateFormatter> (*formatter)();
};

constexpr Column columns[] = {{"default", DateFormatters::default_},
    {"spotifyTopArtist", DateFormatters::spotifyTopArtist}, {"birthday", DateFormatters::birthday},
    {"chatPrimary", DateFormatters::chatPrimary}, {"chatPrimaryYear", DateFormatters::chatPrimaryYear},
    {"chatWeekday", DateFormatters::chatWeekday}, {"chatCreated", DateFormatters::chatCreated},
    {"chatMatch", DateFormatters::chatMatch}, {"chatTime", DateFormatters::chatTime},
    {"feedFull", DateFormatters::feedFull}};

std::string heading()
{
    std::string result = "# zone\tmoment";
    for (const auto& column : columns)
        result += std::string("\t") + column.name;
    return result;
}

std::vector<std::string> pieces(std::string_view text, char separator)
{
    std::vector<std::string> result;
    for (std::size_t place = 0; place <= text.size();) {
        const auto end = std::min(text.find(separator, place), text.size());
        result.emplace_back(text.substr(place, end - place));
        place = end + 1;
    }
    return result;
}

/// With a name for each character that cannot be seen, or looks like a blank.
std::string visible(std::string text)
{
    constexpr std::pair<std::string_view, std::string_view> names[] = {{"\u00A0", "\\u{A0}"},
        {"\u061C", "\\u{61C}"}, {"\u200C", "\\u{200C}"}, {"\u200E", "\\u{200E}"}, {"\u200F", "\\u{200F}"},
        {"\u2009", "\\u{2009}"}, {"\u202F", "\\u{202F}"}};
    for (const auto& [character, name] : names)
        for (auto place = text.find(character); place != std::string::npos; place = text.find(character))
            text.replace(place, character.size(), name);
    return text;
}

/// The row that stands for a zone and a moment.
std::string row(const std::string& locale, const std::string& zone, const std::string& moment)
{
    const auto there = LocaleOverride({.locale = locale, .timeZone = zone});
    auto result = zone + "\t" + moment;
    for (const auto& column : columns)
        result += "\t" + visible(column.formatter()->string(date(moment).value()));
    return result;
}

/// The file as it has to be, for the locale, the zones and the moments that stand in it.
std::string made(std::string_view file)
{
    std::string result;
    std::string locale;
    for (const auto& line : pieces(file, '\n')) {
        if (locale.empty()) {
            locale = line.substr(localeMark.size());
            result = line + "\n" + heading();
        } else if (!line.empty() && !line.starts_with('#')) {
            const auto cells = pieces(line, '\t');
            result += "\n" + row(locale, cells.at(0), cells.at(1));
        }
    }
    return result + "\n";
}

} // namespace

TEST(DateFormattersGolden, AreWrittenAsTheTablesSay)
{
    const auto* const folder = std::getenv("ORRENBY_WRITE_GOLDEN");

    for (const auto& file : detail::goldenDateTexts()) {
        const auto text = made(file.text);
        EXPECT_EQ(text, file.text) << file.name;
        if (folder != nullptr)
            std::ofstream(std::string(folder) + "/" + std::string(file.name) + ".txt") << text;
    }
}

TEST(DateFormattersGolden, CoverManyLocalesAndThreeZones)
{
    std::size_t rows = 0;
    for (const auto& file : detail::goldenDateTexts())
        for (const auto& line : pieces(file.text, '\n'))
            rows += line.empty() || line.starts_with('#') ? 0 : 1;

    EXPECT_EQ(detail::goldenDateTexts().size(), 16U);
    EXPECT_EQ(rows, 16U * 3 * 11);
}
