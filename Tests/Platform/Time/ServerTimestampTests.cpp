#include "Orrenby/Platform/Time/ServerTimestamp.hpp"

#include "Orrenby/Platform/Time/DateFormatter.hpp"
#include "Tests/Platform/Time/ICUTimestamps.hpp"
#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <random>
#include <thread>
#include <utility>

using namespace orrenby;
using detail::ServerTimestamp;
using orrenby::testing::ICUTimestamps;
using ::testing::AssertionFailure;
using ::testing::AssertionResult;
using ::testing::AssertionSuccess;

namespace {

constexpr std::int64_t second = 1'000;
constexpr std::int64_t day = 86'400 * second;

DateFormatter& configured(DateFormatter& formatter)
{
    formatter.setLocale(Locale("en_US_POSIX"));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateFormat(std::string(ServerTimestamp::format));
    return formatter;
}

std::string written(double milliseconds)
{
    std::array<char, ServerTimestamp::length> text;
    return ServerTimestamp::write(milliseconds, text.data()) ? std::string(text.data(), text.size()) : "";
}

Date dateAt(std::int64_t milliseconds) { return Date(static_cast<double>(milliseconds) / 1'000); }

AssertionResult agreesOnMoment(const DateFormatter& formatter, ICUTimestamps& icu, std::int64_t moment)
{
    const auto date = dateAt(moment);
    std::array<char, 32> buffer;
    const auto ours = std::string(buffer.data(), formatter.format(date, buffer));
    const auto theirs = icu.text(static_cast<double>(moment));
    if (ours != theirs)
        return AssertionFailure() << moment << " is written " << ours << ", by ICU " << theirs;
    if (icu.read(theirs) != static_cast<double>(moment) || formatter.date(ours) != date)
        return AssertionFailure() << ours << " is not read as the moment " << moment;
    return AssertionSuccess();
}

/// Each millisecond of one second in each of so many days, all of them chosen by the seed.
AssertionResult agreesOnSeconds(std::uint64_t seed, int days)
{
    ICUTimestamps icu;
    DateFormatter formatter;
    configured(formatter);
    std::mt19937_64 random(seed);
    constexpr auto earliestDay = ServerTimestamp::earliest / day;
    constexpr auto numberOfDays = (ServerTimestamp::latest - ServerTimestamp::earliest) / day + 1;
    for (int turn = 0; turn < days; ++turn) {
        const auto chosenDay = earliestDay + static_cast<std::int64_t>(random() % numberOfDays);
        const auto start = chosenDay * day + static_cast<std::int64_t>(random() % 86'400) * second;
        for (auto moment = start; moment < start + second; ++moment)
            if (const auto agrees = agreesOnMoment(formatter, icu, moment); !agrees)
                return agrees;
    }
    return AssertionSuccess();
}

/// Milliseconds that ICU reads, but for the white space, the exponents and the missing end that a strict
/// reader refuses.
std::optional<double> judged(ICUTimestamps& icu, const std::string& text)
{
    const bool isRefused = text.back() != 'Z' || text.find_first_of(" \t\n\v\f\rEe") != std::string::npos;
    return isRefused ? std::nullopt : icu.read(text);
}

std::optional<double> millisecondsRead(const DateFormatter& formatter, const std::string& text)
{
    const auto date = formatter.date(text);
    return date ? std::optional(std::round(date->secondsSince1970() * 1'000)) : std::nullopt;
}

/// All texts that differ from this one by one ASCII character: one too few, one too many, another one; and by
/// two neighbours in each other's place.
std::vector<std::string> neighbours(const std::string& text)
{
    std::vector<std::string> result;
    for (std::size_t place = 0; place <= text.size(); ++place)
        for (int code = 0; code < 128; ++code)
            result.push_back(std::string(text).insert(place, 1, static_cast<char>(code)));
    for (std::size_t place = 0; place < text.size(); ++place) {
        result.push_back(std::string(text).erase(place, 1));
        for (int code = 0; code < 128; ++code) {
            result.push_back(text);
            result.back()[place] = static_cast<char>(code);
        }
    }
    for (std::size_t place = 1; place < text.size(); ++place) {
        result.push_back(text);
        std::swap(result.back()[place - 1], result.back()[place]);
    }
    return result;
}

} // namespace

TEST(ServerTimestamp, IsWritten)
{
    EXPECT_EQ(written(1'577'934'245'678), "2020-01-02T03:04:05.678Z");
    EXPECT_EQ(written(0), "1970-01-01T00:00:00.000Z");
    EXPECT_EQ(written(951'782'399'999), "2000-02-28T23:59:59.999Z");
    EXPECT_EQ(written(951'782'400'000), "2000-02-29T00:00:00.000Z");
    EXPECT_EQ(written(-2'203'891'200'000), "1900-03-01T00:00:00.000Z");
}

TEST(ServerTimestamp, CutsFractionsOffDownward)
{
    EXPECT_EQ(written(0.999), "1970-01-01T00:00:00.000Z");
    EXPECT_EQ(written(-0.001), "1969-12-31T23:59:59.999Z");
    EXPECT_EQ(written(-1), "1969-12-31T23:59:59.999Z");
    EXPECT_EQ(written(-1.5), "1969-12-31T23:59:59.998Z");
}

TEST(ServerTimestamp, ReachesFromTheFirstGregorianDayToTheYear9999)
{
    EXPECT_EQ(written(static_cast<double>(ServerTimestamp::earliest)), "1582-10-15T00:00:00.000Z");
    EXPECT_EQ(written(static_cast<double>(ServerTimestamp::latest)), "9999-12-31T23:59:59.999Z");
    EXPECT_EQ(written(static_cast<double>(ServerTimestamp::latest) + 0.5), "9999-12-31T23:59:59.999Z");
    EXPECT_EQ(written(static_cast<double>(ServerTimestamp::earliest) - 0.5), "");
    EXPECT_EQ(written(static_cast<double>(ServerTimestamp::latest) + 1), "");
}

TEST(ServerTimestamp, IsNotWrittenForWhatIsNoMoment)
{
    EXPECT_EQ(written(std::nan("")), "");
    EXPECT_EQ(written(std::numeric_limits<double>::infinity()), "");
    EXPECT_EQ(written(-std::numeric_limits<double>::infinity()), "");
    EXPECT_EQ(written(1e300), "");
}

TEST(ServerTimestamp, IsRead)
{
    EXPECT_EQ(ServerTimestamp::read("2020-01-02T03:04:05.678Z"), 1'577'934'245'678);
    EXPECT_EQ(ServerTimestamp::read("1969-12-31T23:59:59.999Z"), -1);
    EXPECT_EQ(ServerTimestamp::read("2000-02-29T00:00:00.000Z"), 951'782'400'000);
    EXPECT_EQ(ServerTimestamp::read("1582-10-15T00:00:00.000Z"), ServerTimestamp::earliest);
    EXPECT_EQ(ServerTimestamp::read("9999-12-31T23:59:59.999Z"), ServerTimestamp::latest);
}

TEST(ServerTimestamp, IsNotReadFromFieldsThatDoNotExist)
{
    for (const auto* text : {"2020-00-02T03:04:05.678Z", "2020-13-02T03:04:05.678Z",
             "2020-01-00T03:04:05.678Z", "2020-01-32T03:04:05.678Z", "2020-04-31T03:04:05.678Z",
             "2019-02-29T03:04:05.678Z", "1900-02-29T03:04:05.678Z", "2020-01-02T24:00:00.000Z",
             "2020-01-02T03:60:05.678Z", "2020-01-02T03:04:60.678Z", "0000-01-02T03:04:05.678Z"})
        EXPECT_EQ(ServerTimestamp::read(text), std::nullopt) << text;
}

TEST(ServerTimestamp, LeavesOtherFormsToICU)
{
    for (const auto* text : {"", "Z", "1582-10-14T23:59:59.999Z", "0001-01-01T00:00:00.000Z",
             "2020-01-02T03:04:05.678", "2020-01-02T03:04:05.67Z", "12020-01-02T03:04:05.678Z",
             "2020-01-02t03:04:05.678Z", " 020-01-02T03:04:05.678Z", "2020-01-02T03:04:05.678z"})
        EXPECT_EQ(ServerTimestamp::read(text), std::nullopt) << text;
}

TEST(ServerTimestamp, AgreesWithICUOnEachMillisecondOfAThousandSeconds)
{
    constexpr int daysPerThread = 500;
    AssertionResult half = AssertionFailure() << "not run";
    AssertionResult otherHalf = AssertionFailure() << "not run";

    std::thread other([&] { otherHalf = agreesOnSeconds(2, daysPerThread); });
    half = agreesOnSeconds(1, daysPerThread);
    other.join();

    EXPECT_TRUE(half);
    EXPECT_TRUE(otherHalf);
}

TEST(ServerTimestamp, AgreesWithICUBeyondItsOwnRange)
{
    ICUTimestamps icu;
    DateFormatter formatter;
    configured(formatter);

    for (const auto moment : {ServerTimestamp::earliest - 1, ServerTimestamp::latest + 1,
             std::int64_t(-62'135'769'600'000), std::int64_t(-62'135'769'600'001),
             std::int64_t(-99'999'999'999'999), std::int64_t(999'999'999'999'999)}) {
        EXPECT_EQ(formatter.string(dateAt(moment)), icu.text(static_cast<double>(moment))) << moment;
    }
}

TEST(ServerTimestamp, AgreesWithICUOnAllMalformedNeighbours)
{
    ICUTimestamps icu;
    DateFormatter formatter;
    configured(formatter);
    std::mt19937_64 random(3);

    for (int turn = 0; turn < 20; ++turn) {
        const auto moment = static_cast<double>(random() % 253'402'300'799'999) - 20'000'000'000'000;
        const auto text = icu.text(moment);
        for (const auto& neighbour : neighbours(text))
            ASSERT_EQ(millisecondsRead(formatter, neighbour), judged(icu, neighbour)) << neighbour;
    }
}

TEST(ServerTimestamp, IsTheSameTextAgainAfterReading)
{
    DateFormatter formatter;
    configured(formatter);

    for (const auto* text : {"2020-01-02T03:04:05.678Z", "9999-12-31T23:59:59.999Z",
             "1582-10-15T00:00:00.001Z", "0001-01-01T00:00:00.007Z", "1969-12-31T23:59:59.999Z"})
        EXPECT_EQ(formatter.string(formatter.date(text).value()), text);
}
