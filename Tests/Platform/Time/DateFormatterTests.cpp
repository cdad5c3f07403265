#include "Orrenby/Platform/Time/DateFormatter.hpp"

#include "Orrenby/Platform/World/World.hpp"
#include <array>
#include <cmath>
#include <gmock/gmock.h>

using namespace orrenby;
using Style = DateFormatter::Style;

TEST(DateFormatter, WritesADate)
{
    //! [Writing a date]
    DateFormatter formatter;
    formatter.setLocale(Locale("de_DE"));
    formatter.setTimeZone(TimeZone::fromName("Europe/Berlin").value());
    formatter.setDateStyle(DateFormatter::Style::Long);
    formatter.setTimeStyle(DateFormatter::Style::Short);

    const auto text = formatter.string(Date(1'577'934'245.678)); // 2. Januar 2020 um 04:04
    //! [Writing a date]

    EXPECT_EQ(text, "2. Januar 2020 um 04:04");
}

TEST(DateFormatter, AsksForAFormat)
{
    //! [Asking for a format]
    const auto english = DateFormatter::dateFormat("MMMMd", Locale("en_US")); // MMMM d
    const auto german = DateFormatter::dateFormat("MMMMd", Locale("de_DE"));  // d. MMMM
    //! [Asking for a format]

    EXPECT_EQ(english, "MMMM d");
    EXPECT_EQ(german, "d. MMMM");
}

TEST(DateFormatter, ReadsADate)
{
    //! [Reading a date]
    DateFormatter formatter;
    formatter.setLocale(Locale("en_US_POSIX"));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateFormat("yyyy-MM-dd HH:mm");

    const auto date = formatter.date("2020-01-02 03:04");
    const auto none = formatter.date("2020-01-32 03:04"); // there is no such day
    //! [Reading a date]

    EXPECT_EQ(date, Date(1'577'934'240));
    EXPECT_EQ(none, std::nullopt);
}

TEST(DateFormatter, WritesIntoABuffer)
{
    //! [Writing into a buffer]
    DateFormatter formatter;
    formatter.setLocale(Locale("en_US_POSIX"));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateFormat("yyyy-MM-dd'T'HH:mm:ss.SSS'Z'");

    std::array<char, 24> buffer;
    const auto length = formatter.format(Date(1'577'934'245.678), buffer);
    const auto text = std::string_view(buffer.data(), length); // 2020-01-02T03:04:05.678Z
    //! [Writing into a buffer]

    EXPECT_EQ(text, "2020-01-02T03:04:05.678Z");
}
