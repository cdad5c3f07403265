#include "Orrenby/Platform/Objects/RawRepresentable.hpp"

#include <array>
#include <cstdint>
#include <gmock/gmock.h>
#include <string>

using namespace orrenby;

//! [Listing the cases]
enum class Level : std::uint8_t { Low = 1, High = 5 };
template <> inline constexpr auto orrenby::allCases<Level> = std::array{Level::Low, Level::High};
//! [Listing the cases]

namespace {

enum class Unlisted { One };

class Code {
public:
    using RawValue = std::string;

    static std::optional<Code> make(const std::string& raw)
    {
        return raw.size() == 2 ? std::optional(Code(raw)) : std::nullopt;
    }
    const std::string& rawValue() const { return m_raw; }

private:
    explicit Code(std::string raw)
        : m_raw(std::move(raw))
    {}
    std::string m_raw;
};

enum class Compass { North, South };

} // namespace

template <> struct orrenby::RawRepresentation<Compass> {
    using RawValue = std::string;
    static std::string rawValue(Compass value) { return value == Compass::North ? "N" : "S"; }
    static std::optional<Compass> make(const std::string& raw)
    {
        if (raw == "N")
            return Compass::North;
        return raw == "S" ? std::optional(Compass::South) : std::nullopt;
    }
};

TEST(RawRepresentable, GivesTheNumberOfACase)
{
    using Representation = RawRepresentation<Level>;

    EXPECT_EQ(Representation::rawValue(Level::High), 5);
    EXPECT_TRUE((std::same_as<Representation::RawValue, std::uint8_t>));
}

TEST(RawRepresentable, MakesACaseOfItsNumberOnly)
{
    using Representation = RawRepresentation<Level>;

    EXPECT_EQ(Representation::make(1), Level::Low);
    EXPECT_EQ(Representation::make(2), std::nullopt);
}

TEST(RawRepresentable, HoldsForClassesThatSayHow)
{
    const auto code = RawRepresentation<Code>::make("ab");

    EXPECT_EQ(RawRepresentation<Code>::rawValue(*code), "ab");
    EXPECT_EQ(RawRepresentation<Code>::make("abc"), std::nullopt);
}

TEST(RawRepresentable, HoldsForWhatItIsSpecialisedFor)
{
    EXPECT_EQ(RawRepresentation<Compass>::rawValue(Compass::South), "S");
    EXPECT_EQ(RawRepresentation<Compass>::make("W"), std::nullopt);
}

TEST(RawRepresentable, DoesNotHoldForOtherTypes)
{
    EXPECT_TRUE(RawRepresentable<Level>);
    EXPECT_TRUE(RawRepresentable<Code>);
    EXPECT_TRUE(RawRepresentable<Compass>);
    EXPECT_FALSE(RawRepresentable<Unlisted>);
    EXPECT_FALSE(RawRepresentable<int>);
    EXPECT_FALSE(RawRepresentable<std::string>);
}
