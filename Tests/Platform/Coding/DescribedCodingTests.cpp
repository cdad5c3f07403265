#include "Orrenby/Platform/Coding/DescribedCoding.hpp"

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include <boost/describe/class.hpp>
#include <gmock/gmock.h>

using namespace orrenby;

namespace {

//! [Describing a class]
class Animal {
public:
    const std::string& name() const { return m_name; }

protected:
    std::string m_name;
    BOOST_DESCRIBE_CLASS(Animal, (), (), (m_name), ())
};

class Dog : public Animal {
public:
    int age() const { return m_age; }

private:
    int m_age = 0;

public:
    std::optional<bool> isGood;
    BOOST_DESCRIBE_CLASS(Dog, (Animal), (isGood), (), (m_age))
};
//! [Describing a class]

struct Kennel {
    std::vector<Dog> dogs;
};

} // namespace

TEST(DescribedCoding, CodesPrivateFieldsAndThoseOfBases)
{
    const std::string_view text = R"({"name":"Rex","age":4,"isGood":true})";
    const auto dog = JSONDecoder().decode<Dog>(text);

    EXPECT_EQ(dog.name(), "Rex");
    EXPECT_EQ(dog.age(), 4);
    EXPECT_EQ(dog.isGood, true);
    EXPECT_EQ(JSONEncoder().encodeText(dog), text);
}

TEST(DescribedCoding, LetsOptionalFieldsBeMissing)
{
    const auto dog = JSONDecoder().decode<Dog>(R"({"age":1,"name":""})");

    EXPECT_EQ(dog.isGood, std::nullopt);
    EXPECT_EQ(JSONEncoder().encodeText(dog), R"({"name":"","age":1})");
}

TEST(DescribedCoding, NamesThePathOfWhatIsWrong)
{
    try {
        JSONDecoder().decode<Kennel>(R"({"dogs":[{"name":"Rex","age":"four"}]})");
        FAIL();
    } catch (const DecodingError& error) {
        EXPECT_EQ(error.description(),
            "typeMismatch(Int32, at dogs > Index 0 > age, line 1, column 30: Expected Int32 but found a text)");
    }
}
