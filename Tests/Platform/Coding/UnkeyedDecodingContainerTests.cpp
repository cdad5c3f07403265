#include "Orrenby/Platform/Coding/UnkeyedDecodingContainer.hpp"

#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Tests/Platform/Coding/JSONDecoderParts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using orrenby::testing::failure;

namespace {

//! [Decoding a list by hand]
/// A name, then any number of scores.
struct Row {
    static Row init(const Decoder& decoder)
    {
        auto list = decoder.unkeyedContainer();
        Row row{list.decode<std::string>(), {}};
        while (!list.isAtEnd())
            row.scores.push_back(list.decode<int>());
        return row;
    }

    std::string name;
    std::vector<int> scores;
};
//! [Decoding a list by hand]

struct Walk {
    static Walk init(const Decoder& decoder)
    {
        auto list = decoder.unkeyedContainer();
        EXPECT_EQ(list.count(), 6U);
        EXPECT_FALSE(list.decodeNil());
        EXPECT_THROW(list.decode<int>(), DecodingError);
        EXPECT_EQ(list.currentIndex(), 0U) << "an element that failed is not passed";
        EXPECT_EQ(list.decode<std::string>(), "a");
        EXPECT_TRUE(list.decodeNil());
        EXPECT_EQ(list.decodeIfPresent<int>(), std::nullopt);
        EXPECT_EQ(list.nestedContainer().decode<int>("k"), 1);
        auto inner = list.nestedUnkeyedContainer();
        EXPECT_EQ(inner.decode<int>(), 2);
        EXPECT_EQ(list.decodeIfPresent<int>(), 3);
        EXPECT_TRUE(list.isAtEnd());
        EXPECT_EQ(list.decodeIfPresent<int>(), std::nullopt);
        return {};
    }
};

struct PastTheEnd {
    static PastTheEnd init(const Decoder& decoder)
    {
        auto list = decoder.unkeyedContainer();
        list.decode<int>();
        list.decode<int>();
        return {};
    }
};

struct NilPastTheEnd {
    static NilPastTheEnd init(const Decoder& decoder)
    {
        decoder.unkeyedContainer().decodeNil();
        return {};
    }
};

struct ListPastTheEnd {
    static ListPastTheEnd init(const Decoder& decoder)
    {
        decoder.unkeyedContainer().nestedUnkeyedContainer();
        return {};
    }
};

/// A list whose first element is what a base class encoded.
struct Derived {
    std::vector<CodingKey> basePath;
    int base = 0;
    int own = 0;

    static Derived init(const Decoder& decoder)
    {
        auto list = decoder.unkeyedContainer();
        const auto base = list.superDecoder();
        return {base.codingPath(), base.singleValueContainer().decode<int>(), list.decode<int>()};
    }
};

} // namespace

TEST(UnkeyedDecodingContainer, GivesOneElementAfterTheOther)
{
    const auto row = JSONDecoder().decode<Row>(R"(["Ada", 3, 4])");

    EXPECT_EQ(row.name, "Ada");
    EXPECT_THAT(row.scores, ::testing::ElementsAre(3, 4));
}

TEST(UnkeyedDecodingContainer, PassesOnlyWhatItGave)
{
    JSONDecoder().decode<Walk>(R"(["a",null,null,{"k":1},[2],3])");
}

TEST(UnkeyedDecodingContainer, ThrowsPastTheEnd)
{
    EXPECT_EQ(failure<PastTheEnd>("[1]"),
        "valueNotFound(Int32, at Index 1: Expected Int32 but the list has ended)");
}

TEST(UnkeyedDecodingContainer, ThrowsPastTheEndAlsoForWhatIsNoValue)
{
    EXPECT_EQ(
        failure<NilPastTheEnd>("[]"), "valueNotFound(Any, at Index 0: Expected Any but the list has ended)");
    EXPECT_EQ(failure<ListPastTheEnd>("[]"),
        "valueNotFound(Array<Any>, at Index 0: Expected Array<Any> but the list has ended)");
}

TEST(UnkeyedDecodingContainer, NeedsAList)
{
    EXPECT_EQ(failure<NilPastTheEnd>("{}"),
        "typeMismatch(Array<Any>, at the root, line 1, column 1: Expected Array<Any> but found an object)");
    EXPECT_EQ(failure<NilPastTheEnd>("null"),
        "valueNotFound(Array<Any>, at the root, line 1, column 1: Expected Array<Any> but found null)");
}

TEST(UnkeyedDecodingContainer, HandsTheNextElementToABase)
{
    const auto derived = JSONDecoder().decode<Derived>("[1,2]");

    EXPECT_THAT(derived.basePath, ::testing::ElementsAre(CodingKey::place(0)));
    EXPECT_EQ(derived.base, 1);
    EXPECT_EQ(derived.own, 2);
}
