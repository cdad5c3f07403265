#include "Orrenby/Utilities/LosslessDataConvertible.hpp"

#include <array>
#include <bit>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gmock/gmock.h>
#include <limits>
#include <random>

using namespace orrenby;

namespace {

//! [A type of one's own]
/// A colour that is written as `#0A0B0C`.
class Paint {
public:
    explicit Paint(unsigned code)
        : m_code(code)
    {}

    static std::optional<Paint> make(std::string_view text)
    {
        if (text.size() != 7 || text.front() != '#')
            return std::nullopt;
        unsigned code = 0;
        for (const char digit : text.substr(1)) {
            const auto value = std::string_view("0123456789ABCDEF").find(digit);
            if (value == std::string_view::npos)
                return std::nullopt;
            code = code * 16 + static_cast<unsigned>(value);
        }
        return Paint(code);
    }

    std::string description() const
    {
        std::array<char, 8> text = {};
        std::snprintf(text.data(), text.size(), "#%06X", m_code & 0xFFFFFFU);
        return text.data();
    }

    friend bool operator==(const Paint&, const Paint&) = default;

private:
    unsigned m_code;
};
//! [A type of one's own]

/// A type that somebody else wrote.
struct Pair {
    int first = 0;
    int second = 0;
    friend bool operator==(const Pair&, const Pair&) = default;
};

using ConversionError = LosslessDataConvertibleError;

template <class T> T read(std::string_view text) { return fromLosslessData<T>(dataFromText(text)); }
template <class T> std::optional<T> readable(std::string_view text)
{
    return tryFromLosslessData<T>(dataFromText(text)).value();
}
template <class T> std::string written(const T& value) { return textFromData(losslessData(value)).value(); }
template <class T> T reread(const T& value) { return fromLosslessData<T>(losslessData(value)); }

template <class T> bool isRefused(std::string_view text)
{
    return tryFromLosslessData<T>(dataFromText(text)).error()
        == ConversionError::failedToConvertFromString(std::string(text));
}

template <class T, class Bits> void expectThatRandomNumbersReadBack(T (*cRead)(const char*, char**))
{
    const auto seed = std::random_device()();
    std::mt19937_64 engine(seed);
    for (int round = 0; round < 50'000; ++round) {
        const auto value = std::bit_cast<T>(static_cast<Bits>(engine()));
        if (std::isnan(value))
            continue;
        const auto text = written(value);
        const auto again = read<T>(text);
        ASSERT_EQ(std::bit_cast<Bits>(again), std::bit_cast<Bits>(value)) << text << ", seed " << seed;
        ASSERT_EQ(std::bit_cast<Bits>(cRead(text.c_str(), nullptr)), std::bit_cast<Bits>(value))
            << text << ", seed " << seed;
    }
}

} // namespace

template <> struct orrenby::LosslessText<Pair> {
    static std::string description(const Pair& pair)
    {
        return std::to_string(pair.first) + "," + std::to_string(pair.second);
    }
    static std::optional<Pair> make(std::string_view text)
    {
        const auto comma = text.find(',');
        if (comma == std::string_view::npos)
            return std::nullopt;
        const auto first = LosslessText<int>::make(text.substr(0, comma));
        const auto second = LosslessText<int>::make(text.substr(comma + 1));
        return first && second ? std::optional(Pair{*first, *second}) : std::nullopt;
    }
};

TEST(LosslessDataConvertible, StoresValuesAsBytes)
{
    //! [Storing values as bytes]
    const Data stored = losslessData(0.1);

    EXPECT_EQ(stored, dataFromText("0.1"));
    EXPECT_EQ(fromLosslessData<double>(stored), 0.1);
    EXPECT_EQ(tryFromLosslessData<std::int64_t>(stored).value(), std::nullopt);
    //! [Storing values as bytes]
}

