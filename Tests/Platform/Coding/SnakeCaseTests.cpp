#include "Orrenby/Platform/Coding/JSONDecodingStrategies.hpp"

#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include <gmock/gmock.h>
#include <map>

using namespace orrenby;

namespace {

/// The keys of the members as a type sees them.
struct Keys {
    static Keys init(const Decoder& decoder)
    {
        Keys keys;
        for (const auto& key : decoder.container().allKeys())
            keys.names.push_back(key.stringValue());
        return keys;
    }
    void encode(const Encoder& encoder) const
    {
        auto container = encoder.container();
        for (const auto& name : names)
            container.encode(0, name);
    }

    std::vector<std::string> names;
};

std::string fromSnake(const std::string& key)
{
    JSONDecoder decoder;
    decoder.setKeyDecodingStrategy(JSONDecoder::KeyDecodingStrategy::convertFromSnakeCase());
    return decoder.decode<Keys>("{\"" + key + "\":0}").names.at(0);
}

std::string toSnake(const std::string& key)
{
    JSONEncoder encoder;
    encoder.setKeyEncodingStrategy(JSONEncoder::KeyEncodingStrategy::convertToSnakeCase());
    const auto text = encoder.encodeText(Keys{{key}});
    return text.substr(2, text.size() - 6);
}

} // namespace

TEST(SnakeCase, BecomesCamelCase)
{
    EXPECT_EQ(fromSnake("first_name"), "firstName");
    EXPECT_EQ(fromSnake("one_TWO_three"), "oneTwoThree");
    EXPECT_EQ(fromSnake("_first_name__"), "_firstName__");
    EXPECT_EQ(fromSnake("a__b"), "aB");
    EXPECT_EQ(fromSnake("already"), "already");
    EXPECT_EQ(fromSnake("alreadyCamel"), "alreadyCamel");
    EXPECT_EQ(fromSnake("___"), "___");
    EXPECT_EQ(fromSnake(""), "");
    EXPECT_EQ(fromSnake("größe_in_m"), "größeInM");
}

TEST(SnakeCase, IsMadeOfCamelCase)
{
    EXPECT_EQ(toSnake("firstName"), "first_name");
    EXPECT_EQ(toSnake("myURLProperty"), "my_url_property");
    EXPECT_EQ(toSnake("URL"), "url");
    EXPECT_EQ(toSnake("a"), "a");
    EXPECT_EQ(toSnake(""), "");
    EXPECT_EQ(toSnake("already_snake"), "already_snake");
    EXPECT_EQ(toSnake("version2Beta"), "version2_beta");
}

TEST(SnakeCase, KeepsTheFirstOfKeysThatBecomeOneWhenDecoding)
{
    struct First {
        int aB = 0;
        static First init(const Decoder& decoder) { return {decoder.container().decode<int>("aB")}; }
    };
    JSONDecoder decoder;
    decoder.setKeyDecodingStrategy(JSONDecoder::KeyDecodingStrategy::convertFromSnakeCase());

    EXPECT_EQ(decoder.decode<First>(R"({"a_b":1,"aB":2})").aB, 1);
}
