#include "Orrenby/Platform/Objects/Any.hpp"

#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Tests/Platform/Objects/AnyParts.hpp"
#include <gtest/gtest.h>
#include <memory>

using namespace orrenby;

TEST(Any, PrintsItsContent)
{
    EXPECT_EQ(describe(Any()), "<null>");
    EXPECT_EQ(describe(Any(true)), "true");
    EXPECT_EQ(describe(Any(1.0F)), "1.0");
    EXPECT_EQ(describe(Any("a\"b")), "a\"b");
    EXPECT_EQ(debugDescribe(Any("a\"b")), R"("a\"b")");
    EXPECT_EQ(describe(Any(Array{1, "a", Any()})), R"([1, "a", <null>])");
    EXPECT_EQ(describe(Any(dataFromText("ab"))), "2 bytes");
    EXPECT_EQ(describe(Any(app::Colour::Green)), "Colour(1)");
    EXPECT_EQ(debugDescribe(Any(std::make_shared<app::Circle>())), "Circle(a circle)");
    EXPECT_EQ(describe(Any(Date(0))), "1970-01-01 00:00:00 +0000");
    EXPECT_EQ(debugDescribe(Any(Date(0))), debugDescribe(Date(0)));
}

TEST(Any, NamesTheTypeOfItsContent)
{
    EXPECT_EQ(typeName(Any()), "NSNull");
    EXPECT_EQ(typeName(Any(true)), "Bool");
    EXPECT_EQ(typeName(Any(1)), "Int");
    EXPECT_EQ(typeName(Any(1.0F)), "Float");
    EXPECT_EQ(typeName(Any(1.0)), "Double");
    EXPECT_EQ(typeName(Any("a")), "String");
    EXPECT_EQ(typeName(Any(Data())), "Data");
    EXPECT_EQ(typeName(Any(Date())), "Date");
    EXPECT_EQ(typeName(Any(Array())), "Array<Any>");
    EXPECT_EQ(typeName(Any(Dictionary())), "Dictionary<String, Any>");
    EXPECT_EQ(typeName(Any(NSSet())), "NSSet");
    EXPECT_EQ(typeName(Any(Ref<app::Shape>(std::make_shared<app::Circle>()))), "Circle");
    EXPECT_EQ(typeName<Any>(), "Any");
}

TEST(Any, TellsTheTypeOfItsContent)
{
    EXPECT_TRUE(Any().type() == typeid(void));
    EXPECT_TRUE(Any(true).type() == typeid(bool));
    EXPECT_TRUE(Any(1).type() == typeid(std::int64_t));
    EXPECT_TRUE(Any(std::uint64_t(1) << 63).type() == typeid(std::uint64_t));
    EXPECT_TRUE(Any(1.0F).type() == typeid(float));
    EXPECT_TRUE(Any(1.0).type() == typeid(double));
    EXPECT_TRUE(Any(Date(5)).type() == typeid(Date));
    EXPECT_TRUE(Any(Data()).type() == typeid(Data));
    EXPECT_TRUE(Any("a").type() == typeid(std::string));
    EXPECT_TRUE(Any(Array()).type() == typeid(Array));
}