TEST(LosslessDataConvertible, KeepsTextAsItIs)
{
    EXPECT_EQ(written(std::string("Brücke\n水位")), "Brücke\n水位");
    EXPECT_EQ(reread(std::string("a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(read<std::string>("  1.5 "), "  1.5 ");
    EXPECT_EQ(losslessData("a literal"), dataFromText("a literal"));
}

TEST(LosslessDataConvertible, KeepsAByteOrderMarkInText)
{
    EXPECT_EQ(read<std::string>("\xEF\xBB\xBF"
                                "a"),
        "\xEF\xBB\xBF"
        "a");
    EXPECT_TRUE(isRefused<std::int64_t>("\xEF\xBB\xBF"
                                        "1"));
}

TEST(LosslessDataConvertible, ReadsNoBytesAsTheEmptyText)
{
    EXPECT_EQ(read<std::string>(""), "");
    EXPECT_TRUE(losslessData(std::string()).empty());
}

TEST(LosslessDataConvertible, ReadsNoBytesAsNothingElse)
{
    EXPECT_TRUE(isRefused<std::int64_t>(""));
    EXPECT_TRUE(isRefused<double>(""));
    EXPECT_TRUE(isRefused<float>(""));
    EXPECT_TRUE(isRefused<bool>(""));
}

TEST(LosslessDataConvertible, WritesIntegersInDecimalDigits)
{
    EXPECT_EQ(losslessData(std::int64_t(-42)), dataFromText("-42"));
    EXPECT_EQ(read<std::int64_t>("-42"), -42);
    EXPECT_EQ(written(std::int64_t(0)), "0");
}

TEST(LosslessDataConvertible, ReadsIntegersWithSignsAndZerosInFront)
{
    EXPECT_EQ(read<std::int64_t>("+42"), 42);
    EXPECT_EQ(read<std::int64_t>("-0"), 0);
    EXPECT_EQ(read<std::int64_t>("+0"), 0);
    EXPECT_EQ(read<std::int64_t>("-0000000000000000000000000000000000007"), -7);
    EXPECT_EQ(read<unsigned>("-0"), 0u);
}

TEST(LosslessDataConvertible, ReadsIntegersUpToTheirLimits)
{
    EXPECT_EQ(read<std::int64_t>("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(read<std::int64_t>("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_TRUE(isRefused<std::int64_t>("9223372036854775808"));
    EXPECT_TRUE(isRefused<std::int64_t>("-9223372036854775809"));
    EXPECT_EQ(read<std::uint64_t>("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_TRUE(isRefused<std::uint64_t>("18446744073709551616"));
    EXPECT_TRUE(isRefused<std::uint64_t>("-1"));
    EXPECT_EQ(read<std::int8_t>("-128"), -128);
    EXPECT_TRUE(isRefused<std::int8_t>("128"));
}

TEST(LosslessDataConvertible, RefusesWhatIsNoInteger)
{
    for (const auto* text : {"1.5", "1.0", "1e3", " 1", "1 ", "1\n", "+", "-", "+-1", "-+1", "--1", "++1",
             "0x10", "1_000", "1,000", "\u0661", "one", "true"})
        EXPECT_TRUE(isRefused<std::int64_t>(text)) << text;
    EXPECT_TRUE(isRefused<std::int64_t>(std::string_view("1\0", 2)));
}

TEST(LosslessDataConvertible, ReadsAFractionAsAFloatingNumber)
{
    EXPECT_TRUE(isRefused<std::int64_t>("1.5"));
    EXPECT_EQ(read<double>("1.5"), 1.5);
    EXPECT_EQ(read<float>("1.5"), 1.5F);
}

TEST(LosslessDataConvertible, WritesTheFewestDigitsOfFloatingNumbers)
{
    EXPECT_EQ(written(1.0), "1.0");
    EXPECT_EQ(written(-0.0), "-0.0");
    EXPECT_EQ(written(0.1), "0.1");
    EXPECT_EQ(written(0.1F), "0.1");
    EXPECT_EQ(written(static_cast<double>(0.1F)), "0.10000000149011612");
    EXPECT_EQ(written(1e-5), "1e-05");
    EXPECT_EQ(written(1e-4), "0.0001");
    EXPECT_EQ(written(0x1p53), "9007199254740992.0");
    EXPECT_EQ(written(1e16), "1e+16");
    EXPECT_EQ(written(0x1p24F), "16777216.0");
    EXPECT_EQ(written(1e8F), "1e+08");
    EXPECT_EQ(written(std::numeric_limits<double>::denorm_min()), "5e-324");
    EXPECT_EQ(written(std::numeric_limits<double>::max()), "1.7976931348623157e+308");
}

TEST(LosslessDataConvertible, KeepsInfinitiesAndTheSignOfZero)
{
    constexpr auto infinity = std::numeric_limits<double>::infinity();

    EXPECT_EQ(written(infinity), "inf");
    EXPECT_EQ(written(-infinity), "-inf");
    EXPECT_EQ(reread(infinity), infinity);
    EXPECT_EQ(reread(-infinity), -infinity);
    EXPECT_TRUE(std::signbit(reread(-0.0)));
    EXPECT_FALSE(std::signbit(reread(0.0)));
}

TEST(LosslessDataConvertible, KeepsNotANumberAsOne)
{
    EXPECT_EQ(written(std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_TRUE(std::isnan(reread(std::numeric_limits<double>::quiet_NaN())));
    EXPECT_TRUE(std::isnan(reread(std::numeric_limits<float>::quiet_NaN())));
}

TEST(LosslessDataConvertible, ReadsFloatingNumbersInEveryForm)
{
    EXPECT_EQ(read<double>("+1.5"), 1.5);
    EXPECT_EQ(read<double>(".5"), 0.5);
    EXPECT_EQ(read<double>("5."), 5.0);
    EXPECT_EQ(read<double>("5"), 5.0);
    EXPECT_EQ(read<double>("-1E3"), -1000.0);
    EXPECT_EQ(read<double>("0x1.8p1"), 3.0);
    EXPECT_EQ(read<double>("-0XA"), -10.0);
    EXPECT_EQ(read<double>("INF"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(read<double>("-Infinity"), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(read<double>("NaN")));
    EXPECT_TRUE(std::isnan(read<float>("-nan")));
}

TEST(LosslessDataConvertible, ReadsWhatIsTooLargeAsInfinity)
{
    EXPECT_EQ(read<double>("1e400"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(read<double>("-1e400"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(read<float>("1e39"), std::numeric_limits<float>::infinity());
    EXPECT_EQ(read<double>("1" + std::string(400, '0')), std::numeric_limits<double>::infinity());
}

TEST(LosslessDataConvertible, ReadsWhatIsTooSmallAsZero)
{
    EXPECT_EQ(read<double>("1e-400"), 0.0);
    EXPECT_TRUE(std::signbit(read<double>("-1e-400")));
    EXPECT_EQ(read<float>("1e-46"), 0.0F);
}

TEST(LosslessDataConvertible, RefusesWhatIsNoFloatingNumber)
{
    for (const auto* text : {" 1.5", "\t1.5", "\n1.5", "\v1.5", "\f1.5", "\r1.5", "1.5 ", "1,5", "1.5f", "1e",
             "e5", ".", "+", "-", "+-1", "- 1", "0x", "in", "infi", "na", "1.5.5", "1 5", "true"})
        EXPECT_TRUE(isRefused<double>(text)) << text;
    EXPECT_TRUE(isRefused<double>(std::string_view("1.5\0", 4)));
    EXPECT_TRUE(isRefused<double>(std::string_view("\0", 1)));
    EXPECT_TRUE(isRefused<float>(std::string_view("1\0.5", 4)));
}

TEST(LosslessDataConvertible, ReadsAPointWhateverTheLocaleIs)
{
    const char* chosen = nullptr;
    for (const auto* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE"})
        if (chosen == nullptr)
            chosen = std::setlocale(LC_ALL, name);
    if (chosen == nullptr)
        GTEST_SKIP() << "there is no locale here with a decimal comma";

    EXPECT_EQ(read<double>("1.5"), 1.5);
    EXPECT_EQ(written(1.5), "1.5");
    EXPECT_TRUE(isRefused<double>("1,5"));
    std::setlocale(LC_ALL, "C");
}

TEST(LosslessDataConvertible, ReadsBackAnyDouble)
{
    expectThatRandomNumbersReadBack<double, std::uint64_t>(std::strtod);
}

TEST(LosslessDataConvertible, ReadsBackAnyFloat)
{
    expectThatRandomNumbersReadBack<float, std::uint32_t>(std::strtof);
}

TEST(LosslessDataConvertible, ReadsTheLongFormOfADoubleAsTheSameNumber)
{
    const auto seed = std::random_device()();
    std::mt19937_64 engine(seed);
    std::array<char, 64> text = {};
    for (int round = 0; round < 50'000; ++round) {
        const auto value = std::bit_cast<double>(engine());
        if (!std::isfinite(value))
            continue;
        std::snprintf(text.data(), text.size(), "%.17g", value);
        ASSERT_EQ(read<double>(text.data()), value) << text.data() << ", seed " << seed;
        std::snprintf(text.data(), text.size(), "%a", value);
        ASSERT_EQ(read<double>(text.data()), value) << text.data() << ", seed " << seed;
        ASSERT_LE(written(value).size(), 24u);
    }
}

TEST(LosslessDataConvertible, ReadsBackAnyInteger)
{
    const auto seed = std::random_device()();
    std::mt19937_64 engine(seed);
    for (int round = 0; round < 50'000; ++round) {
        const auto value = static_cast<std::int64_t>(engine()) >> (engine() % 64);
        ASSERT_EQ(reread(value), value) << "seed " << seed;
        ASSERT_EQ(written(value), std::to_string(value));
    }
}

TEST(LosslessDataConvertible, WritesBooleansAsWords)
{
    EXPECT_EQ(losslessData(true), dataFromText("true"));
    EXPECT_EQ(losslessData(true).size(), 4u);
    EXPECT_EQ(losslessData(false), dataFromText("false"));
    EXPECT_EQ(readable<bool>("true"), true);
    EXPECT_EQ(readable<bool>("false"), false);
}

TEST(LosslessDataConvertible, RefusesOtherWordsForBooleans)
{
    for (const auto* text : {"yes", "no", "TRUE", "True", "1", "0", " true", "true ", "truefalse"})
        EXPECT_TRUE(isRefused<bool>(text)) << text;
}

TEST(LosslessDataConvertible, RefusesBytesThatAreNoText)
{
    const Data bytes = {std::byte(0xFF)};
    const auto expected = ConversionError::failedToConvertFromData(bytes);

    EXPECT_EQ(tryFromLosslessData<std::string>(bytes).error(), expected);
    EXPECT_EQ(tryFromLosslessData<std::int64_t>(bytes).error(), expected);
    EXPECT_EQ(tryFromLosslessData<double>(bytes).error(), expected);
    EXPECT_EQ(tryFromLosslessData<float>(bytes).error(), expected);
    EXPECT_EQ(tryFromLosslessData<bool>(bytes).error(), expected);
    EXPECT_EQ(tryFromLosslessData<Paint>(bytes).error(), expected);
}

TEST(LosslessDataConvertible, ThrowsWhyThereIsNoValue)
{
    try {
        read<bool>("yes");
        FAIL();
    } catch (const ConversionError& error) {
        EXPECT_EQ(error, ConversionError::failedToConvertFromString("yes"));
    }
    EXPECT_THROW(fromLosslessData<std::string>(Data{std::byte(0x80)}), ConversionError);
}

TEST(LosslessDataConvertible, TakesTypesOfOnesOwn)
{
    EXPECT_EQ(written(Paint(0x0A0B0C)), "#0A0B0C");
    EXPECT_EQ(reread(Paint(0xFF8800)), Paint(0xFF8800));
    EXPECT_TRUE(isRefused<Paint>("#0A0B0"));
    EXPECT_TRUE(LosslessDataConvertible<Paint>);
}

TEST(LosslessDataConvertible, TakesTypesThatAreTaughtTheirText)
{
    EXPECT_EQ(written(Pair{1, -2}), "1,-2");
    EXPECT_EQ(reread(Pair{1, -2}), (Pair{1, -2}));
    EXPECT_TRUE(isRefused<Pair>("1;2"));
}

TEST(LosslessDataConvertible, TakesNothingElse)
{
    EXPECT_FALSE(LosslessDataConvertible<Data>);
    EXPECT_FALSE(LosslessDataConvertible<char>);
    EXPECT_FALSE(LosslessDataConvertible<std::vector<int>>);
    EXPECT_FALSE(LosslessDataConvertible<std::optional<int>>);
    EXPECT_FALSE(LosslessDataConvertible<const char*>);
}
