#include "Orrenby/Standard/JSON/Encodable+JSON.hpp"

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/EncodingError.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <map>
#include <string>
#include <vector>

using namespace orrenby;

namespace {

//! [Encoding into a dictionary]
struct Order {
    static constexpr std::string_view codingKeys[] = {"id", "items", "note"};

    int number = 0;
    std::vector<std::string> items;
    std::optional<std::string> note;
};

Dictionary asDictionary(const Order& order) { return json(order); } // {"id": 7, "items": ["tea"]}
//! [Encoding into a dictionary]

struct Measure {
    double value = 0;
};

struct Failing {
    void encode(const Encoder&) const { throw std::runtime_error("no ink"); }
};

} // namespace

TEST(EncodableJSON, IsADictionaryByCodingKeys)
{
    EXPECT_EQ(asDictionary({7, {"tea"}, std::nullopt}), (Dictionary{{"id", 7}, {"items", Array{"tea"}}}));
    EXPECT_EQ(asDictionary({0, {}, "soon"}), (Dictionary{{"id", 0}, {"items", Array()}, {"note", "soon"}}));
}

TEST(EncodableJSON, TakesEverythingThatIsEncodedAsAnObject)
{
    EXPECT_EQ((json(std::map<std::string, int>{{"a", 1}})), (Dictionary{{"a", 1}}));
    EXPECT_EQ((json(std::map<std::string, int>())), Dictionary());
}

TEST(EncodableJSON, GivesNumbersThatMayBeAskedForAsEitherKind)
{
    const auto dictionary = json(Measure{3.0});

    EXPECT_EQ(dictionary.cast<double>("value"), 3.0);
    EXPECT_EQ(dictionary.cast<int>("value"), 3);
}

using EncodableJSONDeathTest = ::testing::Test;

TEST(EncodableJSONDeathTest, EndsTheProcessForWhatIsNoObject)
{
    EXPECT_DEATH(static_cast<void>(json(std::int64_t(5))),
        "Fatal error: JSONSerialization Error: invalidType for: Int: file Standard/Encodable\\+JSON, line");
    EXPECT_DEATH(static_cast<void>(json(std::vector<int>{1})), "invalidType for: Array<Int32>");
    EXPECT_DEATH(static_cast<void>(json(std::optional<int>())), "invalidType for: ");
}

TEST(EncodableJSONDeathTest, EndsTheProcessForWhatCannotBeEncoded)
{
    EXPECT_DEATH(static_cast<void>(json(Measure{std::numeric_limits<double>::infinity()})),
        "JSONSerialization Error: invalidValue.* for: Measure");
    EXPECT_DEATH(static_cast<void>(json(Failing())), "JSONSerialization Error: no ink for: Failing");
}

TEST(EncodableJSON, IsAFailureAsOutcomeForWhatHasNoDictionary)
{
    EXPECT_EQ(tryJSON(Measure{2}).unwrap(), (Dictionary{{"value", 2}}));
    EXPECT_NE(tryJSON(5).error()->cast<InvalidJSONTypeError>(), nullptr);
    EXPECT_NE(
        tryJSON(Measure{std::numeric_limits<double>::quiet_NaN()}).error()->cast<EncodingError>(), nullptr);
    EXPECT_NE(tryJSON(Failing()).error()->cast<std::runtime_error>(), nullptr);
}

TEST(InvalidJSONTypeError, IsCaughtAsWhatItIs)
{
    try {
        static_cast<void>(tryJSON(5).unwrap());
        FAIL();
    } catch (const InvalidJSONTypeError& error) {
        EXPECT_EQ(error.description(), "invalidType");
        EXPECT_EQ(error.code(), 1);
        EXPECT_EQ(error, InvalidJSONTypeError());
    }
    EXPECT_THROW(static_cast<void>(tryJSON(5).unwrap()), std::exception);
}
